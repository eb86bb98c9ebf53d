"""An invisible Wayland desktop: sway with a headless output and no input devices."""
import json
import os
import re
import signal
import subprocess
import time

from .screenshot import Screenshot
from .waiting import wait_until
from .wayland_pointer import WaylandPointer

SIZE = (1280, 800)
CONFIGURATION = '''xwayland disable
output HEADLESS-1 mode {}x{}
default_border none
'''.format(*SIZE)
NOBODY = 65534


class Sway:
    def __init__(self, machine):
        self._machine = machine
        self._folder = machine.folder('sway')
        os.mkdir(self._folder, mode=0o700)
        configuration = machine.write(CONFIGURATION, 'sway', 'config')
        command = [*self._as_user(), '/usr/bin/sway', '--config', configuration]
        self._process = machine.start('sway', command, {
            'WLR_BACKENDS': 'headless', 'WLR_RENDERER': 'pixman', 'WLR_LIBINPUT_NO_DEVICES': '1',
            'XDG_RUNTIME_DIR': self._folder, 'HOME': self._folder, 'DISPLAY': None,
            # sway must not use the buses.
            'DBUS_SESSION_BUS_ADDRESS': None, 'DBUS_SYSTEM_BUS_ADDRESS': None})
        machine.environment['WAYLAND_DISPLAY'] = os.path.join(self._folder, self._socket('wayland-'))
        machine.environment['SWAYSOCK'] = os.path.join(self._folder, self._socket('sway-ipc'))

    def hang(self):
        """Stops the compositor until `go_on`."""
        self._process.signal(signal.SIGSTOP)

    def go_on(self):
        self._process.signal(signal.SIGCONT)

    def picture(self):
        shot = subprocess.run(['/usr/bin/grim', '-t', 'ppm', '-'], env=self._machine.environment,
                              stdout=subprocess.PIPE, check=True, timeout=60).stdout
        return Screenshot.from_ppm(shot)

    def move_pointer(self, x, y):
        self._message('seat', '-', 'cursor', 'set', str(x), str(y))

    def plug_in_pointer(self):
        """Adds the mouse that `click` needs. Only windows opened afterwards use it."""
        self._pointer = WaylandPointer(self._machine.environment['WAYLAND_DISPLAY'], SIZE)

    def click(self, x, y, button=1):
        # Pauses, so that the window notices the pointer before the press.
        self._pointer.move(x, y)
        for down in (True, False):
            time.sleep(0.1)
            self._pointer.press(button, down)

    def press_keys(self, *keys):
        """Presses keys, given by their X names ("ctrl+w"), one after another."""
        # A pause, so that the window notices the keyboard, which exists only while wtype runs.
        strokes = [word for key in keys for word in _stroke(*key.split('+'))]
        subprocess.run(['/usr/bin/wtype', '-s', '200', *strokes, '-s', '100'], env=self._machine.environment,
                       check=True, timeout=60)

    def focus(self, title):
        self._message(f'[title="^{title}$"]', 'focus')

    def refuse_focus(self, title, workspace='.*'):
        """Windows opened afterwards do not get the focus, except the first one on a workspace."""
        self._message(f'no_focus [title="^{title}$" workspace="^{workspace}$"]')

    def go_to_workspace(self, number):
        self._message('workspace', str(number))

    def focused(self):
        """The title of the window with the focus, or None."""
        return next((node['name'] for node in self._windows() if node['focused']), None)

    def is_floating(self, title):
        return self._window(title)['type'] == 'floating_con'

    def window_titled(self, pattern):
        """The box (left, top, right, bottom) of the window, or None."""
        window = next((node for node in self._windows() if re.search(pattern, node['name'] or '')), None)
        if not window:
            return None
        rect = window['rect']
        return rect['x'], rect['y'], rect['x'] + rect['width'], rect['y'] + rect['height']

    def _window(self, title):
        return next((node for node in self._windows() if node['name'] == title), None)

    def _windows(self):
        nodes = [json.loads(self._message('-t', 'get_tree'))]
        while nodes:
            node = nodes.pop()
            nodes += node['nodes'] + node['floating_nodes']
            if node.get('pid'):
                yield node

    def kill(self):
        """Kills it, as in a crash."""
        self._process.kill()

    def _message(self, *arguments):
        return subprocess.run(['/usr/bin/swaymsg', *arguments], env=self._machine.environment,
                              stdout=subprocess.PIPE, check=True, timeout=60).stdout

    def _as_user(self):
        """Avoids running sway as root, which it refuses; root can use its socket."""
        if os.geteuid() != 0:
            return []
        for folder in (self._folder, os.path.join(self._folder, 'config')):
            os.chown(folder, NOBODY, NOBODY)
        os.chmod(self._machine.root, 0o711)
        return ['/usr/bin/setpriv', f'--reuid={NOBODY}', f'--regid={NOBODY}', '--clear-groups', '--']

    def _socket(self, start):
        def find():
            if not self._process.running:
                raise RuntimeError(f'sway ended with {self._process.code}:\n{self._process.stderr[-2000:]}')
            return next((name for name in os.listdir(self._folder)
                         if name.startswith(start) and not name.endswith('.lock')), None)
        return wait_until(find, 'sway to listen', look_every=0.02)


def _stroke(*keys):
    """wtype arguments that press the last key while the others are held."""
    *held, last = keys
    return [word for key in held for word in ('-M', key)] + ['-k', last] + \
           [word for key in reversed(held) for word in ('-m', key)]
