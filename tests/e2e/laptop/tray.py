"""The program's item in one kind of tray: what the screen shows, and the pointer and keyboard to use it."""
from .desktop import POPOVER, SETTINGS, without_shadow
from .pictures import picture_that_differs, picture_with_panel, still_picture
from .sway import Sway
from .waiting import wait_until

AWAY = (640, 15)  # a place for the pointer, which may be in the picture, clear of every menu and window
# LINES: how many lines from the end a menu line is, for the keyboard; its pixels above the lower edge, for clicks.
MENU_INSIDE = 60  # pixels to the left of the menu's right edge
LINES = {'Quit': (1, 17), 'Settings': (2, 43)}


class Tray:
    """The program is running at 60%, and its item is visible."""

    def __init__(self, laptop, host):
        self.laptop, self.host, self.item, self.vorlane = laptop, host, laptop.item, laptop.vorlane
        self.screen = host.screen(laptop.machine)
        if hasattr(self.screen, 'plug_in_pointer'):
            self.screen.plug_in_pointer()
        self.program = host.program(laptop.machine, laptop.session_bus)
        self.screen.move_pointer(*AWAY)
        self.without = picture_with_panel(self.screen, self.program.start)
        self.show()

    def show(self):
        self.vorlane.start()
        self.picture, self.box = picture_that_differs(self.screen, self.without)

    def change(self):
        """A still picture once the item looks different from the start, and the box of the change."""
        return picture_that_differs(self.screen, self.picture)

    def click(self, button=1):
        left, top, right, bottom = self.box
        self.screen.click((left + right) // 2, (top + bottom) // 2, button)

    def open_menu(self):
        """Returns the picture with the menu, and its box."""
        before = still_picture(self.screen)
        self.click(self.host.menu_button)
        return picture_that_differs(self.screen, before)

    def choose(self, line):
        """Chooses a menu line by keyboard or pointer."""
        _, (_, _, right, bottom) = self.open_menu()
        from_end, above_edge = LINES[line]
        if self.host.menu_keys:
            self.screen.press_keys(*['Up'] * from_end, 'Return')
        else:
            self.screen.click(right - MENU_INSIDE, bottom - above_edge)

    def popover(self):
        """The box of the popover's panel; None while it is closed."""
        window = self.screen.window_titled(f'^{POPOVER}$')
        return without_shadow(window) if window and isinstance(self.screen, Sway) else window

    def settings(self):
        return self.screen.window_titled(f'^{SETTINGS}$')

    def tidy(self):
        """Restores the initial state."""
        if not self.vorlane.process:
            self.vorlane.start()
        for window, keys in ((self.popover, 'Escape'), (self.settings, 'ctrl+w')):
            if window():
                self.screen.press_keys(keys)
            wait_until(lambda: not window(), 'no window', look_every=0.05)
        self.vorlane.write_settings('')
        self.laptop.restore_battery()
        self.wait_until_looks_like(self.picture)

    def wait_until_looks_like(self, picture, but_for=0):
        """Ignores a difference up to `but_for` pixels wide."""
        self.screen.move_pointer(*AWAY)

        def same():
            box = self.screen.picture().difference(picture)
            return not box or box[2] - box[0] <= but_for
        wait_until(same, lambda: f'the same picture; {self.screen.picture().difference(picture)} differs',
                   look_every=0.1)

    def wait_until_gone(self, picture):
        """Waits until the item and the panel shown in that picture are both gone."""
        def gone():
            box = self.screen.picture().difference(picture)
            return box and box[2] - box[0] == picture.width
        wait_until(gone, 'the panel to vanish', look_every=0.1)
