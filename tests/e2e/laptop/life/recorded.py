"""What the history's file has to hold: of each look that was had at the program, what it must have recorded.

The program also looks by itself: every five seconds after a wake, and when UPower speaks. Such a look may see a change
before the one that was meant to, and records it; that is all that may be there besides.

Where several looks come at one time, it is one that is noted here, with what else there was to see in that time.
"""
from dataclasses import dataclass

MONTH = 30 * 86400


@dataclass(frozen=True)
class Look:
    reason: str
    since: float  # it did not come before this
    until: float  # and was over then
    reading: tuple  # (percent, charging, plugged)
    earlier: tuple = ()  # other readings of that time


class Recorded:
    def __init__(self, before):
        """`before` is in the file when the program starts: (time, percent, charging, plugged) each."""
        self._before, self._looks = list(before), []

    def note(self, reason, since, until, reading, earlier=()):
        self._looks.append(Look(reason, since, until, reading, tuple(earlier)))

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
    """`own` came since the look before, which was `last`; gives how many are changes that were seen early."""
    told = f'{look} has {own} after {before} and {last}'
    assert (before + own)[-1:], f'nothing recorded: {told}'
    assert (before + own)[-1][1:] == look.reading, f'not what there was to see: {told}'
    possible = [look.reading, *look.earlier, *([last.reading] if last else [])]
    for one in own:
        assert all(any(part == other[at] for other in possible) for at, part in enumerate(one[1:])), \
            f'{one} was never so: {told}'
    if look.reason == 'change':
        assert _are_changes(before, own), f'one is no change: {told}'
        return max(len(own) - 1, 0)
    # One of them was recorded for its own sake, which is the last one unless the looks were many.
    others = [own[:at] + own[at + 1:] for at, one in enumerate(own) if one[0] >= look.since]
    assert any(_are_changes(before, rest) for rest in others), f'none or too many recorded: {told}'
    return len(own) - 1


def _are_changes(before, samples):
    whole = before + samples
    return all(one[1:] != other[1:] for one, other in zip(whole, whole[1:]))
