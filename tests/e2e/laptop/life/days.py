"""The random but reproducible events in a laptop's use, at most one per minute so that their order is certain."""
import random
from dataclasses import dataclass

DAY = 1440
NIGHT = (23 * 60, 7 * 60)
TROUBLES = ('panel restarts', 'notification daemon restarts', 'upower restarts')


@dataclass(frozen=True)
class Sleep:
    minutes: int
    moves_cable: bool  # the cable is moved during the sleep, without a kernel event
    then: tuple  # actions in the first seconds after the wake: 'cable', 'click'


class Days:
    def __init__(self, days, popovers, naps, seed=1):
        self._random = random.Random(seed)
        self.happenings = {}  # minute: (name, value)
        for day in range(days):
            self._live(day * DAY, day, days)
        self._spread('popover', popovers, days, lambda: self._random.randrange(15))  # seconds into the minute
        self._spread('sleep', naps, days, lambda: self._sleep(1, 20))
        self._spread('settings', days, days)

    def at(self, minute):
        return self.happenings.get(minute)

    def clicks_on_reminder(self):
        """Whether the user opens the popover after a reminder (random)."""
        return self._random.random() < 0.5

    def count(self, name):
        return sum(happening == name for happening, _ in self.happenings.values())

    def _live(self, midnight, day, days):
        somewhen = self._random.randint
        # Most days have two spells on battery; every third day stays plugged in from noon through the night.
        self._add(midnight + somewhen(430, 500), 'unplug')
        self._add(midnight + somewhen(660, 730), 'plug')
        if day % 3:
            self._add(midnight + somewhen(880, 960), 'unplug')
            self._add(midnight + somewhen(1200, 1290), 'plug')
        # A nap in the day, and every third night.
        self._add(midnight + somewhen(760, 800), 'sleep', self._sleep(1, 60))
        if day % 3 == 2:
            self._add(midnight + somewhen(20, 60), 'sleep', self._sleep(300, 380))
        self._add(midnight + somewhen(740, 840), 'snooze')
        if day % 4 == 1:
            self._add(midnight + somewhen(845, 870), 'cancel snooze')
        self._add(midnight + somewhen(540, 600), 'quiet hours', day % 2 == 0)
        self._add(midnight + somewhen(600, 640), 'limit', self._random.choice((70, 80, 80, 90)))
        if day % 5 == 3:
            self._add(midnight + somewhen(900, 1000), 'health', 79)
        if day % 5 == 4:
            self._add(midnight + somewhen(900, 1000), 'health', 90)
        for trouble in TROUBLES:
            self._add(midnight + somewhen(480, 1380), trouble)

    def _sleep(self, least, most):
        toss = self._random.random
        return Sleep(self._random.randint(least, most), toss() < 0.5,
                     tuple(name for name in ('cable', 'click') if toss() < 0.5))

    def _spread(self, name, times, days, value=lambda: None):
        for _ in range(times):
            self._add(self._random.randrange(30, days * DAY - 30), name, value())

    def _add(self, minute, name, value=None):
        while any(near in self.happenings for near in (minute - 1, minute, minute + 1)):
            minute += 1
        self.happenings[minute] = (name, value)
