"""Comparable programs in Debian, and how each is started."""
from dataclasses import dataclass

from laptop.preload import library

POWER_MANAGER_SETTINGS = '''<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-power-manager" version="1.0">
  <property name="xfce4-power-manager" type="empty">
    <property name="show-tray-icon" type="bool" value="true"/>
  </property>
</channel>
'''


@dataclass(frozen=True)
class Peer:
    name: str  # also the class of its tray window
    argv: tuple

    def prepare(self, laptop):
        """Starts what the peer needs from its desktop."""


class XfcePeer(Peer):
    def prepare(self, laptop):
        laptop.machine.write(POWER_MANAGER_SETTINGS, 'config', 'xfce4', 'xfconf', 'xfce-perchannel-xml',
                             'xfce4-power-manager.xml')
        if not laptop.session_bus.owner('org.xfce.Xfconf'):
            daemon = laptop.machine.start('xfconfd', [library('xfce4/xfconf/xfconfd')])
            laptop.session_bus.wait_for('org.xfce.Xfconf', daemon)


PEERS = (Peer('cbatticon', ('/usr/bin/cbatticon', '--hide-notification')),
         XfcePeer('xfce4-power-manager', ('/usr/bin/xfce4-power-manager', '--no-daemon')),
         Peer('mate-power-manager', ('/usr/bin/mate-power-manager',)))
