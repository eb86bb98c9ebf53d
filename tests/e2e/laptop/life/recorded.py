"""What the history's file has to hold: of each look that was had at the program, what it must have recorded.

The program also looks by itself: every five seconds after a wake, and when UPower speaks. Such a look may see a change
before the one that was meant to, and records it; that is all that may be there besides.
"""
from dataclasses import dataclass

MONTH = 30 * 86400


@dataclass(frozen=True)
class Look:
    reason: str
    since: float  # it did not come before this
    until: float  # and was over then
    reading: tuple  # (percent, charging, plugged)


class Recorded:
    def __init__(self, before):
        """`before` is in the file when the program starts: (time, percent, charging, plugged) each."""
        self._before, self._looks = list(before), []

    def note(self, reason, since, until, reading):
        self._looks.append(Look(reason, since, until, reading))

    def check(self, samples):
        """The same four of each sample of the file; gives how many are changes that were seen early."""
        assert samples, 'nothing recorded'
        assert all(one[0] <= other[0] for one, other in zip(samples, samples[1:])), 'out of order'
        oldest = samples[-1][0] - MONTH
        assert samples[0][0] >= oldest, f'{samples[0]} is older than a month'
        kept = [one for one in self._before if one[0] >= oldest]
        assert samples[:len(kept)] == kept, f'of {len(kept)} samples of before not all are there'
        return self._check_looks(samples, len(kept), oldest)

    def _check_looks(self, samples, at, oldest):
        surplus, last = 0, None
        for look in self._looks:
            first = at
            while at < len(samples) and samples[at][0] <= look.until:
                at += 1
            # One during which the month began may have left its sample or not.
            if look.since >= oldest:
                surplus += _check_look(look, samples[max(first - 1, 0):first], samples[first:at], last)
            last = look
        assert at == len(samples), f'{samples[at:]} after {last}'
        return surplus


def _check_look(look, before, own, last):
    """`own` came since the look before, which was `last`."""
    told = f'{look} has {own} after {before} and {last}'
    forced = look.reason != 'change'
    if forced:
        assert own and own[-1][0] >= look.since, f'nothing recorded: {told}'
    assert (before + own)[-1][1:] == look.reading, f'not what there was to see: {told}'

    changes = own[:-1] if forced else own
    for earlier, one in zip(before + changes, changes if before else changes[1:]):
        assert one[1:] != earlier[1:], f'{one} is no change: {told}'
    for one in changes:
        possible = zip(one[1:], look.reading, last.reading if last else look.reading)
        assert all(part in either for part, *either in possible), f'{one} was never so: {told}'
    return len(changes) if forced else max(len(changes) - 1, 0)
