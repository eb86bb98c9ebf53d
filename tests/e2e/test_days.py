"""A few hours of simulated use: the short form of bench/soak."""
import contextlib

from laptop.life.days import Days
from laptop.life.life import Life

BEGIN, MINUTES = 10 * 60 + 30, 210
# This seed covers two rare cases: a click right after a wake finds a condition that began during the sleep, and a cable
# moved right after another wake makes a reminder due at once.
SEED = 188


def test_a_few_hours_of_use(program):
    days = Days(1, popovers=24, naps=24, seed=SEED)
    with contextlib.closing(Life(program, days, begin_at=BEGIN, history=100)) as life:
        life.live(MINUTES)
        life.end()

        life.check_history()
        assert life.expected  # live() has checked that these and no others were posted, each in its minute
        assert life.happened.keys() >= {
            'plug', 'sleep', 'snooze', 'popover', 'click on reminder', 'click after wake', 'cable after wake'}
