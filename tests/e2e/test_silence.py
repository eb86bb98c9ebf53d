"""When reminders are held back: by a snooze, and in quiet hours."""
import time

from test_reminders import LIMIT, LOW


def reach_the_limit(laptop, vorlane, notifications, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    return notifications.wait_for(1)


def expect_an_hour_of_silence(vorlane, notifications, item):
    """Expects nothing for an hour after the snooze action, and then a repeat of the reminder."""
    item.wait_for_menu_line('Cancel Snooze')
    for _ in range(11):
        vorlane.advance(300)
    assert notifications.titles() == [LIMIT]

    vorlane.advance(360)
    assert notifications.wait_for(2).title == LIMIT
    item.wait_for_menu_line('Snooze 1 hour')


def test_a_click_on_the_action_in_dunst_snoozes_for_an_hour(
        laptop, vorlane, screen, dunst, notifications, item, clock):
    shown = reach_the_limit(laptop, vorlane, notifications, clock)

    screen.click_on_window(dunst.window_class)
    notifications.wait_for_action(shown)

    expect_an_hour_of_silence(vorlane, notifications, item)


def test_the_action_in_mako_snoozes_for_an_hour(laptop, vorlane, mako, notifications, item, clock):
    shown = reach_the_limit(laptop, vorlane, notifications, clock)

    mako.invoke('SNOOZE')
    notifications.wait_for_action(shown)

    expect_an_hour_of_silence(vorlane, notifications, item)


def test_another_programs_notification_does_not_snooze(laptop, vorlane, dunst, notifications, item):
    vorlane.start()

    laptop.session_bus.emit('/org/freedesktop/Notifications', 'org.freedesktop.Notifications',
                            'ActionInvoked', 'us', 4711, 'SNOOZE')
    vorlane.round_trip()

    assert 'Snooze 1 hour' in item.menu_lines()


def test_a_snooze_survives_a_restart(laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')

    vorlane.quit()
    vorlane.start(clock)
    assert item.has_menu_line('Cancel Snooze')
    laptop.charge_to(80)
    item.wait_for_label('80%')
    vorlane.advance(600)
    assert notifications.titles() == []

    vorlane.advance(3600)
    assert notifications.wait_for(1).title == LIMIT


def test_a_snooze_can_be_cancelled_from_the_menu(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)
    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')
    laptop.charge_to(20)
    item.wait_for_label('20%')
    assert notifications.titles() == []

    item.choose('Cancel Snooze')
    item.wait_for_menu_line('Snooze 1 hour')
    vorlane.advance(70)

    assert notifications.wait_for(1).title == LOW


def test_the_menu_shows_when_a_snooze_ends(laptop, vorlane, item, clock):
    def end():
        return time.strftime('%H:%M', time.gmtime(vorlane.snooze_deadline()))
    vorlane.start(clock, environment={'LANG': 'C.UTF-8'})
    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')
    before = end()
    assert item.has_menu_line(f'Cancel Snooze (until {before})')

    clock.set(8 * 3600)
    vorlane.advance(60)

    assert end() != before
    item.wait_for_menu_line(f'Cancel Snooze (until {end()})')


def test_quiet_hours_hold_a_reminder_back_until_they_end(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.write_settings('quietEnabled = true\nquietStart = 1320\nquietEnd = 420\n')
    clock.set_time_of_day(23)
    laptop.plug_in(79)
    vorlane.start(clock)

    laptop.charge_to(80)
    item.wait_for_label('80%')
    vorlane.advance(3600)
    vorlane.advance(6 * 3600)
    assert notifications.titles() == []

    vorlane.advance(3600 + 120)
    assert notifications.wait_for(1).title == LIMIT
