"""Cinnamon on X11. Its tray reads status items through a service of its own, xapp-sn-watcher."""
import subprocess

from laptop.pictures import picture_with_panel
from laptop.status_item import WATCHER
from laptop.x_screen import XScreen

from boxes import middle
from shell_eval import ShellEval
from x_desktop import XDesktop

SHELL = 'org.Cinnamon'
SETTINGS = [('org.cinnamon', 'desktop-effects', 'false')]
APPLET = "imports.ui.appletManager.getRunningInstancesForUuid('xapp-status@cinnamon.org')[0]"
ITEM = f"Object.values({APPLET}.statusIcons).find(icon => (icon.proxy.name || '').toLowerCase().includes('vorlane'))"


class Cinnamon(XDesktop):
    name, folder, current_desktop, session_type = 'cinnamon', 'cinnamon', 'X-Cinnamon', 'x11'
    shell_program = 'cinnamon'  # in the accessibility tree
    shows_label, wallpaper_takes_focus, tells_menu, places_popover = False, True, False, True
    recolors_icons = False
    menu_button, clicks = 3, 1

    def __init__(self, laptop, _accessibility):
        self._machine, self._bus = laptop.machine, laptop.session_bus
        self.evaluate = ShellEval(self._bus, SHELL)

    def start(self):
        for setting in SETTINGS:
            subprocess.run(['/usr/bin/gsettings', 'set', *setting], check=True, timeout=60,
                           env=self._machine.environment)
        self.screen = XScreen(self._machine, manager=None)
        self._bus.set_environment(self._machine.environment)
        self.start_shell()
        return self

    def start_shell(self):
        picture_with_panel(self.screen, self._start_shell)

    def _start_shell(self):
        self._shell = self._machine.start('cinnamon', ['/usr/bin/cinnamon', '--replace'])
        self._bus.wait_for(SHELL, self._shell)
        self._watcher = self._machine.start('sn-watcher', ['/usr/lib/x86_64-linux-gnu/xapps/xapp-sn-watcher'])
        self._bus.wait_for(WATCHER, self._watcher)
        self.evaluate.wait_for(f'!!{APPLET}', 'the tray')

    def kill_shell(self):
        for process in (self._shell, self._watcher):
            process.kill()
        self._bus.wait_until_free(WATCHER)

    def item_box(self):
        """Where the item is in the panel; None while it is not there."""
        box = self.evaluate(f'(item => item && item.actor.visible && [...item.actor.get_transformed_position(),'
                            f' ...item.actor.get_transformed_size()])({ITEM})')
        if not box or None in box:  # null while the shell has not placed it yet
            return None
        x, y, width, height = map(int, box)
        return x, y, x + width, y + height

    def window_titled(self, title):
        return self.screen.window_titled(f'^{title}$')

    def point_at_reminder(self, title):
        """A notification shows its buttons at once."""

    def press(self, control):
        """Clicks a button of the shell."""
        self.click(*middle(control.box))
