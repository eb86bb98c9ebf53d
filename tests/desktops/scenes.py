"""What each picture in docs/ shows."""
import dataclasses
from collections.abc import Callable

from laptop.testbed import BATTERY

FULL, DESIGN = int(BATTERY['energy_full_design']) * 95 // 100, int(BATTERY['energy_full_design'])


def battery(percent, status, watts, full=FULL, cycles=212, celsius=31.4):
    return {'capacity': str(percent), 'status': status, 'power_now': str(int(watts * 1e6)),
            'energy_full': str(full), 'energy_now': str(full * percent // 100),
            'cycle_count': str(cycles), 'temp': str(round(celsius * 10))}


@dataclasses.dataclass
class Scene:
    name: str
    dark: bool
    time: tuple  # hour and minute
    battery: dict
    plugged: bool
    play: Callable


def point_at_chart(stage):
    stage.open_popover()
    stage.point_at_chart()


def show_week(stage):
    stage.open_popover()
    stage.choose_week()


def snooze(stage):
    stage.laptop.item.choose('Snooze 1 hour')
    stage.laptop.item.wait_for_menu_line('Cancel Snooze')
    stage.open_popover()


def open_popover(stage):
    stage.open_popover()


def reach_the_limit(stage):
    stage.laptop.charge_to(80)
    stage.wait_for_reminder()


def open_settings(stage):
    stage.open_settings()


SCENES = [
    Scene('popover-light', False, (13, 40), battery(78, 'Discharging', 11.8), False, point_at_chart),
    Scene('popover-dark', True, (18, 2), battery(71, 'Charging', 22.6), True, show_week),
    Scene('popover-snoozed', False, (18, 2), battery(100, 'Full', 0), True, snooze),
    Scene('popover-worn', True, (13, 40), battery(14, 'Discharging', 17.3, DESIGN * 71 // 100, 934, 38.9), False,
          open_popover),
    Scene('reminder', False, (10, 24), battery(79, 'Charging', 22.6), True, reach_the_limit),
    Scene('settings', False, (13, 40), battery(78, 'Discharging', 11.8), False, open_settings),
]
