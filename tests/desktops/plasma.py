"""Plasma 6, on X11 and on Wayland. On Wayland the compositor shows its screen in a window that covers an X screen,
so that the pointer, the keyboard and the pictures are those of that X screen.
"""
import copy
import json

from laptop.bus_monitor import BusMonitor
from laptop.status_item import WATCHER
from laptop.waiting import wait_until
from laptop.x_screen import SIZE, XScreen

from boxes import size_of
from x_desktop import XDesktop

KWIN, SCRIPTING = 'org.kde.KWin', 'org.kde.kwin.Scripting'
REPORT = 'org.vorlane.test.Windows'
SCRIPT = '''callDBus('org.vorlane.test', '/', '%s', 'Report', JSON.stringify(workspace.windowList()
    .filter(window => !window.minimized && !window.hidden)
    .map(({caption, frameGeometry: {x, y, width, height}}) => [caption, x, y, x + width, y + height])));''' % REPORT
# Reminders stay long enough for a slow machine.
NOTIFICATIONS = '[Notifications]\nPopupTimeout=120000\n'
SESSION = {'KDE_FULL_SESSION': 'true', 'KDE_SESSION_VERSION': '6', 'XDG_MENU_PREFIX': 'plasma-'}


class Plasma(XDesktop):
    folder, current_desktop, shell_program = 'plasma', 'KDE', 'plasmashell'
    shows_label, wallpaper_takes_focus, tells_menu = False, True, False
    recolors_icons = places_popover = True
    menu_button, clicks = 3, 1

    def __init__(self, laptop, accessibility):
        self._machine, self._bus, self._accessibility = laptop.machine, laptop.session_bus, accessibility
        self._windows = None
        self._monitor = BusMonitor(self._bus, [f"interface='{REPORT}'"])
        self._monitor.listen(self._note)
        self._script = self._machine.write(SCRIPT, 'windows.js')

    def start(self):
        self._machine.environment.update(SESSION)
        self._machine.write(NOTIFICATIONS, 'config', 'plasmanotifyrc')
        self._start_compositor()
        self._bus.wait_for(KWIN)
        self._bus.set_environment(self._machine.environment)
        self.start_shell()
        return self

    def start_shell(self):
        self._watcher = self._machine.start('kded6', ['/usr/bin/kded6'])
        self._bus.wait_for(WATCHER, self._watcher)
        self._shell = self._machine.start('plasmashell', ['/usr/bin/plasmashell', '--no-respawn'])
        self._bus.wait_for('org.kde.plasmashell', self._shell)
        wait_until(self._has_host, 'the tray', look_every=0.1)

    def kill_shell(self):
        for process in (self._shell, self._watcher):
            process.kill()
        self._bus.wait_until_free(WATCHER)

    def windows(self):
        """Title and box of each visible window, asked of the compositor."""
        self._windows = None
        number = self._bus.call(KWIN, '/Scripting', SCRIPTING, 'loadScript', 'ss', self._script, 'windows')
        self._bus.call(KWIN, f'/Scripting/Script{number}', 'org.kde.kwin.Script', 'run')
        wait_until(lambda: self._windows is not None, 'the windows of KWin')
        self._bus.call(KWIN, '/Scripting', SCRIPTING, 'unloadScript', 's', 'windows')
        return self._windows

    def window_titled(self, title):
        return next((box for name, *box in self.windows() if name == title), None)

    def item_box(self):
        """Where the item is in the panel; None while it is not there."""
        shell = self._accessibility.program(self.shell_program)
        return next((one.box for one in shell.walk() if one.name.startswith('Vorlane: ')), None) if shell else None

    @staticmethod
    def point_at_reminder(_):
        """Its buttons are always shown."""

    @staticmethod
    def press(control):
        """Presses a button of the shell."""
        control.press()

    def _has_host(self):
        return self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER, 'IsStatusNotifierHostRegistered')

    def _note(self, seen):
        if seen.interface == REPORT:
            self._windows = [(name, *map(int, box)) for name, *box in json.loads(str(seen.arguments[0]))]


class PlasmaX11(Plasma):
    name, session_type = 'plasma-x11', 'x11'

    def _start_compositor(self):
        self.screen = XScreen(self._machine, manager=None)
        self._bus.set_environment(self._machine.environment)  # for the portals, which KWin activates
        self._machine.start('kwin_x11', ['/usr/bin/kwin_x11'])

    def window_titled(self, title):
        """Asks the X server, since KWin does not list windows that it does not manage, such as the popover."""
        return self.screen.window_titled(f'^{title}$')


class PlasmaWayland(Plasma):
    name, session_type = 'plasma-wayland', 'wayland'
    scale = 1  # pixels per unit; boxes and positions are in units, pictures in pixels

    def _start_compositor(self):
        # The X screen is only for the compositor: the environment of the session has no DISPLAY.
        outside = copy.copy(self._machine)
        outside.environment = dict(self._machine.environment)
        width, height = (round(length * self.scale) for length in SIZE)
        self.screen = XScreen(outside, size=(width, height), manager=None)
        self._machine.write(json.dumps([
            {'name': 'outputs', 'data': [{'connectorName': 'X11-0', 'scale': self.scale}]},
            {'name': 'setups', 'data': [{'lidClosed': False, 'outputs': [
                {'enabled': True, 'outputIndex': 0, 'position': {'x': 0, 'y': 0}, 'priority': 0}]}]},
        ]), 'config', 'kwinoutputconfig.json')
        outside.start('kwin_wayland', ['/usr/bin/kwin_wayland', '--x11-display', outside.environment['DISPLAY'],
                                       '--width', str(width), '--height', str(height), '--socket', 'wayland-0'],
                      {'KWIN_COMPOSE': 'Q'})
        self._machine.environment['WAYLAND_DISPLAY'] = 'wayland-0'

    def window_titled(self, title):
        return super().window_titled(title) or self._layer_surface(title)

    def _layer_surface(self, title):
        """KWin gives a layer surface no title, so it is found by its size."""
        window = self._accessibility.window(title)
        if not window:
            return None
        _, _, *size = window.box
        return next((box for name, *box in self.windows() if not name and size_of(box) == size), None)

    def move_pointer(self, x, y):
        super().move_pointer(round(x * self.scale), round(y * self.scale))

    def click(self, x, y, button=1, times=1):
        super().click(round(x * self.scale), round(y * self.scale), button, times)
