"""A desktop to operate the windows on: a screen, pointer and keyboard, and the accessibility tree."""
import time

from .accessibility import Accessibility
from .notification_daemons import Dunst
from .waiting import wait_until
from .x_screen import XScreen

POPOVER, SETTINGS, ALERT = 'Vorlane', 'Vorlane Settings', 'Vorlane'
SHADOW = 24  # width in pixels of the popover's shadow, which is part of its window on a composited display
CLICK_PAUSE = 0.2  # seconds between clicks on the item; an earlier second click would close the popover


def without_shadow(box):
    """The box of the popover's panel, given the box of its window."""
    left, top, right, bottom = box
    return left + SHADOW, top + SHADOW, right - SHADOW, bottom - SHADOW


class Desktop:
    def __init__(self, laptop, screen=None):
        """Creates an X screen unless one is given."""
        self.laptop = laptop
        self.screen = screen or XScreen(laptop.machine)
        self.accessibility = Accessibility(laptop.machine, laptop.session_bus)
        self.item, self.vorlane = laptop.item, laptop.vorlane
        self.notifications = laptop.notifications

    def start(self, notifications=True, **options):
        """Starts the program, then opens and closes the popover so that the windows join the accessibility bus."""
        if notifications:
            self.dunst = Dunst(self.laptop.machine, self.laptop.session_bus).start()
        self.vorlane.start(**options)
        self._activate_until(lambda: self.accessibility.connected and self.popover_box())
        self.screen.press_keys('Escape')
        wait_until(lambda: not self.popover_box(), 'the popover to close', look_every=0.02)
        return self

    def popover_box(self):
        return self.screen.window_titled(f'^{POPOVER}$')

    def popover(self):
        """The popover's controls; None while it is closed."""
        return self.accessibility.window(POPOVER)

    def open_popover(self):
        self._activate_until(self.popover)
        return self.popover()

    def close_popover(self):
        if self.popover_box():
            self.screen.press_keys('Escape')
        self.wait_until_popover_closed()

    def wait_until_popover_closed(self):
        wait_until(lambda: not self.popover_box(), 'the popover to close', look_every=0.02)

    def click(self, window, control):
        """Clicks the middle of a control. Corrects its box by the window's position on X, which includes the frame."""
        left, top, right, bottom = control.box
        reported, real = window.box, self.screen.window_titled(f'^{window.name}$')
        self.screen.click((left + right) // 2 - reported[0] + real[0],
                          (top + bottom) // 2 - reported[1] + real[1])

    def settings(self):
        return self.accessibility.window(SETTINGS)

    def open_settings(self):
        self.item.choose('Settings')
        return self.accessibility.wait_for_window(SETTINGS)

    def close_settings(self):
        if self.settings():
            self.screen.press_keys('ctrl+w')
        self.accessibility.wait_until_gone(SETTINGS)

    def tidy(self):
        """Restores the initial state: no window, no settings, on battery at 60%."""
        self.close_popover()
        self.close_settings()
        self.vorlane.write_settings('')
        self.laptop.restore_battery()
        self.item.wait_for_label('60%')
        self.item.wait_for_menu_line('Snooze 1 hour')

    def _activate_until(self, opened):
        """Retries with pauses, because a click while the popover is opening would close it."""
        clicked = 0.0

        def click_and_look():
            nonlocal clicked
            if opened():
                return True
            if time.monotonic() - clicked > CLICK_PAUSE and not self.popover_box():
                self.item.activate()
                clicked = time.monotonic()
            return False
        wait_until(click_and_look, 'the popover', look_every=0.02)
