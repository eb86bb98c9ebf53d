"""Waits for conditions: sleeps in the main loop and checks again after each event."""
from gi.repository import GLib

PATIENCE = 30.0  # seconds before a wait fails


class NeverHappened(AssertionError):
    """A wait timed out."""


def wait_until(condition, description, patience=None, look_every=None):
    """Returns the first true value of `condition`, which is checked after every event.

    `look_every` (seconds) also polls, for changes without an event, such as pixels.
    `description` may be a function, called only to explain a failure.
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
                text = description() if callable(description) else description
                raise NeverHappened(f'waited {patience:g} s for {text}')
            context.iteration(True)
        return value
    finally:
        for source in sources:
            GLib.source_remove(source)
