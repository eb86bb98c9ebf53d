"""Batteries and cables that come and go or flap, and batteries of other devices."""
from laptop.testbed import BATTERY, MOUSE
from test_reminders import LIMIT


def test_plugging_in_and_unplugging_is_shown(laptop, vorlane, item, clock):
    vorlane.start(clock)
    item.wait_for_icon('battery.50')

    laptop.plug_in()
    item.wait_for_icon('battery.100.bolt')
    assert item.tooltip.startswith('Charging, ')

    vorlane.advance(30)
    laptop.unplug()
    item.wait_for_icon('battery.50')


def test_a_battery_that_is_pulled_and_put_back(laptop, vorlane, item):
    vorlane.start()
    item.wait_for_label('60%')

    laptop.testbed.remove('BAT0')
    item.wait_for_tooltip('No battery found')
    assert item.label == ''
    assert item.icon == 'vorlane-battery-0-symbolic'

    laptop.testbed.add('BAT0', BATTERY)
    item.wait_for_label('60%')
    assert item.icon == 'vorlane-battery-50-symbolic'


def test_a_machine_without_a_battery(laptop, vorlane, item):
    laptop.testbed.remove('BAT0')
    vorlane.start()

    item.wait_for_tooltip('No battery found')
    assert vorlane.history() is None


def test_two_batteries_count_as_one(laptop, vorlane, item):
    # 27 of 45 Wh and 20 of 20 Wh: 47 of 65 Wh.
    laptop.testbed.add('BAT1', {**BATTERY, 'energy_full_design': '20000000', 'energy_full': '20000000',
                                'energy_now': '20000000', 'capacity': '100', 'status': 'Full',
                                'power_now': '0', 'serial_number': '0043'})
    vorlane.start()
    item.wait_for_label('72%')

    laptop.testbed.remove('BAT1')
    item.wait_for_label('60%')


def test_the_battery_of_a_mouse_is_ignored(laptop, vorlane, dunst, notifications, item):
    vorlane.start()

    laptop.testbed.add('hidpp_battery_0', MOUSE)
    laptop.charge_to(59)
    item.wait_for_label('59%')
    laptop.testbed.remove('BAT0')
    item.wait_for_tooltip('No battery found')

    assert notifications.titles() == []


def test_a_cable_that_flaps_for_14_minutes_repeats_at_most_one_reminder(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    assert notifications.wait_for(1).title == LIMIT
    before = len(notifications.titles())

    plugged = True
    for _ in range(int(14 * 60 / 3.2)):
        plugged = not plugged
        (laptop.plug_in if plugged else laptop.unplug)()
        vorlane.advance(2.7)

    assert len(notifications.titles()) - before <= 1
    vorlane.advance(60)
    (laptop.unplug if plugged else laptop.plug_in)()
    item.wait_for_icon('battery.75' if plugged else 'battery.100.bolt')
