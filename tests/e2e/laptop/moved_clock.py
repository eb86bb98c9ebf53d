"""A clock that tests move: what chosen programs take for the time of day and for the uptime.

A program that sleeps does not see the clock jump until something wakes it; that is the
mover's business (see `Vorlane.advance`).
"""
import datetime
import mmap
import os
import struct
import subprocess

OFFSET = struct.Struct('q')  # nanoseconds, as moved_clock.cpp reads them


class MovedClock:
    def __init__(self, machine):
        self.preloaded = machine.folder('moved_clock.so')
        source = os.path.join(os.path.dirname(__file__), 'moved_clock.cpp')
        subprocess.run(['c++', '-std=c++20', '-O2', '-shared', '-fPIC', '-o', self.preloaded, source],
                       check=True)
        self._path = machine.folder('clock')
        with open(self._path, 'wb') as file:
            file.write(OFFSET.pack(0))
        with open(self._path, 'r+b') as file:
            self._shared = mmap.mmap(file.fileno(), OFFSET.size)

    def environment(self):
        return {'MOVED_CLOCK_FILE': self._path}

    def now(self):
        offset = datetime.timedelta(microseconds=self._offset() / 1000)
        return datetime.datetime.now(datetime.timezone.utc) + offset

    def move(self, seconds):
        OFFSET.pack_into(self._shared, 0, self._offset() + int(seconds * 1e9))

    def set_time_of_day(self, hour, minute=0):
        """The next time that the clock shows this."""
        now = self.now()
        then = now.replace(hour=hour, minute=minute, second=0, microsecond=0)
        if then <= now:
            then += datetime.timedelta(days=1)
        self.move((then - now).total_seconds())

    def _offset(self):
        return OFFSET.unpack_from(self._shared)[0]
