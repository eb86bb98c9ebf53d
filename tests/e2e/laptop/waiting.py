"""Waiting: the main loop sleeps until some event comes, and the condition is looked at again."""
from gi.repository import GLib

PATIENCE = 30.0  # seconds; used up only when what is waited for never comes


class NeverHappened(AssertionError):
    """What was waited for did not come."""


def wait_until(condition, what, patience=None, look_every=None):
    """The first true value of `condition`, which is looked at after every event.

    `look_every` (seconds) is for what announces itself by no event, such as pixels.
    `what` may be a function, called only to explain a failure.
    """
    patience = patience or PATIENCE
    context = GLib.MainContext.default()
    expired = []
    sources = [GLib.timeout_add(int(patience * 1000), lambda: expired.append(True) or True)]
    if look_every:
        sources.append(GLib.timeout_add(int(look_every * 1000), lambda: True))
    try:
        while not (value := condition()):
            if expired:
                raise NeverHappened(f'waited {patience:g} s for {what() if callable(what) else what}')
            context.iteration(True)
        return value
    finally:
        for source in sources:
            GLib.source_remove(source)
