"""A laptop with battery, buses and services, without any bus monitors."""
import os

from .bus import Bus
from .logind import Logind
from .machine import Machine
from .moved_clock import MovedClock
from .testbed import ADAPTER, BATTERY, Testbed
from .upower import UPower
from .x_screen import XScreen


class Laptop:
    """Starts on battery at 60%."""

    def __init__(self, program):
        self.machine = Machine()
        self.testbed = None
        try:
            self._switch_on(program)
        except BaseException:
            self.close()
            raise

    def _switch_on(self, program):
        # As if the program were installed, so that the desktop finds its icons.
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
        """Sets the battery level, whether by charging or discharging."""
        self.testbed.change('BAT0', **self._levels(percent))

    def charge_silently_to(self, percent):
        """Sets the level without a kernel event: the program notices only at its next reading."""
        self.testbed.change('BAT0', announce=False, **self._levels(percent))

    def pull_battery(self):
        self.testbed.remove('BAT0')

    def put_battery_back(self, **attributes):
        """Puts the same battery back, with these attributes changed (None removes one)."""
        merged = {**BATTERY, **attributes}
        self.testbed.add('BAT0', {key: value for key, value in merged.items() if value is not None})

    def restore_battery(self):
        """Restores the initial state."""
        self.testbed.change('BAT0', announce=False, **BATTERY)
        self.testbed.change('AC', **ADAPTER)

    def wear_to(self, percent_of_design):
        """Sets the full capacity, in percent of the design capacity."""
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
