"""A reminder is withdrawn when it is no longer true, and when the program quits."""
import signal

import pytest

from laptop.desktop import Desktop
from laptop.notifications import NAME

HEALTH = 'Battery health is low'
LIMIT = 'Charge limit reached'
LOW = 'Low battery'
TOO_LONG = 'Plugged in for a long time'


def test_plugging_in_withdraws_low_battery(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.charge_to(20)
    low = notifications.wait_for(1)
    assert low.title == LOW and low.open

    laptop.plug_in()

    notifications.wait_until_closed(low)
    assert notifications.closed == [low.id]


def test_unplugging_withdraws_the_reminders_to_unplug(laptop, vorlane, dunst, notifications, clock):
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


def test_a_reminder_that_is_still_true_stays(laptop, vorlane, dunst, notifications, item):
    vorlane.start()
    laptop.charge_to(20)
    low = notifications.wait_for(1)

    laptop.charge_to(15)
    item.wait_for_label('15%')

    assert notifications.titles() == [LOW]
    assert low.open and notifications.closed == []


def test_quitting_leaves_only_the_health_reminder(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    laptop.charge_to(20)
    low = notifications.wait_for(2)
    assert [health.title, low.title] == [HEALTH, LOW]

    vorlane.quit()

    notifications.wait_until_closed(low)
    assert health.open and notifications.closed == [low.id]


def test_a_display_that_dies_with_windows_open_leaves_the_reminders(laptop, screen, vorlane, dunst, notifications):
    desktop = Desktop(laptop)  # on a different display from the daemon
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
    assert process.wait_for_end() == 0  # stderr is not checked: Qt reports the lost display there


@pytest.fixture
def limit(laptop, vorlane, dunst, notifications):
    """The charge limit reminder, shown by the running program."""
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


def test_a_restart_in_place_ignores_the_notifications_of_a_new_daemon(
        laptop, vorlane, dunst, notifications, item, limit):
    vorlane.process.signal(signal.SIGSTOP)  # so that it cannot notice the new daemon before it restarts
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
