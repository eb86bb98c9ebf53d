"""GNOME: gnome-shell on a virtual monitor, with the AppIndicator extension. The shell itself is the eye and the hand:
in unsafe mode it runs scripts, moves a virtual pointer and photographs the screen.
"""
import subprocess

from laptop.screenshot import Screenshot
from laptop.status_item import WATCHER

from boxes import middle
from shell_eval import ShellEval

SHELL = 'org.gnome.Shell'
SETTINGS = [('org.gnome.shell', 'enabled-extensions', "['ubuntu-appindicators@ubuntu.com']"),
            ('org.gnome.shell', 'welcome-dialog-last-shown-version', "'99'"),
            ('org.gnome.desktop.interface', 'enable-animations', 'false')]
ITEM = "Object.entries(Main.panel.statusArea).find(([name]) => name.startsWith('appindicator-'))?.[1]"
MENU = f'(({ITEM})?.menu.isOpen ? {ITEM}.menu._getMenuItems() : [])'
DEVICE = '''(async () => {{
    const {{default: Clutter}} = await import('gi://Clutter');
    global.{name} ??= global.stage.context.get_backend().get_default_seat()
        .create_virtual_device(Clutter.InputDeviceType.{type});
    const {name} = global.{name}, now = GLib.get_monotonic_time();
    %s
}})()'''
MOUSE = DEVICE.format(name='mouse', type='POINTER_DEVICE')
KEYBOARD = DEVICE.format(name='keyboard', type='KEYBOARD_DEVICE')
BUTTONS = {1: 'Clutter.BUTTON_PRIMARY', 2: 'Clutter.BUTTON_MIDDLE', 3: 'Clutter.BUTTON_SECONDARY'}
# The pauses are the shell's: a loaded machine would turn a double click into two clicks.
CLICKS = '''for (let click = 0; click < {times}; click++) {{
        for (const state of [Clutter.ButtonState.PRESSED, Clutter.ButtonState.RELEASED]) {{
            mouse.notify_button(GLib.get_monotonic_time(), {button}, state);
            await new Promise(done => setTimeout(done, 50));
        }}
    }}'''
WINDOWS = '''global.get_window_actors().filter(actor => actor.visible && !actor.meta_window.minimized)
    .map(({meta_window: window}) => [window.title, window.get_frame_rect()])
    .map(([title, {x, y, width, height}]) => [title, x, y, x + width, y + height])'''


class Gnome:
    name, folder, current_desktop, session_type = 'gnome', 'gnome', 'GNOME', 'wayland'
    shell_program = 'gnome-shell'  # in the accessibility tree
    shows_label = True
    places_popover = wallpaper_takes_focus = False
    tells_menu = True
    menu_button, clicks = 1, 2  # a click opens the menu, a double click the popover

    def __init__(self, laptop, _accessibility):
        self._machine, self._bus = laptop.machine, laptop.session_bus
        self.evaluate = ShellEval(self._bus, SHELL)

    def start(self):
        for setting in SETTINGS:
            subprocess.run(['/usr/bin/gsettings', 'set', *setting], check=True, timeout=60,
                           env=self._machine.environment)
        self._machine.environment['WAYLAND_DISPLAY'] = 'wayland-0'
        self._bus.set_environment(self._machine.environment)
        self.start_shell()
        return self

    def start_shell(self):
        self._shell = self._machine.start('gnome-shell', [
            '/usr/bin/gnome-shell', '--headless', '--unsafe-mode', '--no-x11', '--wayland-display', 'wayland-0',
            '--virtual-monitor', '1280x800'], {'WAYLAND_DISPLAY': None})
        self._bus.wait_for(WATCHER, self._shell)
        self.evaluate.wait_for('!Main.layoutManager._startingUp', 'GNOME to be up')
        for device in (MOUSE, KEYBOARD):
            self.evaluate(device % '')  # windows ignore keys until they know of the keyboard
        self.evaluate('Main.overview.hide()')
        self.evaluate.wait_for('!Main.overview.visible', 'the desktop without the overview')
        self.evaluate('Main.messageTray.getSources().forEach(source => source.destroy())')

    def kill_shell(self):
        self._shell.kill()
        self._bus.wait_until_free(WATCHER)

    def picture(self):
        path = self._machine.folder('screen.png')
        self._bus.call(SHELL + '.Screenshot', '/org/gnome/Shell/Screenshot', SHELL + '.Screenshot', 'Screenshot',
                       'bbs', True, False, path)
        return Screenshot.from_ppm(subprocess.run(['convert', path, 'ppm:-'], check=True,
                                                  stdout=subprocess.PIPE).stdout)

    def item_box(self):
        """Where the item is in the panel; None while it is not there."""
        return self._box(ITEM)

    def _box(self, actor):
        """The box of what the script finds; None if it finds nothing visible."""
        box = self.evaluate(f'(actor => actor?.mapped && [...actor.get_transformed_position(),'
                            f' ...actor.get_transformed_size()])({actor})')
        if not box or None in box:  # null while the shell has not placed it yet
            return None
        x, y, width, height = map(int, box)
        return x, y, x + width, y + height

    def shown_label(self):
        """The number that the panel shows beside the symbol."""
        return (self.evaluate(f'({ITEM})?._label?.text') or '').strip()

    def menu_lines(self):
        """The lines of the open menu of the item; empty while it is closed."""
        return self.evaluate(f'{MENU}.map(line => line.label?.text).filter(text => text)')

    def window_titled(self, title):
        return next((tuple(box) for name, *box in self.evaluate(WINDOWS) if name == title), None)

    def move_pointer(self, x, y):
        self.evaluate(MOUSE % f'mouse.notify_absolute_motion(now, {x}, {y});')

    def click(self, x, y, button=1, times=1):
        self.move_pointer(x, y)
        self.evaluate(MOUSE % CLICKS.format(times=times, button=BUTTONS[button]))

    def point_at_reminder(self, title):
        """A banner shows its buttons only under the pointer."""
        self.move_pointer(*middle(title.box))

    def press(self, control):
        """Clicks a button of the shell."""
        self.click(*middle(control.box))

    def choose(self, line, _lines):
        """Clicks a line of the open menu."""
        self.click(*middle(self._box(f'{MENU}.find(line => line.label?.text === {line!r})')))

    def press_keys(self, *keys):
        for key in keys:
            for state in ('PRESSED', 'RELEASED'):
                self.evaluate(KEYBOARD % f'keyboard.notify_keyval(now, Clutter.KEY_{key}, Clutter.KeyState.{state});')

    def close_window(self, title):
        self.evaluate(f'global.get_window_actors().find(actor => actor.meta_window.title === {title!r})'
                      f'.meta_window.delete(global.get_current_time())')
