"""Which reminders are posted, when, and how often."""
LIMIT = 'Charge limit reached'
LOW = 'Low battery'
TOO_LONG = 'Plugged in for a long time'
HEALTH = 'Battery health is low'


def test_the_charge_limit_is_announced_once_and_repeated_three_times(
        laptop, vorlane, dunst, notifications, clock):
    laptop.plug_in(79)
    vorlane.start(clock)

    laptop.charge_to(80)
    first = notifications.wait_for(1)
    assert first.title == LIMIT
    assert first.body == 'Battery is at 80%. Unplug to keep it healthy.'
    assert first.actions == ['SNOOZE', 'Snooze 1 hour']
    assert first.hints['desktop-entry'] == 'org.vorlane.Vorlane'

    vorlane.advance(200)
    assert len(notifications.titles()) == 1
    for count in (2, 3, 4):
        vorlane.advance(300)
        assert notifications.wait_for(count).title == LIMIT
    for _ in range(5):
        vorlane.advance(300)
    assert notifications.titles() == [LIMIT] * 4


def test_a_repeat_withdraws_the_previous_reminder(laptop, vorlane, dunst, notifications, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    first = notifications.wait_for(1)

    vorlane.advance(300)
    second = notifications.wait_for(2)
    notifications.wait_until_closed(first)

    assert second.open
    assert second.replaces == 0


def test_unplugging_rearms_the_charge_limit(laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    notifications.wait_for(1)

    vorlane.advance(20)
    laptop.unplug()
    item.wait_for_icon('battery.75')
    vorlane.advance(20)
    laptop.plug_in()

    assert notifications.wait_for(2).title == LIMIT


def test_a_low_battery_is_announced_once_and_urgently(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)

    laptop.charge_to(20)
    low = notifications.wait_for(1)
    assert (low.title, low.body) == (LOW, 'Battery is at 20%. Plug in soon.')
    assert low.hints['urgency'] == 2

    laptop.charge_to(19)
    item.wait_for_label('19%')
    vorlane.advance(3600)
    assert notifications.titles() == [LOW]


def test_being_plugged_in_too_long_is_announced_once(laptop, vorlane, dunst, notifications, clock):
    laptop.plug_in(85)
    vorlane.start(clock)

    vorlane.advance(8 * 3600 - 120)
    assert notifications.titles() == []
    vorlane.advance(300)
    long = notifications.wait_for(1)
    vorlane.advance(3600)

    assert long.body == 'Plugged in for over 8 h at 85%. Unplug it to let the battery rest.'
    assert notifications.titles() == [TOO_LONG]


def test_a_worn_battery_is_announced_once_across_restarts(laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)
    laptop.wear_to(79)
    health = notifications.wait_for(1)
    assert (health.title, health.body) == (
        HEALTH, 'Battery health has fallen to 79% of its original capacity.')

    vorlane.quit()
    vorlane.start(clock)
    laptop.wear_to(78)
    laptop.charge_to(59)
    item.wait_for_label('59%')
    vorlane.advance(120)

    assert notifications.titles() == [HEALTH]


def test_low_health_is_announced_again_after_a_recovery(laptop, vorlane, dunst, notifications, clock):
    vorlane.start(clock)
    laptop.wear_to(79)
    notifications.wait_for(1)

    laptop.wear_to(82)
    vorlane.advance(120)
    laptop.wear_to(79)

    assert notifications.wait_for(2).title == HEALTH


def test_conditions_already_true_at_launch_are_not_announced(laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(85)
    laptop.wear_to(75)
    vorlane.start(clock)

    laptop.charge_to(86)
    item.wait_for_label('86%')
    vorlane.advance(600)
    assert notifications.titles() == []

    vorlane.advance(20)
    laptop.unplug(15)

    assert notifications.wait_for(1).title == LOW


def test_conditions_that_began_during_sleep_are_not_announced(laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(70)
    vorlane.start(clock)

    laptop.logind.say_sleep(True)
    laptop.charge_silently_to(85)
    laptop.logind.say_sleep(False)
    vorlane.round_trip()
    vorlane.advance(3)
    item.wait_for_label('85%')
    vorlane.advance(600)

    assert notifications.titles() == []


def test_a_custom_low_level_is_used(laptop, vorlane, dunst, notifications, item):
    vorlane.write_settings('low = 35\nlimitEnabled = false\n')
    vorlane.start()

    laptop.charge_to(36)
    item.wait_for_label('36%')
    assert notifications.titles() == []
    laptop.charge_to(35)

    assert notifications.wait_for(1).title == LOW
