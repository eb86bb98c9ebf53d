"""A reminder leaves the screen when it is no longer true, and when the program that would notice ends."""
import signal

import pytest

from laptop.desktop import Desktop
from laptop.notifications import NAME

HEALTH = 'Battery health is low'
LIMIT = 'Charge limit reached'
LOW = 'Low battery'
TOO_LONG = 'Plugged in for a long time'


def test_low_battery_goes_when_the_cable_comes(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.charge_to(20)
    low = notifications.wait_for(1)
    assert low.title == LOW and low.open

    laptop.plug_in()

    notifications.wait_until_closed(low)
    assert notifications.closed == [low.id]


def test_the_reminders_of_power_go_with_the_cable(laptop, vorlane, dunst, notifications, clock):
    laptop.plug_in(79)
    vorlane.write_settings('longHours = 1\nrepeatReminder = false\n')
    vorlane.start(clock)
    laptop.charge_to(80)
    limit = notifications.wait_for(1)
    vorlane.advance(3700)
    too_long = notifications.wait_for(2)
    assert [limit.title, too_long.title] == [LIMIT, TOO_LONG]
    assert limit.open and too_long.open

    laptop.unplug()

    notifications.wait_until_closed(limit)
    notifications.wait_until_closed(too_long)


def test_a_reminder_that_holds_stays(laptop, vorlane, dunst, notifications, item):
    vorlane.start()
    laptop.charge_to(20)
    low = notifications.wait_for(1)

    laptop.charge_to(15)
    item.wait_for_label('15%')

    assert notifications.titles() == [LOW]
    assert low.open and notifications.closed == []


def test_at_its_end_the_program_leaves_the_reminder_that_comes_once(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    laptop.charge_to(20)
    low = notifications.wait_for(2)
    assert [health.title, low.title] == [HEALTH, LOW]

    vorlane.quit()

    notifications.wait_until_closed(low)
    assert health.open and notifications.closed == [low.id]


def test_a_display_that_dies_under_the_windows_leaves_the_reminders(laptop, screen, vorlane, dunst, notifications):
    desktop = Desktop(laptop)  # on another display than the daemon
    desktop.start(notifications=False)
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    laptop.charge_to(20)
    low = notifications.wait_for(2)

    desktop.screen.kill()

    vorlane.wait_until_windows_process_is_gone()
    assert health.open and low.open
    laptop.plug_in(20)
    notifications.wait_until_closed(low)
    assert health.open
    process, vorlane.process = vorlane.process, None
    process.signal(signal.SIGTERM)
    assert process.wait_for_end() == 0  # what Qt said of the display is on the common stderr


@pytest.fixture
def limit(laptop, vorlane, dunst, notifications):
    """The reminder of the charge limit, shown by a program that runs."""
    laptop.plug_in(79)
    vorlane.start()
    laptop.charge_to(80)
    return notifications.wait_for(1)


def test_a_restart_in_place_leaves_a_reminder_until_it_is_no_longer_true(laptop, vorlane, notifications, limit):
    vorlane.restart_in_place()
    assert notifications.titles() == [LIMIT]
    assert limit.open and notifications.closed == []

    laptop.unplug()

    notifications.wait_until_closed(limit)
    assert notifications.closed == [limit.id]


def test_a_restart_in_place_knows_nothing_of_what_another_daemon_shows(
        laptop, vorlane, dunst, notifications, item, limit):
    vorlane.process.signal(signal.SIGSTOP)  # it cannot see the daemons change before it is to restart
    dunst.kill()
    dunst.start()
    laptop.session_bus.call(NAME, '/org/freedesktop/Notifications', NAME, 'Notify', 'susssasa{sv}i',
                            'stranger', 0, '', 'Not ours', '', [], {}, 0)
    stranger = notifications.wait_for(2)
    assert stranger.id == limit.id

    vorlane.restart_in_place()
    laptop.unplug()
    item.wait_for_icon('battery.75')

    assert notifications.titles() == [LIMIT, 'Not ours']
    assert stranger.open and notifications.closed == []
