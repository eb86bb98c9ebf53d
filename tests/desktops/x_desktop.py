"""A desktop whose pictures, pointer and keyboard are those of an X screen."""


class XDesktop:
    """`screen` is set by the subclass."""

    def picture(self):
        return self.screen.picture()

    def move_pointer(self, x, y):
        self.screen.move_pointer(x, y)

    def click(self, x, y, button=1, times=1):
        for _ in range(times):
            self.screen.click(x, y, button)

    def press_keys(self, *keys):
        self.screen.press_keys(*keys)

    def choose(self, line, lines):
        """Chooses a line of the open menu by keyboard."""
        self.screen.press_keys(*['Up'] * (len(lines) - lines.index(line)), 'Return')

    def close_window(self, _title):
        """Closes the window with the focus."""
        self.screen.press_keys('ctrl+w')
