"""A laptop with its battery, buses and services, and nobody watching what passes between them."""
import os

from .bus import Bus
from .logind import Logind
from .machine import Machine
from .moved_clock import MovedClock
from .testbed import ADAPTER, BATTERY, Testbed
from .upower import UPower
from .x_screen import XScreen


class Laptop:
    """At first it runs on battery, 60% full."""

    def __init__(self, program):
        self.machine = Machine()
        self.testbed = None
        try:
            self._switch_on(program)
        except BaseException:
            self.close()
            raise

    def _switch_on(self, program):
        # As if the program were installed: the desktop finds its icons.
        share = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(program))), 'share')
        self.machine.environment['XDG_DATA_DIRS'] = f'/usr/local/share:/usr/share:{share}'
        self.system_bus = Bus(self.machine, 'system')
        self.start_logind()
        self.testbed = Testbed(self.machine)
        self.testbed.add('AC', ADAPTER)
        self.testbed.add('BAT0', BATTERY)
        self.upower = UPower(self.machine, self.system_bus, self.testbed)
        self.session_bus = Bus(self.machine, 'session')

    def start_logind(self):
        self.logind = Logind(self.machine, self.system_bus)

    def x_screen(self):
        return XScreen(self.machine)

    def moved_clock(self):
        return MovedClock(self.machine)

    def plug_in(self, percent=None, announce=True):
        self._charge('Charging', percent)
        self.testbed.change('AC', announce, online=1)

    def unplug(self, percent=None, announce=True):
        self._charge('Discharging', percent)
        self.testbed.change('AC', announce, online=0)

    def charge_to(self, percent):
        """The battery reaches a percentage, whether by charging or by use."""
        self.testbed.change('BAT0', **self._levels(percent))

    def charge_silently_to(self, percent):
        """The same, but the kernel sends no event: somebody has to look."""
        self.testbed.change('BAT0', announce=False, **self._levels(percent))

    def pull_battery(self):
        self.testbed.remove('BAT0')

    def put_battery_back(self, **attributes):
        """The same one, or with some attributes changed (None leaves one out)."""
        merged = {**BATTERY, **attributes}
        self.testbed.add('BAT0', {key: value for key, value in merged.items() if value is not None})

    def restore_battery(self):
        """As at first."""
        self.testbed.change('BAT0', announce=False, **BATTERY)
        self.testbed.change('AC', **ADAPTER)

    def wear_to(self, percent_of_design):
        """The capacity that the battery has left."""
        full = int(BATTERY['energy_full_design']) * percent_of_design // 100
        self.testbed.change('BAT0', energy_full=full)

    def close(self):
        self.machine.close()
        if self.testbed:
            self.testbed.close()

    def _charge(self, status, percent):
        levels = self._levels(percent) if percent is not None else {}
        self.testbed.change('BAT0', announce=False, status=status, **levels)

    @staticmethod
    def _levels(percent):
        return {'capacity': percent, 'energy_now': int(BATTERY['energy_full']) * percent // 100}
