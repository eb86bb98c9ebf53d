"""A clock that tests move: what one program takes for the time and for the uptime.

A program that sleeps does not see the clock jump until something wakes it; that is the
mover's business (see `Vorlane.advance`).
"""
import datetime
import os

from . import preload


class MovedClock:
    def __init__(self, machine):
        self._path = machine.folder('clock')
        self._offset = 0.0
        self._write()

    def environment(self):
        return {'FAKETIME_TIMESTAMP_FILE': self._path, 'FAKETIME_NO_CACHE': '1', 'NO_FAKE_STAT': '1'}

    @staticmethod
    def library():
        return preload.faketime()

    def now(self):
        return datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(seconds=self._offset)

    def move(self, seconds):
        self._offset += seconds
        self._write()

    def set_time_of_day(self, hour, minute=0):
        """The next time that the clock shows this."""
        now = self.now()
        then = now.replace(hour=hour, minute=minute, second=0, microsecond=0)
        if then <= now:
            then += datetime.timedelta(days=1)
        self.move((then - now).total_seconds())

    def _write(self):
        # Replaced in one step: the program may read it at any moment.
        with open(self._path + '.new', 'w') as file:
            file.write(f'{self._offset:+.6f}\n')
        os.rename(self._path + '.new', self._path)
