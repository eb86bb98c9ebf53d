"""The user travels while the popover is open."""
import time

import pytest

from laptop.desktop import Desktop
from laptop.time_zone import TimeZone
from laptop.waiting import wait_until

HOUR = 3600
NOON = 1767268800  # 2026-01-01 12:00 UTC
BERLIN, TOKYO = 1, 9  # hours ahead of UTC


@pytest.fixture
def zone(laptop, vorlane):
    zone = TimeZone(laptop.machine, 'Europe/Berlin')
    if reason := zone.unavailable_reason():
        pytest.skip(f'cannot use a mount namespace here: {reason}')
    vorlane.run_by(zone.wrapper)
    return zone


@pytest.fixture
def desktop(laptop, zone, clock):
    clock.set(NOON - time.time())
    laptop.vorlane.write_history([{'t': NOON - ago * HOUR, 'p': percent, 'c': False, 'a': False}
                                  for ago, percent in ((12, 70), (1, 65))])
    return Desktop(laptop).start(notifications=False, clock=clock, environment=zone.environment)


def test_the_reading_and_the_snooze_follow_at_the_next_refresh(desktop, zone, vorlane):
    desktop.item.choose('Snooze 1 hour')
    desktop.item.wait_for_menu_line('Cancel Snooze')
    popover = desktop.open_popover()
    chart = next(one for one in popover.walk() if one.role == 'chart')
    left, top, right, bottom = chart.box
    desktop.screen.move_pointer((left + right) // 2, (top + bottom) // 2)
    wait_for_reading(chart, f'70% · {BERLIN:02}:00')
    assert popover.find(f'Alerts snoozed until {13 + BERLIN}:00')

    zone.change_to('Asia/Tokyo')
    vorlane.advance(60)

    popover.wait_for(f'Alerts snoozed until {13 + TOKYO}:00')
    wait_for_reading(chart, f'70% · {TOKYO:02}:00')


def wait_for_reading(chart, text):
    wait_until(lambda: chart.description == text, lambda: f'{text!r}; it is {chart.description!r}',
               look_every=0.02)
