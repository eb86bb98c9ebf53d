"""Another program floods ours with messages: it keeps working, and its memory does not grow."""
import os
import time

import dbus
import pytest

from laptop.flood import Flood, cpu_of, memory_of
from laptop.status_item import ITEM, MENU, PATH

BUS = 'org.freedesktop.DBus'
BUS_PATH = '/org/freedesktop/DBus'
NOTIFICATIONS = 'org.freedesktop.Notifications'
DISPLAY_DEVICE = '/org/freedesktop/UPower/devices/DisplayDevice'
DEVICE = 'org.freedesktop.UPower.Device'
APPLICATION = 'org.freedesktop.Application'
MOST_GROWTH = 4096  # KiB
MOST_ROUNDS = 5


def properties(minutes):
    return dbus.Dictionary({'TimeToEmpty': dbus.Int64(minutes * 60)}, signature='sv')


def upower_signals(system, session, count):
    system.signals(count, DISPLAY_DEVICE, BUS + '.Properties', 'PropertiesChanged', 'sa{sv}as', DEVICE,
                   properties(7), [])


def owner_changes(system, session, count):
    for name in ('org.freedesktop.UPower', 'org.freedesktop.login1', 'org.example.Other'):
        system.signals(count // 3, BUS_PATH, BUS, 'NameOwnerChanged', 'sss', name, '', ':1.999')
    for name in (NOTIFICATIONS, 'org.kde.StatusNotifierWatcher'):
        session.signals(count // 2, BUS_PATH, BUS, 'NameOwnerChanged', 'sss', name, '', ':1.999')


def sleep_signals(system, session, count):
    system.signals(count, '/org/freedesktop/login1', 'org.freedesktop.login1.Manager',
                   'PrepareForSleep', 'b', True)


def notification_signals(system, session, count):
    path = '/org/freedesktop/Notifications'
    session.signals(count // 2, path, NOTIFICATIONS, 'ActionInvoked', 'us', 1, 'SNOOZE')
    session.signals(count // 2, path, NOTIFICATIONS, 'NotificationClosed', 'uu', 1, 2)


def tray_calls(system, session, count):
    menu = PATH + '/Menu'
    layout = (0, -1, dbus.Array([], signature='s'))
    session.calls(count // 4, menu, MENU, 'GetLayout', 'iias', *layout)
    session.calls(count // 4, menu, MENU, 'AboutToShow', 'i', 0)
    session.calls(count // 4, menu, MENU, 'Event', 'isvu', 0, 'opened', dbus.Int32(0), 0)
    session.calls(count // 4, PATH, BUS + '.Properties', 'Get', 'ss', ITEM, 'ToolTip')


def activation_tokens(system, session, count):
    for number in range(count):
        session.calls(1, PATH, ITEM, 'ProvideXdgActivationToken', 's', f'token-{number}' + 500 * 'x')


def expect_no_growth(vorlane, first, second):
    """A leak grows in every round, but a queue grows only until its capacity fits its greatest length."""
    growths = []
    for _ in range(MOST_ROUNDS):
        first()
        before, used, began = memory_of(vorlane.process), cpu_of(vorlane.process), time.monotonic()
        second()
        growths.append(memory_of(vorlane.process) - before)
        print(f'{time.monotonic() - began:.2f} s, {cpu_of(vorlane.process) - used:.2f} s of CPU, '
              f'{growths[-1]} KiB more')
        if growths[-1] < MOST_GROWTH:
            return
    pytest.fail(f'grew by {growths} KiB')


@pytest.fixture
def count(pytestconfig):
    """How many changes to make: each costs the virtual laptop more time than the program."""
    return (pytestconfig.getoption('--flood') or 2500) // 25


@pytest.mark.parametrize('send_flood', [upower_signals, owner_changes, sleep_signals, notification_signals,
                                        tray_calls, activation_tokens], ids=lambda send_flood: send_flood.__name__)
def test_it_keeps_working_during_a_flood(laptop, vorlane, item, send_flood, pytestconfig):
    count = pytestconfig.getoption('--flood') or 2500
    # The sanitizer's default quarantine of freed memory would look like growth.
    vorlane.start(environment=vorlane.with_small_quarantine())
    floods = [Flood(laptop.system_bus, vorlane.process), Flood(laptop.session_bus, vorlane.process)]

    def flood_and_change(change, percent):
        send_flood(*floods, count // 2)
        change(percent)
        send_flood(*floods, count // 2)
        item.wait_for_label(f'{percent}%')
        for flood in floods:
            flood.flush()
        vorlane.round_trip()

    expect_no_growth(vorlane, lambda: flood_and_change(laptop.unplug, 59), lambda: flood_and_change(laptop.plug_in, 61))
    assert item.icon.endswith('bolt-symbolic')
    assert 'snoozeUntil' not in (vorlane.settings() if os.path.exists(vorlane.settings_path) else '')


def test_settings_rewritten_many_times_end_at_the_last_value(vorlane, item, count):
    vorlane.start(environment=vorlane.with_small_quarantine())

    def rewrite_many_times():
        for number in range(count):
            vorlane.write_settings(f'showTime = {"true" if number % 2 else "false"}\n')
        item.wait_for_label('60% · 3:00')

    expect_no_growth(vorlane, rewrite_many_times, rewrite_many_times)


def test_a_flood_of_kernel_events_is_handled(laptop, vorlane, item, count):
    vorlane.start(environment=vorlane.with_small_quarantine())

    def flood_and_change(percent):
        for number in range(count):
            laptop.testbed.change('AC', online=number % 2)
            if number % 10 == 9:  # the event sender gives up on a receiver that lags too far behind
                vorlane.round_trip()
                laptop.system_bus.call('org.freedesktop.UPower', '/org/freedesktop/UPower',
                                       'org.freedesktop.UPower', 'EnumerateDevices')
        laptop.charge_to(percent)
        item.wait_for_label(f'{percent}%')

    expect_no_growth(vorlane, lambda: flood_and_change(59), lambda: flood_and_change(58))
