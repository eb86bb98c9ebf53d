"""Sleep and wake: conditions that began meanwhile, and a battery that is slow to respond."""
import contextlib

from laptop.waiting import wait_until


def sleep_and_wake(laptop):
    with asleep(laptop):
        pass


@contextlib.contextmanager
def asleep(laptop):
    laptop.logind.say_sleep(True)
    wait_until(lambda: 'Vorlane' not in laptop.logind.sleep_delays(), 'sleep to be allowed', look_every=0.02)
    yield
    laptop.logind.say_sleep(False)


def test_unplugging_a_second_after_the_wake_triggers_a_reminder(laptop, vorlane, dunst, notifications, item, clock):
    laptop.unplug(15)
    vorlane.start(clock)
    with asleep(laptop):
        clock.sleep(3600)
        laptop.plug_in(announce=False)
    vorlane.advance(0.5)

    laptop.unplug()
    vorlane.advance(0.5)

    assert notifications.titles() == ['Low battery']


def wait_until_the_wake_is_noticed(laptop):
    wait_until(lambda: 'Vorlane' in laptop.logind.sleep_delays(), 'the wake to be noticed', look_every=0.02)


def test_a_cable_moved_before_and_after_a_short_sleep_is_no_loose_contact(laptop, vorlane, item):
    vorlane.start()
    laptop.plug_in()
    item.wait_for_icon('battery.100.bolt')
    sleep_and_wake(laptop)
    wait_until_the_wake_is_noticed(laptop)

    laptop.unplug(59)

    item.wait_for_label('59%')
    assert item.icon == 'vorlane-battery-50-symbolic'


def test_a_cable_pulled_during_a_short_sleep_is_not_announced(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.unplug(15)
    vorlane.start(clock)
    laptop.plug_in()
    item.wait_for_icon('battery.100.bolt')
    with asleep(laptop):
        laptop.unplug(announce=False)
    wait_until_the_wake_is_noticed(laptop)

    vorlane.advance(3.5)
    item.wait_for_icon('battery.25')
    vorlane.advance(300)

    assert notifications.titles() == []


def test_conditions_that_appear_while_falling_asleep_or_waking_up_are_not_announced(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.unplug(25)
    vorlane.start(clock)
    with asleep(laptop):
        laptop.charge_to(20)
        item.wait_for_label('20%')
    wait_until_the_wake_is_noticed(laptop)

    laptop.charge_to(15)
    item.wait_for_label('15%')
    vorlane.advance(3.5)
    vorlane.advance(300)

    assert notifications.titles() == []


def test_the_item_registers_again_after_the_wake(laptop, vorlane, item):
    vorlane.start()
    vorlane.settle()
    before = item.registration_calls()

    sleep_and_wake(laptop)

    wait_until(lambda: item.registration_calls() > before, 'another registration')


def test_a_click_right_after_the_wake_does_not_announce_conditions_from_the_sleep(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(15)
    vorlane.start(clock)
    with asleep(laptop):
        laptop.unplug(announce=False)
    # The click arrives on a different bus from the wake signal and must not overtake it.
    wait_until_the_wake_is_noticed(laptop)

    item.activate()
    item.wait_for_icon('battery.25')
    vorlane.advance(300)
    assert notifications.titles() == []

    laptop.plug_in()
    vorlane.advance(20)
    laptop.unplug()
    notifications.wait_for(1)


def test_a_battery_that_reads_empty_after_a_resume_triggers_no_reminder(
        laptop, vorlane, dunst, notifications, item, clock):
    vorlane.start(clock)
    sleep_and_wake(laptop)
    laptop.charge_to(0)
    vorlane.advance(10)
    assert item.label == '60%'

    laptop.charge_to(58)
    item.wait_for_label('58%')

    assert notifications.titles() == []
    assert 0 not in [sample['p'] for sample in vorlane.history()]


def test_a_battery_missing_briefly_after_a_resume_withdraws_nothing(
        laptop, vorlane, dunst, notifications, item, clock):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    limit = notifications.wait_for(1)
    sleep_and_wake(laptop)
    laptop.pull_battery()
    vorlane.advance(20)
    assert item.label == '80%'

    laptop.put_battery_back(status='Charging', capacity='81')
    item.wait_for_label('81%')

    assert notifications.titles() == [limit.title]
    assert limit.open


def test_a_reading_that_settles_without_an_event_is_shown_within_seconds(laptop, vorlane, item, clock):
    vorlane.start(clock)
    sleep_and_wake(laptop)
    vorlane.advance(4)
    laptop.charge_silently_to(42)

    vorlane.advance(6)

    item.wait_for_label('42%')


def test_a_battery_that_stays_empty_is_accepted_after_half_a_minute(laptop, vorlane, item, clock):
    vorlane.start(clock)
    sleep_and_wake(laptop)
    laptop.charge_to(0)

    vorlane.advance(31)

    item.wait_for_label('0%')
