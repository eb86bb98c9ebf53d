"""Services that are late, absent, frozen or killed, and the machine's sleep."""
import socket

from laptop.upower import FixedUPower
from laptop.waiting import wait_until
from test_reminders import LIMIT, LOW


def test_without_a_notification_daemon_an_alert_is_dropped(laptop, vorlane, late_dunst, notifications, item):
    vorlane.start()
    laptop.charge_to(20)
    item.wait_for_label('20%')

    late_dunst.start()
    vorlane.round_trip()
    laptop.charge_to(19)
    item.wait_for_label('19%')

    assert notifications.titles() == []


def test_a_notification_daemon_that_comes_late_is_used(
        laptop, vorlane, late_dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    item.wait_for_label('80%')

    late_dunst.start()
    vorlane.advance(300)

    assert notifications.wait_for(1).title == LIMIT


def test_a_notification_daemon_that_the_bus_can_start_is_used(laptop, vorlane, late_dunst, notifications):
    laptop.session_bus.offer('org.freedesktop.Notifications', late_dunst.argv_in_environment())
    vorlane.start()

    laptop.charge_to(20)

    assert notifications.wait_for(1).title == LOW


def test_reminders_continue_after_a_notification_daemon_restarts(laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    first = notifications.wait_for(1)

    dunst.kill()
    laptop.charge_to(81)
    item.wait_for_label('81%')
    dunst.start()
    vorlane.advance(300)

    second = notifications.wait_for(2)
    assert second.title == LIMIT
    # The first id ended with the daemon that gave it, and may belong to another program by now.
    assert (second.replaces, first.id in notifications.closed) == (0, False)


def test_a_post_lost_with_its_daemon_is_posted_again(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.wear_to(79)
    notifications.wait_for(1)
    dunst.freeze()
    laptop.charge_to(20)
    wait_until(lambda: len(notifications.posted) == 2, 'the post to the frozen daemon')
    assert (notifications.posted[1].title, notifications.posted[1].id) == (LOW, None)

    dunst.kill()
    dunst.start()

    assert notifications.wait_for(3).title == LOW


def test_an_alert_survives_a_daemon_that_never_reported_its_capabilities(laptop, vorlane, dunst, notifications, item):
    dunst.freeze()
    vorlane.start()
    laptop.charge_to(20)
    item.wait_for_label('20%')

    dunst.kill()
    dunst.start()

    assert notifications.wait_for(1).title == LOW


def test_snoozing_works_with_a_restarted_daemon(laptop, vorlane, screen, dunst, notifications, item):
    vorlane.start()
    dunst.kill()
    dunst.start()
    laptop.charge_to(20)
    shown = notifications.wait_for(1)

    screen.click_on_window(dunst.window_class)
    notifications.wait_for_action(shown)

    item.wait_for_menu_line('Cancel Snooze')


def test_a_killed_upower_changes_nothing(laptop, vorlane, dunst, notifications, item):
    vorlane.start()
    laptop.upower.kill()

    laptop.charge_to(20)
    item.wait_for_label('20%')
    assert notifications.wait_for(1).title == LOW

    laptop.upower.start()
    laptop.charge_to(21)
    item.wait_for_label('21%')


def test_a_frozen_upower_blocks_nothing(laptop, vorlane, dunst, notifications, item):
    vorlane.start()
    laptop.upower.freeze()

    laptop.charge_to(20)
    item.wait_for_label('20%')
    assert notifications.wait_for(1).title == LOW
    vorlane.activate()
    vorlane.quit()

    laptop.upower.thaw()


def test_the_program_starts_while_upower_is_frozen(laptop, vorlane, item):
    laptop.upower.freeze()
    vorlane.start()

    item.wait_for_label('60%')
    assert item.tooltip.startswith('On battery, ')

    laptop.upower.thaw()


def test_without_upower_the_time_comes_from_energy_and_rate(laptop, vorlane, item):
    laptop.upower.kill()
    vorlane.write_settings('showTime = true\n')
    vorlane.start()

    item.wait_for_label('60% · 3:00')
    assert item.tooltip == 'On battery, 3 h left'


def test_the_time_comes_from_upower(laptop, vorlane, item, clock):
    laptop.upower.kill()
    vorlane.start(clock)
    item.wait_for_tooltip('On battery, 3 h left')

    upower = FixedUPower(laptop.machine, laptop.system_bus, seconds=7200)
    item.wait_for_tooltip('On battery, 2 h left')

    upower.freeze()
    clock.move(310)
    laptop.testbed.change('BAT0', cycle_count=124)
    item.wait_for_tooltip('On battery, 3 h left')
    upower.thaw()


def test_upower_on_a_system_bus_that_came_back_is_used(laptop, vorlane, item):
    vorlane.start()
    laptop.system_bus.close()
    laptop.system_bus.open()

    FixedUPower(laptop.machine, laptop.system_bus, seconds=7200)

    item.wait_for_tooltip('On battery, 2 h left')


def test_a_login_manager_that_comes_late_is_used(laptop, vorlane, item):
    laptop.system_bus.close()
    laptop.system_bus.open()
    vorlane.start()

    laptop.start_logind()

    wait_until(lambda: 'Vorlane' in laptop.logind.sleep_delays(), 'sleep to be delayed', look_every=0.02)


def test_sleep_is_delayed_until_the_history_is_saved(laptop, vorlane, item):
    vorlane.start()
    assert 'Vorlane' in laptop.logind.sleep_delays()
    laptop.charge_to(59)
    item.wait_for_label('59%')
    assert vorlane.history()[-1]['p'] == 60

    laptop.logind.say_sleep(True)
    wait_until(lambda: 'Vorlane' not in laptop.logind.sleep_delays(), 'sleep to be allowed', look_every=0.02)
    assert vorlane.history()[-1]['p'] == 59

    laptop.logind.say_sleep(False)
    wait_until(lambda: 'Vorlane' in laptop.logind.sleep_delays(), 'sleep to be delayed again',
               look_every=0.02)


def test_waking_takes_a_fresh_reading(laptop, vorlane, item, clock):
    vorlane.start(clock)
    laptop.logind.say_sleep(True)
    laptop.charge_silently_to(42)
    laptop.logind.say_sleep(False)
    vorlane.round_trip()
    assert item.label == '60%'

    vorlane.advance(3)

    item.wait_for_label('42%')


def test_the_program_works_without_a_system_bus(laptop, vorlane, dunst, notifications, item):
    vorlane.start(environment={'DBUS_SYSTEM_BUS_ADDRESS': 'unix:path=/nonexistent'})

    laptop.charge_to(20)

    item.wait_for_label('20%')
    assert notifications.wait_for(1).title == LOW


def test_a_system_bus_that_never_answers_blocks_nothing(laptop, vorlane, item):
    path = laptop.machine.folder('run', 'silent-bus')
    with socket.socket(socket.AF_UNIX) as silent:
        silent.bind(path)
        silent.listen()
        vorlane.start(environment={'DBUS_SYSTEM_BUS_ADDRESS': 'unix:path=' + path})

        laptop.charge_to(59)
        item.wait_for_label('59%')
        vorlane.quit()


def test_a_system_bus_that_comes_back_is_used_again(laptop, vorlane, item):
    vorlane.start()
    laptop.system_bus.close()
    laptop.system_bus.open()
    laptop.upower.start()
    laptop.start_logind()

    wait_until(lambda: 'Vorlane' in laptop.logind.sleep_delays(), 'sleep to be delayed again')


def test_reminders_work_after_losing_the_system_bus(laptop, vorlane, dunst, notifications, item):
    vorlane.start()
    laptop.system_bus.close()

    laptop.charge_to(20)

    item.wait_for_label('20%')
    assert notifications.wait_for(1).title == LOW
