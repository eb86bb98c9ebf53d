"""The LXQt panel along the top of the screen, with both kinds of tray: status items and XEMBED."""
from .status_item import WATCHER
from .waiting import wait_until

CONFIGURATION = '''[General]
__userfile__=true
panels=panel1

[panel1]
alignment=-1
background-color={color}
desktop=0
hidable=false
iconSize=22
lineCount=1
panelSize=32
plugins=spacer, statusnotifier, tray
position=Top
reserve-space=true
width=100
width-percent=true

[spacer]
alignment=Left
expandable=true
type=spacer

[statusnotifier]
alignment=Right
type=statusnotifier

[tray]
alignment=Right
type=tray
'''


class LxqtPanel:
    def __init__(self, machine, bus):
        self._machine, self._bus, self._process = machine, bus, None

    def start(self, color='#303030'):
        self._machine.write(CONFIGURATION.format(color=color), 'config', 'lxqt', 'panel.conf')
        self._process = self._machine.start('lxqt-panel', ['/usr/bin/lxqt-panel'])
        self._bus.wait_for(WATCHER, self._process)
        wait_until(self._hosting, 'a host at the watcher', look_every=0.05)
        return self

    def kill(self):
        """Kills it, as in a crash."""
        self._process.kill()
        self._bus.wait_until_free(WATCHER)

    def _hosting(self):
        return self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER, 'IsStatusNotifierHostRegistered')
