"""The clock is set while the program runs."""
import pytest

from laptop.waiting import wait_until

LIMIT = 'Charge limit reached'
DAY = 86400
TO_2100 = 2.3e9


@pytest.mark.parametrize('seconds', [-DAY, TO_2100])
def test_the_limit_is_repeated_and_a_snooze_lasts_an_hour(laptop, vorlane, dunst, notifications, item, clock, seconds):
    laptop.plug_in(79)
    vorlane.start(clock)
    laptop.charge_to(80)
    notifications.wait_for(1)

    clock.set(seconds)
    vorlane.advance(300)
    assert notifications.titles() == [LIMIT] * 2

    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')
    clock.set(-seconds)
    vorlane.advance(3540)
    assert notifications.titles() == [LIMIT] * 2
    vorlane.advance(120)
    assert notifications.titles() == [LIMIT] * 3


def test_what_was_recorded_before_is_there_again_when_the_clock_is_right(laptop, vorlane, clock):
    now = clock.now().timestamp()
    vorlane.write_history([{'t': now - 60 * i, 'p': 60, 'c': False, 'a': False} for i in range(600, 0, -1)])
    clock.set(-8 * 3600)  # as after another system, which keeps the hardware's clock in local time
    vorlane.start(clock)
    vorlane.advance(60)

    clock.set(8 * 3600)
    vorlane.advance(360)
    wait_until(lambda: len(vorlane.history()) > 600, lambda: f'{len(vorlane.history())} samples', look_every=0.05)

    times = [sample['t'] for sample in vorlane.history()]
    assert times == sorted(times)
    assert times[-1] <= clock.now().timestamp()
