"""Some hours in minutes: the short form of bench/soak."""
import contextlib

from laptop.life.days import Days
from laptop.life.life import Life

BEGIN, MINUTES = 10 * 60 + 30, 210


def test_some_hours_of_a_laptop(program):
    with contextlib.closing(Life(program, Days(1, popovers=24), begin_at=BEGIN, history=100)) as life:
        life.live(MINUTES)
        life.end()

        life.check_history()
        assert life.expected  # each was posted in its minute, and nothing else was
        assert life.happened.keys() >= {'plug', 'sleep', 'snooze'}
