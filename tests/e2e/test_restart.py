"""A restart in place while readings are not what they seem: it takes back, repeats and loses no reminder."""
from test_reminders import LOW


def test_a_restart_still_knows_that_the_charger_is_too_weak(laptop, vorlane, dunst, notifications, item, clock):
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
