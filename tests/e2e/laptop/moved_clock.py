"""A clock that tests can move, used by chosen programs for the time of day and the uptime.

A program that waits does not notice a jump of the clock until something wakes it; the test
has to do that (see `Vorlane.advance`).
"""
import datetime
import mmap
import os
import struct
import subprocess
import time

# The layout that moved_clock.cpp reads: which of two sets of offsets counts, then both sets (passed, set, asleep), in
# nanoseconds.
TURN, OFFSETS = struct.Struct('q'), struct.Struct('qqq')


class MovedClock:
    def __init__(self, machine):
        self.preloaded = machine.folder('moved_clock.so')
        source = os.path.join(os.path.dirname(__file__), 'moved_clock.cpp')
        subprocess.run(['c++', '-std=c++20', '-O2', '-shared', '-fPIC', '-o', self.preloaded, source],
                       check=True)
        self._path = machine.folder('clock')
        with open(self._path, 'wb') as file:
            file.write(bytes(self._place(2)))
        with open(self._path, 'r+b') as file:
            self._shared = mmap.mmap(file.fileno(), self._place(2))
        self._turn = memoryview(self._shared).cast(TURN.format)

    def environment(self):
        return {'MOVED_CLOCK_FILE': self._path}

    def now(self):
        passed, was_set, _ = self._offsets()
        offset = datetime.timedelta(microseconds=(passed + was_set) / 1000)
        return datetime.datetime.now(datetime.timezone.utc) + offset

    def monotonic(self):
        """Seconds of the monotonic clock, which stops during sleep and cannot be set."""
        passed, _, asleep = self._offsets()
        return time.monotonic() + (passed - asleep) / 1e9

    def move(self, seconds):
        """Time passes."""
        self._add(passed=seconds)

    def sleep(self, seconds):
        """Time passes while the machine sleeps."""
        self._add(passed=seconds, asleep=seconds)

    def set(self, seconds):
        """The time of day is set forward (or back) by this much; no time passes."""
        self._add(was_set=seconds)

    def set_time_of_day(self, hour, minute=0):
        """Moves the clock forward until it shows this time of day."""
        now = self.now()
        then = now.replace(hour=hour, minute=minute, second=0, microsecond=0)
        if then <= now:
            then += datetime.timedelta(days=1)
        self.move((then - now).total_seconds())

    def _offsets(self):
        return OFFSETS.unpack_from(self._shared, self._place(self._turn[0]))

    @staticmethod
    def _place(turn):
        return TURN.size + turn * OFFSETS.size

    def _add(self, passed=0, was_set=0, asleep=0):
        changes = [int(seconds * 1e9) for seconds in (passed, was_set, asleep)]
        turn = 1 - self._turn[0]
        OFFSETS.pack_into(self._shared, self._place(turn), *map(sum, zip(self._offsets(), changes)))
        self._turn[0] = turn  # atomic: a concurrent reader still uses the previous set
