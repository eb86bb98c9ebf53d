"""An invisible X screen with a window manager and a pointer."""
import os
import signal
import subprocess

from .screenshot import Screenshot
from .waiting import NeverHappened, wait_until

SIZE = (1280, 800)


class XScreen:
    def __init__(self, machine, depth=24, size=SIZE, manager=('/usr/bin/openbox', '--sm-disable')):
        self._machine = machine
        self.box = (0, 0, *size)
        read_end, write_end = os.pipe()
        self._server = machine.start('xvfb', ['/usr/bin/Xvfb', '-displayfd', str(write_end), '-screen', '0',
                                                f'{size[0]}x{size[1]}x{depth}', '-nolisten', 'tcp',
                                                '-noreset', '-nocursor'], pass_fds=(write_end,))
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError('Xvfb gave no display')
        machine.environment['DISPLAY'] = ':' + number
        if manager:
            machine.start('window-manager', manager)
            wait_until(self._is_managed, 'the window manager', look_every=0.02)

    def split(self):
        """Splits the screen into two monitors, side by side."""
        width, height = self.box[2] // 2, self.box[3]
        for number in (0, 1):
            self._run('xrandr', '--setmonitor', f'half-{number}',
                      f'{width}/300x{height}/400+{number * width}+0', 'screen' if number == 0 else 'none')

    def paint_wall(self, top, bottom):
        """Paints a gradient between two colours behind all windows, in a way that compositors also show."""
        self._run('hsetroot', '-add', top, '-add', bottom, '-gradient', '0')

    def picture(self):
        shot = self._run('import', '-silent', '-window', 'root', '-depth', '8', 'ppm:-')
        return Screenshot.from_ppm(shot)

    def move_pointer(self, x, y):
        self._run('xdotool', 'mousemove', str(x), str(y))

    def click(self, x, y, button=1):
        # A pause, so that the window notices the pointer before the press.
        self._run('xdotool', 'mousemove', str(x), str(y), 'sleep', '0.1', 'click', str(button))

    def click_until(self, condition, description, x, y):
        """Clicks until the condition is met; a panel may not show the clicked item yet."""
        def came():
            if not condition():
                self.click(x, y)
            try:
                return wait_until(condition, description, patience=3, look_every=0.05)
            except NeverHappened:
                return None
        return wait_until(came, description, look_every=0.05)

    def press_keys(self, *keys):
        """Presses keys, given by their X names, one after another."""
        self._run('xdotool', 'key', *keys)

    def kill(self):
        """Kills the X server, so that every program on it loses its display."""
        self._server.kill()

    def hang(self):
        """Stops the X server until `go_on`."""
        self._server.signal(signal.SIGSTOP)

    def go_on(self):
        self._server.signal(signal.SIGCONT)

    def click_on_window(self, window_class):
        """Clicks the middle of the window as soon as it appears."""
        left, top, right, bottom = self.wait_for_window(window_class)
        self.click((left + right) // 2, (top + bottom) // 2)

    def wait_for_window(self, window_class):
        return wait_until(lambda: self.window(window_class), f'a window of {window_class}', look_every=0.05)

    def window(self, window_class):
        """The box (left, top, right, bottom) of the first visible window of a class, or None."""
        return self._first_window('--class', window_class)

    def window_titled(self, pattern):
        return self._first_window('--name', pattern)

    def window_ids(self, pattern):
        """Ids of the windows with a matching title, visible or not."""
        return self._run('xdotool', 'search', '--name', pattern, check=False).split()

    def is_in_front(self, name, other):
        """Whether one window is in front of another, by title or class, neither managed by the window manager."""
        from_front = self._run('xwininfo', '-root', '-children').decode()
        return from_front.index(f'"{name}"') < from_front.index(f'"{other}"')

    def minimize(self, window_id):
        self._run('xdotool', 'windowminimize', window_id)

    def _is_managed(self):
        """Whether the window manager is running. It might move a panel that starts before it."""
        return self._run('xdotool', 'get_num_desktops', check=False) not in (b'', b'0\n')

    def _first_window(self, kind, pattern):
        found = self._run('xdotool', 'search', '--onlyvisible', kind, pattern, check=False).split()
        for window in found:
            text = self._run('xdotool', 'getwindowgeometry', '--shell', window, check=False).decode()
            at = dict(line.split('=') for line in text.split())
            x, y, width, height = (int(at.get(key, 0)) for key in ('X', 'Y', 'WIDTH', 'HEIGHT'))
            if width > 1 and height > 1:
                return x, y, x + width, y + height
        return None

    def _run(self, *argv, check=True):
        return subprocess.run(argv, env=self._machine.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, check=check, timeout=60).stdout
