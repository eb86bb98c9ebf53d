"""The history of a laptop that is used by day, charged twice, and asleep at night."""
import datetime
import math

# For each day: the hours of waking and sleeping, two spells on power, and percent per hour on battery.
WEEK = [(7.2, 23.2, (9.0, 11.5), (16.4, 18.6), 9.5), (7.8, 22.8, (8.6, 12.1), (18.0, 20.1), 8.1),
        (9.4, 23.6, (10.2, 11.9), (17.1, 19.0), 11.0), (7.0, 22.5, (9.1, 10.7), (15.2, 17.0), 8.8),
        (7.4, 23.4, (8.9, 12.4), (16.9, 18.1), 10.2)]
DAYS = 9
MINUTE = datetime.timedelta(minutes=1)


def samples(until, percent):
    """One sample per minute awake; the samples since the last sleep are shifted gradually to end at `percent`."""
    lived = list(_live(until))
    last = next((at for at in range(len(lived) - 1, 0, -1) if lived[at]['t'] - lived[at - 1]['t'] > 60), 0)
    off = percent - lived[-1]['p']
    for at in range(last, len(lived)):
        bent = lived[at]['p'] + off * (at - last + 1) / (len(lived) - last)
        lived[at]['p'] = round(max(0, min(bent, 100)))
    return lived


def _live(until):
    charge, now = 62.0, until - datetime.timedelta(days=DAYS)
    while now < until:
        hour = now.hour + now.minute / 60
        wakes, sleeps, morning, afternoon, drain = WEEK[now.toordinal() % len(WEEK)]
        powered = any(begin <= hour < end for begin, end in (morning, afternoon))
        awake = wakes <= hour < sleeps
        if powered:
            charge += 0.62 * min(1, (100 - charge) / 20)
        else:
            busy = 1 + 0.5 * math.sin(2.1 * hour) + 0.3 * math.sin(7.7 * hour)
            charge = max(8.0, charge - (drain * busy if awake else 0.3) / 60)
        if awake:
            yield {'t': now.timestamp(), 'p': round(charge), 'c': powered, 'a': powered}
        now += MINUTE
