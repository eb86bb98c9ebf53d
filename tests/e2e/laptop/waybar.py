"""Waybar, the tray host of a Wayland desktop."""
import json

from .status_item import WATCHER
from .waiting import wait_until

STYLE = '* { font-family: DejaVu Sans; font-size: 13px } window#waybar { background: #303030; color: white }'


class Waybar:
    def __init__(self, machine, bus):
        self._machine, self._bus, self._process = machine, bus, None

    def start(self):
        configuration = self._machine.write(json.dumps({
            'layer': 'top', 'position': 'top', 'height': 30, 'modules-right': ['tray'],
            'tray': {'icon-size': 22, 'spacing': 10, 'show-passive-items': True}}),
            'config', 'waybar', 'config')
        style = self._machine.write(STYLE, 'config', 'waybar', 'style.css')
        self._process = self._machine.start('waybar',
                                            ['/usr/bin/waybar', '-c', configuration, '-s', style])
        self._bus.wait_for(WATCHER, self._process)
        wait_until(lambda: self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER,
                                         'IsStatusNotifierHostRegistered'),
                   'a host at the watcher', look_every=0.05)
        return self

    def kill(self):
        """Kills it, as in a crash."""
        self._process.kill()
        self._bus.wait_until_free(WATCHER)
