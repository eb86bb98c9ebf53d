"""A second, plain implementation of the rules to compare the program with: which reminders are due, what is recorded.

It keeps no counters: every question is answered by searching the past looks.
"""
import collections
import datetime
import zoneinfo
from dataclasses import dataclass, field

LIMIT, LOW, LONG, HEALTH = ('Charge limit reached', 'Low battery', 'Plugged in for a long time',
                            'Battery health is low')
MONTH = 30 * 86400
DEFAULTS = {'limitEnabled': True, 'limit': 80, 'repeatReminder': True, 'lowEnabled': True, 'low': 20,
            'longEnabled': True, 'longHours': 8, 'healthEnabled': True, 'quietEnabled': False,
            'quietStart': 22 * 60, 'quietEnd': 7 * 60}


@dataclass(frozen=True)
class Reading:
    percent: int
    plugged: bool
    charging: bool
    health: float  # percent of the design capacity


@dataclass
class Look:
    at: float
    reading: Reading
    holds: set
    primes: bool
    sent: list = field(default_factory=list)


class PlainRules:
    def __init__(self, zone):
        self.settings = dict(DEFAULTS)
        self.snoozed_until = 0.0
        self.samples = collections.deque()  # (time, percent, charging, plugged)
        self.since = None
        self._zone = zoneinfo.ZoneInfo(zone)
        self._health_sent = False
        self._spell = []  # the looks since no condition last held; older ones do not matter
        self._at_wake = None  # the reading at the wake; None after the scheduled look
        self._cable_moved = False  # the cable was moved since the wake

    def woke(self, reading):
        """Conditions count as already announced until the scheduled look, unless the cable is moved."""
        self._at_wake, self._cable_moved = reading, False

    def look(self, reason, reading, at):
        """The reminders (title, body) that are due; `reason` is launch, wake, timer or change."""
        if self._at_wake and not self._cable_moved and self._at_wake.plugged != reading.plugged:
            self._judge(self._at_wake, at, primes=True)
            self._cable_moved = True
        primes = reason == 'launch' or bool(self._at_wake and not self._cable_moved)
        if reason == 'wake':
            self._at_wake = None
        due = self._judge(reading, at, primes)
        self._record(reading, at, reason != 'change')
        return due

    def _judge(self, reading, at, primes):
        self._track_power(reading, at, primes)
        look = Look(at, reading, self._holds(reading, at), primes)
        allowed = not primes and at >= self.snoozed_until and not self.is_quiet(at)
        due = [self._worded(kind, look) for kind in (LIMIT, LOW, LONG) if allowed and self._due(kind, look)]
        look.sent = [title for title, _ in due]
        due += self._health(reading, allowed, primes)
        if not look.holds:
            self._spell.clear()
        else:
            self._spell.append(look)
        return due

    def is_quiet(self, at):
        start, end = self.settings['quietStart'], self.settings['quietEnd']
        if not self.settings['quietEnabled'] or start == end:
            return False
        local = datetime.datetime.fromtimestamp(at, self._zone)
        minute = local.hour * 60 + local.minute
        # Minutes after the start, modulo a day.
        return (minute - start) % 1440 < (end - start) % 1440

    def _holds(self, reading, at):
        above = reading.plugged and reading.percent >= self.settings['limit']
        return {kind for kind, holds in (
            (LIMIT, self.settings['limitEnabled'] and above),
            (LOW, self.settings['lowEnabled'] and not reading.plugged and reading.percent <= self.settings['low']),
            (LONG, self.settings['longEnabled'] and above and at - self.since > self.settings['longHours'] * 3600),
        ) if holds}

    def _looks_while_held(self, kind):
        """Yields the looks from the latest back to the one at which the condition began to hold."""
        for look in reversed(self._spell):
            if kind not in look.holds:
                return
            yield look

    def _due(self, kind, look):
        if kind not in look.holds:
            return False
        held = list(self._looks_while_held(kind))
        if any(before.primes for before in held):
            return False
        sent = [before.at for before in held if kind in before.sent]
        if not sent:
            return True
        most = 4 if self.settings['repeatReminder'] else 1
        return kind == LIMIT and len(sent) < most and look.at - sent[0] >= 290

    def _worded(self, kind, look):
        percent = f'{look.reading.percent}%'
        if kind == LIMIT:
            return kind, f'Battery is at {percent}. Unplug to keep it healthy.'
        if kind == LOW:
            return kind, f'Battery is at {percent}. Plug in soon.'
        hours = int((look.at - self.since) // 3600)
        return kind, f'Plugged in for over {hours} h at {percent}. Unplug it to let the battery rest.'

    def _health(self, reading, allowed, primes):
        if reading.health >= 82:
            self._health_sent = False
        if reading.health >= 80 or self._health_sent:
            return []
        sends = allowed and self.settings['healthEnabled']
        self._health_sent = sends or primes
        body = f'Battery health has fallen to {round(reading.health)}% of its original capacity.'
        return [(HEALTH, body)] if sends else []

    def _track_power(self, reading, at, primes):
        if not reading.plugged:
            self.since = None
        elif self.since is None:
            self.since = (self._estimate(at) if primes else None) or at

    def _estimate(self, at):
        start = None
        for time, _, _, plugged in reversed(self.samples):
            if not plugged or (at - time >= 600 if start is None else start - time > 900):
                break
            start = time
        return start

    def _record(self, reading, at, force):
        fresh = (reading.percent, reading.charging, reading.plugged)
        if force or not self.samples or self.samples[-1][1:] != fresh:
            self.samples.append((at, *fresh))
        while self.samples[0][0] < at - MONTH:
            self.samples.popleft()
