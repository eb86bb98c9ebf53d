"""The MATE panel along the top of the screen, with its notification area in a separate process."""
from .helper_program import helper_program
from .status_item import WATCHER
from .waiting import wait_until

SETTINGS = '''[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['tray']

[org/mate/panel/toplevels/top]
orientation='top'
size=30
expand=true

[org/mate/panel/objects/tray]
object-type='applet'
applet-iid='NotificationAreaAppletFactory::NotificationArea'
toplevel-id='top'
position=0
panel-right-stick=true
'''
# Normally set by MATE's settings daemon; without it a button with a label shows no icon.
TOOLKIT = '''[Settings]
gtk-button-images=1
gtk-menu-images=1
'''
APPLET = helper_program('mate-panel/notification-area-applet')
FACTORY = 'org.mate.panel.applet.NotificationAreaAppletFactory'


class MatePanel:
    def __init__(self, machine, bus):
        self._machine, self._bus = machine, bus
        self._started = []

    def start(self):
        self._machine.write(SETTINGS, 'config', 'glib-2.0', 'settings', 'keyfile')
        self._machine.write(TOOLKIT, 'config', 'gtk-3.0', 'settings.ini')
        self._start('notification-area', APPLET, FACTORY)
        self._start('mate-panel', '/usr/bin/mate-panel', WATCHER)
        wait_until(self._hosting, 'a host at the watcher', look_every=0.05)
        return self

    def kill(self):
        """Kills it, as in a crash."""
        while self._started:
            self._started.pop().kill()
        self._bus.wait_until_free(WATCHER)

    def _start(self, name, path, owned):
        process = self._machine.start(name, [path], {'GSETTINGS_BACKEND': 'keyfile'})
        self._started.append(process)
        self._bus.wait_for(owned, process)

    def _hosting(self):
        return self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER, 'IsStatusNotifierHostRegistered')
