"""A desktop for screenshots: wallpaper, a panel with a clock, and notifications with buttons."""
import os
import subprocess

from ..notification_daemons import XfceNotifyd
from ..pictures import still_picture
from ..waiting import wait_until
from ..x_screen import SIZE
from ..xfce_panel import XfcePanel

WALLPAPER = 'gradient:#2f5d73-#16303f'
STILL_BETWEEN_TICKS = 0.2  # seconds; the panel's clock shows seconds


class Desktop:
    def __init__(self, laptop, clock, pictures):
        self._laptop, self._pictures = laptop, pictures
        os.makedirs(pictures, exist_ok=True)
        self.screen = laptop.x_screen()
        # `display` always exits with 1, even after painting the wallpaper.
        subprocess.run(['display', '-size', f'{SIZE[0]}x{SIZE[1]}', '-window', 'root', WALLPAPER],
                       env=laptop.machine.environment, check=False, timeout=60)
        panel = XfcePanel(laptop.machine, laptop.session_bus, clock)
        panel.start(('applicationsmenu', 'stretch', 'indicator', 'clock'))
        self.daemon = XfceNotifyd(laptop.machine, laptop.session_bus).start()

    def photograph(self, name):
        """Saves a picture of the screen once it is still; returns its path."""
        path = os.path.join(self._pictures, name + '.png')
        still_picture(self.screen, STILL_BETWEEN_TICKS).save(path)
        return path

    def open_popover(self):
        """Opens it by a D-Bus call, because a click on this panel's plugin opens the menu."""
        self.screen.move_pointer(SIZE[0] - 120, 15)
        self._laptop.item.activate()
        wait_until(lambda: self.screen.window_titled('^Vorlane$'), 'the popover', look_every=0.05)

    def open_settings(self):
        self._laptop.item.choose('Settings')
        wait_until(lambda: self.screen.window_titled('^Vorlane Settings$'), 'the settings', look_every=0.05)

    def dismiss(self):
        """Clicks the notification's text."""
        left, top, _, _ = self.screen.wait_for_window(self.daemon.window_class)
        self.screen.click(left + 60, top + 40)

    def press_snooze(self):
        """Clicks the notification's lower right button."""
        _, _, right, bottom = self.screen.wait_for_window(self.daemon.window_class)
        self.screen.click(right - 60, bottom - 22)
