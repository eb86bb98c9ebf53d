"""A restart in place while readings are unsettled: no reminder is withdrawn, repeated or lost."""
from test_reminders import LOW
from test_resume import sleep_and_wake


def test_a_restart_remembers_that_the_charger_is_too_weak(laptop, vorlane, dunst, notifications, item, clock):
    laptop.unplug(30)
    laptop.testbed.change('AC', online=1)
    vorlane.start(clock)
    vorlane.advance(70)
    laptop.charge_to(20)
    low = notifications.wait_for(1)

    vorlane.restart_in_place()
    item.wait_for_icon('battery.25')
    vorlane.advance(70)
    assert notifications.titles() == [LOW]
    assert low.open and notifications.closed == []

    laptop.plug_in()
    notifications.wait_until_closed(low)


def test_a_restart_soon_after_a_wake_waits_for_the_battery(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)
    laptop.charge_to(20)
    low = notifications.wait_for(1)
    sleep_and_wake(laptop)
    laptop.pull_battery()

    vorlane.ask_to_restart()
    vorlane.advance(10)
    laptop.put_battery_back(capacity='19')
    item.wait_for_label('19%')
    clock.move(20)
    vorlane.wait_until_restarted()

    assert notifications.titles() == [LOW]
    assert low.open and notifications.closed == []


def test_a_restart_waits_for_a_cable_that_flaps(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)
    laptop.plug_in(15)
    item.wait_for_icon('battery.100.bolt')
    laptop.unplug()

    vorlane.ask_to_restart()
    vorlane.advance(1)
    clock.move(10)
    vorlane.wait_until_restarted()

    low = notifications.wait_for(1)
    assert notifications.titles() == [LOW]
    assert low.open and notifications.closed == []
