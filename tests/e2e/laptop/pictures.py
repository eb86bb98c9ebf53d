"""Screenshots taken once the screen has changed and is still."""
import os
import time

from .waiting import wait_until

STILL = 0.4  # seconds without a change


class Album:
    """Saves screenshots if VORLANE_SCREENSHOTS names a folder."""

    def __init__(self):
        self._folder = os.environ.get('VORLANE_SCREENSHOTS')
        if self._folder:
            os.makedirs(self._folder, exist_ok=True)

    def __call__(self, picture, name):
        if self._folder:
            picture.save(os.path.join(self._folder, name + '.png'))
        return picture


def still_picture(screen, seconds=STILL):
    """The screen once it has not changed for a while."""
    last, since = screen.picture(), time.monotonic()

    def still():
        nonlocal last, since
        now = screen.picture()
        if now.difference(last):
            last, since = now, time.monotonic()
        return time.monotonic() - since >= seconds
    wait_until(still, 'the screen to be still', look_every=seconds / 2)
    return last


def picture_with_panel(screen, start):
    """A still picture of the screen once the panel launched by `start` is painted from edge to edge."""
    empty = screen.picture()
    start()

    def painted():
        box = screen.picture().difference(empty)
        return box and box[2] - box[0] == empty.width
    wait_until(painted, 'the panel from edge to edge', look_every=0.2)
    return still_picture(screen)


def picture_that_differs(screen, from_picture):
    """A still picture of the screen after a change, and the box in which it changed."""
    wait_until(lambda: screen.picture().difference(from_picture), 'a change on the screen', look_every=0.1)
    picture = still_picture(screen)
    box = picture.difference(from_picture)
    assert box, 'the change was undone'
    return picture, box
