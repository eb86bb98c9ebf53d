"""Waits until the X server reports that a window of known width, with or without borders, is painted or gone."""
import select
import time

from Xlib import X, display
from Xlib.ext import damage

BORDERS = 4  # pixels, left and right together
PATIENCE = 30.0  # seconds


class Painting:
    def __init__(self, name, width):
        self._display = display.Display(name)
        self._width = width
        self._display.damage_query_version()
        root = self._display.screen().root
        root.change_attributes(event_mask=X.SubstructureNotifyMask)
        # Watches the root window, to catch even the first drawing of a new window.
        self._damage = root.damage_create(damage.DamageReportRawRectangles)
        self._window = None
        self._display.sync()

    def wait_until_painted(self):
        """Returns the time at which a visible window of this width was first painted."""
        return self._wait(self._is_painting)

    def wait_until_gone(self):
        return self._wait(self._is_unmapping)

    def close(self):
        self._display.close()

    def _is_painting(self, event):
        if event.type == X.MapNotify and self._fits(event.window.get_geometry()):
            self._window = event.window
        drawn = event.type == self._display.extension_event.DamageNotify
        return self._window is not None and drawn and self._fits(event.area)

    def _fits(self, box):
        return self._width <= box.width <= self._width + BORDERS

    def _is_unmapping(self, event):
        if event.type != X.UnmapNotify or event.window != self._window:
            return False
        self._window = None
        return True

    def _wait(self, wanted):
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            while self._display.pending_events():
                if wanted(self._display.next_event()):
                    return time.monotonic()
            select.select([self._display.fileno()], [], [], 1)
        raise TimeoutError('the window was not painted or closed in time')
