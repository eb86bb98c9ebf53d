"""The icon windows embedded in X11 trays (XEMBED)."""
from Xlib import X, display, error


class TrayWindows:
    def __init__(self, name):
        self._display = display.Display(name)

    def has(self, application):
        """Whether a visible window of this class is embedded in a panel."""
        root = self._display.screen().root
        return any(self._find(window, application) for window in root.query_tree().children)

    def close(self):
        self._display.close()

    def _find(self, window, application, depth=0):
        try:
            if depth > 0 and application in (window.get_wm_class() or ()):
                return window.get_attributes().map_state == X.IsViewable
            return any(self._find(child, application, depth + 1) for child in window.query_tree().children)
        except error.XError:  # the window has gone
            return False
