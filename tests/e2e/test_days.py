"""Some hours in minutes: the short form of bench/soak."""
import contextlib

from laptop.life.days import Days
from laptop.life.life import Life

BEGIN, MINUTES = 10 * 60 + 30, 210
# By this one, what a sleep brings about meets a click right after the wake, and what a cable moved right after another
# wake brings about is due at once.
SEED = 188


def test_some_hours_of_a_laptop(program):
    days = Days(1, popovers=24, naps=24, seed=SEED)
    with contextlib.closing(Life(program, days, begin_at=BEGIN, history=100)) as life:
        life.live(MINUTES)
        life.end()

        life.check_history()
        assert life.expected  # each was posted in its minute, and nothing else was
        assert life.happened.keys() >= {
            'plug', 'sleep', 'snooze', 'popover', 'click on reminder', 'click after wake', 'cable after wake'}
