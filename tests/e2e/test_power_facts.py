"""Adapters that are online but deliver too little power, and firmware that limits charging."""
from laptop.desktop import Desktop
from laptop.settings_controls import press, stepper
from test_reminders import LOW

USB = {'type': 'USB', 'online': '1'}


def test_a_usb_supply_that_stays_online_does_not_hide_a_low_battery(
        laptop, vorlane, dunst, notifications, item):
    laptop.testbed.add('ucsi-source-psy-USBC000:001', USB)
    vorlane.start()
    item.wait_for_icon('battery.50')

    laptop.charge_to(20)

    assert notifications.wait_for(1).title == LOW


def test_a_charger_that_is_too_weak_does_not_hide_a_low_battery(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.unplug(30)
    laptop.testbed.change('AC', online=1)
    vorlane.start(clock)
    item.wait_for_icon('powerplug.fill')

    vorlane.advance(70)
    item.wait_for_icon('battery.25')
    laptop.charge_to(20)
    assert notifications.wait_for(1).title == LOW

    laptop.plug_in()
    item.wait_for_icon('battery.100.bolt')


def test_firmware_that_drains_to_its_own_limit_stays_plugged_in(laptop, vorlane, item, clock):
    laptop.unplug(85)
    laptop.testbed.change('AC', online=1)
    vorlane.start(clock)

    for _ in range(3):
        vorlane.advance(70)

    item.wait_for_icon('powerplug.fill')
    assert item.tooltip == 'Plugged in, not charging'


def test_a_forced_discharge_stays_plugged_in(laptop, vorlane, item, clock):
    laptop.unplug(30)
    laptop.testbed.change('BAT0', charge_behaviour='auto inhibit-charge [force-discharge]')
    laptop.testbed.change('AC', online=1)
    vorlane.start(clock)

    for _ in range(3):
        vorlane.advance(70)

    item.wait_for_icon('powerplug.fill')


def test_the_time_to_full_ends_where_the_firmware_stops_charging(laptop, vorlane, item):
    vorlane.start()
    laptop.plug_in(60)
    item.wait_for_tooltip('Charging, 2 h to full')

    laptop.testbed.change('BAT0', charge_control_end_threshold=80)

    item.wait_for_tooltip('Charging, 1 h to full')


def test_the_settings_say_where_the_firmware_stops_charging(laptop):
    laptop.testbed.change('BAT0', charge_control_end_threshold=80)
    desktop = Desktop(laptop).start()
    window = desktop.open_settings()
    window.wait_for('This laptop stops charging at 80% by itself. A limit of 81% reminds you only if it '
                    'does not.')

    press(desktop, stepper(window, 'limit'), 'Down')

    window.wait_until_gone('This laptop stops charging at 80% by itself. A limit of 81% reminds you only '
                           'if it does not.')
