"""What a changed setting, a history reset and Launch at Login do."""
import json
import shutil
import time

import pytest

from laptop.desktop import ALERT, Desktop
from laptop.settings_controls import focus_picker, stepper, type_time
from laptop.waiting import wait_until

LOGIN_ERROR = 'Could not change Launch at Login: '
UNAVAILABLE = (
    'Reminders need a notification service, and none answers on the session bus. Desktops bring one along; '
    'elsewhere a notification daemon has to run.')


@pytest.fixture(scope='module')
def shared_desktop(shared_laptop):
    now = time.time()
    shared_laptop.vorlane.write_history(
        [{'t': now - ago, 'p': 70, 'c': False, 'a': False} for ago in (7200, 3600)])
    return Desktop(shared_laptop).start()


@pytest.fixture
def desktop(shared_desktop):
    yield shared_desktop
    shared_desktop.tidy()


@pytest.fixture
def window(desktop):
    return desktop.open_settings()


def test_the_tray_label_follows_at_once(desktop, window):
    window.find('Show time remaining', 'check box').do('Toggle')
    desktop.item.wait_for_label('60% · 3:00')

    window.find('Show percentage in the tray', 'check box').do('Toggle')
    desktop.item.wait_for_label('3:00')

    window.find('Show time remaining', 'check box').do('Toggle')
    desktop.item.wait_for_label('')


def test_a_raised_low_level_reminds_at_the_next_reading_with_the_chosen_sound(desktop, window):
    count = len(desktop.notifications.titles())
    focus_picker(desktop, window, 'lowSound')
    desktop.screen.press_keys('Down')
    desktop.vorlane.wait_for_setting('lowSound', 'none')

    stepper(window, 'low').value = 45
    desktop.vorlane.wait_for_setting('low', 45)
    assert len(desktop.notifications.titles()) == count
    desktop.laptop.charge_to(44)

    reminder = desktop.notifications.wait_for(count + 1)
    assert (reminder.title, reminder.body) == ('Low battery', 'Battery is at 44%. Plug in soon.')
    assert reminder.hints.get('suppress-sound') is True


def hours_from_now(hours):
    return time.strftime('%H%M', time.gmtime(time.time() + hours * 3600))


def test_quiet_hours_hold_a_reminder_until_they_are_switched_off(desktop, window):
    count = len(desktop.notifications.titles())
    window.find('Hold alerts during quiet hours', 'check box').do('Toggle')
    end = window.find('Until', 'spin box')
    wait_until(lambda: end.enabled, 'the time fields to be enabled', look_every=0.02)
    type_time(desktop, window.find('From', 'spin box'), hours_from_now(-1))
    type_time(desktop, end, hours_from_now(1))
    wait_until(lambda: desktop.vorlane.setting('quietEnd') is not None, 'the time', look_every=0.02)

    desktop.laptop.charge_to(20)
    desktop.item.wait_for_label('20%')
    assert len(desktop.notifications.titles()) == count

    window.find('Hold alerts during quiet hours', 'check box').do('Toggle')
    desktop.vorlane.wait_for_setting('quietEnabled', False)
    desktop.laptop.charge_to(19)
    assert desktop.notifications.wait_for(count + 1).title == 'Low battery'


def test_launch_at_login_writes_and_removes_the_autostart_file(desktop, window):
    toggle = window.find('Launch at Login', 'check box')
    assert not toggle.checked

    toggle.do('Toggle')
    wait_until(desktop.vorlane.autostart_path.exists, 'the autostart file', look_every=0.02)
    wait_until(lambda: toggle.checked, 'the switch to follow', look_every=0.02)

    toggle.do('Toggle')
    wait_until(lambda: not desktop.vorlane.autostart_path.exists(), 'no autostart file', look_every=0.02)
    wait_until(lambda: not toggle.checked, 'the switch to follow', look_every=0.02)


def test_a_failed_launch_at_login_shows_the_reason_and_stays_off(desktop, window):
    folder = desktop.vorlane.autostart_path.parent
    shutil.rmtree(folder, ignore_errors=True)
    folder.write_text('no folder')
    toggle = window.find('Launch at Login', 'check box')

    toggle.do('Toggle')
    wait_until(lambda: login_error(window), 'the reason', look_every=0.02)
    assert len(login_error(window)) > len(LOGIN_ERROR)
    assert not toggle.checked

    folder.unlink()
    toggle.do('Toggle')
    wait_until(lambda: not login_error(window), 'the reason to disappear', look_every=0.02)
    wait_until(lambda: toggle.checked, 'the switch to follow', look_every=0.02)
    toggle.do('Toggle')
    wait_until(lambda: not desktop.vorlane.autostart_path.exists(), 'no autostart file', look_every=0.02)


def login_error(window):
    return next((text for text in window.texts() if text.startswith(LOGIN_ERROR)), None)


def ask_for_reset(desktop, window):
    window.find('Reset History…', 'push button').press()
    dialog = desktop.accessibility.wait_for_window(ALERT)
    texts = dialog.texts()
    for text in ('Reset history?', 'This deletes all saved battery samples used for the chart.', 'Reset',
                 'Cancel'):
        assert text in texts
    return dialog


def saved_samples(desktop):
    with open(desktop.vorlane.history_path) as file:
        return json.load(file)


def chart_text(popover):
    return next(one.name for one in popover.walk() if one.role == 'chart')


def test_a_cancelled_reset_changes_nothing(desktop, window):
    before = saved_samples(desktop)

    ask_for_reset(desktop, window).find('Cancel', 'push button').press()
    desktop.accessibility.wait_until_gone(ALERT)
    ask_for_reset(desktop, window)
    desktop.screen.press_keys('Escape')
    desktop.accessibility.wait_until_gone(ALERT)

    assert saved_samples(desktop) == before
    assert chart_text(desktop.open_popover()).startswith('Charge over the last 24 hours: ')


def test_a_reset_empties_the_history_and_the_chart(desktop, window):
    ask_for_reset(desktop, window).find('Reset', 'push button').press()

    wait_until(lambda: saved_samples(desktop) == [], 'an empty history', look_every=0.02)
    desktop.accessibility.wait_until_gone(ALERT)
    desktop.open_popover().wait_for('Collecting history… a graph appears after a few minutes.')


def test_quitting_with_both_windows_open_saves_the_history(laptop):
    desktop = Desktop(laptop).start(notifications=False)
    desktop.open_settings()
    desktop.open_popover()
    laptop.charge_to(59)
    desktop.item.wait_for_label('59%')

    desktop.vorlane.quit()

    assert desktop.vorlane.history()[-1]['p'] == 59


def test_a_missing_notification_daemon_is_reported_at_the_next_reading(desktop, window):
    assert not window.find(UNAVAILABLE)

    desktop.dunst.kill()
    desktop.laptop.charge_to(61)
    window.wait_for(UNAVAILABLE)

    desktop.dunst.start()
    desktop.laptop.charge_to(62)
    window.wait_until_gone(UNAVAILABLE)
