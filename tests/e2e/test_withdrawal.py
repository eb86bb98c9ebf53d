"""A reminder leaves the screen when it is no longer true."""
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


def test_a_reminder_goes_with_the_program(laptop, vorlane, dunst, notifications):
    vorlane.start()
    laptop.charge_to(20)
    low = notifications.wait_for(1)

    vorlane.quit()

    notifications.wait_until_closed(low)
