"""The system clock is changed while the program runs."""
import pytest

from laptop.waiting import wait_until

LIMIT = 'Charge limit reached'
DAY = 86400
TO_2100 = 2.3e9


@pytest.mark.parametrize('seconds', [-DAY, TO_2100])
def test_a_clock_change_affects_neither_repeats_nor_a_snooze(
        laptop, vorlane, dunst, notifications, item, clock, seconds):
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


def test_samples_are_restored_once_the_clock_is_corrected(laptop, vorlane, clock):
    now = clock.now().timestamp()
    vorlane.write_history([{'t': now - 60 * i, 'p': 60, 'c': False, 'a': False} for i in range(600, 0, -1)])
    clock.set(-8 * 3600)  # as after booting another system that keeps the hardware clock in local time
    vorlane.start(clock)
    vorlane.advance(60)

    clock.set(8 * 3600)
    vorlane.advance(360)
    wait_until(lambda: len(vorlane.history()) > 600, lambda: f'{len(vorlane.history())} samples', look_every=0.05)

    times = [sample['t'] for sample in vorlane.history()]
    assert times == sorted(times)
    assert times[-1] <= clock.now().timestamp()
