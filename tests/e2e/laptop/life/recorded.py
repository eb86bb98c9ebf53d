"""What the history file must contain: a sample of every look, that is, of every reading that the test caused.

The program also takes readings by itself: every five seconds after a wake, and at signals from UPower. These may record
a change early, before the look that follows it in the test; no other surplus samples are allowed.

Looks whose order is uncertain are noted as one, with the other readings that were possible at that time.
"""
from dataclasses import dataclass

MONTH = 30 * 86400


@dataclass(frozen=True)
class Look:
    reason: str
    since: float  # earliest time of the reading
    until: float  # latest time of the reading
    reading: tuple  # (percent, charging, plugged)
    earlier: tuple = ()  # other readings possible in this period


class Recorded:
    def __init__(self, before):
        """`before` are the samples in the file when the program starts: (time, percent, charging, plugged)."""
        self._before, self._looks = list(before), []

    def note(self, reason, since, until, reading, earlier=()):
        self._looks.append(Look(reason, since, until, reading, tuple(earlier)))

    def check(self, samples):
        """Checks the samples in the file, in the form of `before`; returns how many are early changes."""
        assert samples, 'nothing recorded'
        assert all(one[0] <= other[0] for one, other in zip(samples, samples[1:])), 'out of order'
        oldest = samples[-1][0] - MONTH
        assert samples[0][0] >= oldest, f'{samples[0]} is older than a month'
        kept = [one for one in self._before if one[0] >= oldest]
        assert samples[:len(kept)] == kept, f'not all of the {len(kept)} earlier samples are there'
        return self._check_looks(samples, len(kept), oldest)

    def _check_looks(self, samples, at, oldest):
        surplus, last = 0, None
        for look in self._looks:
            first = at
            while at < len(samples) and samples[at][0] <= look.until:
                at += 1
            # The sample of a look that straddles the start of the 30 days may have been dropped.
            if look.since >= oldest:
                surplus += _check_look(look, samples[max(first - 1, 0):first], samples[first:at], last)
            last = look
        assert at == len(samples), f'{samples[at:]} after {last}'
        return surplus


def _check_look(look, before, own, last):
    """`own` are the samples since `last`, the previous look; returns how many are early changes."""
    context = f'{look} has {own} after {before} and {last}'
    assert (before + own)[-1:], f'nothing recorded: {context}'
    assert (before + own)[-1][1:] == look.reading, f'not the reading at that time: {context}'
    possible = [look.reading, *look.earlier, *([last.reading] if last else [])]
    for one in own:
        assert all(any(part == other[at] for other in possible) for at, part in enumerate(one[1:])), \
            f'{one} never occurred: {context}'
    if look.reason == 'change':
        assert _are_changes(before, own), f'one is not a change: {context}'
        return max(len(own) - 1, 0)
    # One of them was recorded unconditionally, all others as changes.
    others = [own[:at] + own[at + 1:] for at, one in enumerate(own) if one[0] >= look.since]
    assert any(_are_changes(before, rest) for rest in others), f'none or too many recorded: {context}'
    return len(own) - 1


def _are_changes(before, samples):
    whole = before + samples
    return all(one[1:] != other[1:] for one, other in zip(whole, whole[1:]))
