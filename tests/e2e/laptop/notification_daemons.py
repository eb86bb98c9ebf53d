"""The real notification daemons: how each is configured, started and killed."""
import signal
import subprocess

from .notifications import NAME
from .preload import library

DUNST = '''[global]
    font = DejaVu Sans 10
    width = 360
    offset = 12x44
    markup = full
    mouse_left_click = do_action
    mouse_middle_click = close_current
[urgency_low]
    timeout = 0
[urgency_normal]
    timeout = 0
[urgency_critical]
    timeout = 0
'''
MAKO = '''default-timeout=0
font=DejaVu Sans 10
'''


class NotificationDaemon:
    """A daemon that owns the notification name on the session bus."""

    window_class = None

    def __init__(self, machine, bus):
        self._machine, self._bus = machine, bus
        self.process = None

    def argv(self):
        raise NotImplementedError

    def argv_in_environment(self):
        """The command line for a parent without the machine's environment, such as the bus."""
        return ['/usr/bin/env', *(f'{key}={value}' for key, value in self._machine.environment.items()),
                *self.argv()]

    def start(self):
        self.process = self._machine.start(type(self).__name__.lower(), self.argv())
        self._bus.wait_for(NAME, self.process)
        return self

    def freeze(self):
        """Stops the daemon: it keeps its name but does not answer."""
        self.process.signal(signal.SIGSTOP)

    def kill(self):
        self.process.kill()
        self._bus.wait_until_free(NAME)


class Dunst(NotificationDaemon):
    """Needs an X screen. A left click on a notification invokes its only action."""

    window_class = 'Dunst'

    def argv(self):
        return ['/usr/bin/dunst', '-conf', self._machine.write(DUNST, 'config', 'dunst', 'dunstrc')]


class Mako(NotificationDaemon):
    """Needs a Wayland compositor."""

    def argv(self):
        return ['/usr/bin/mako', '--config', self._machine.write(MAKO, 'config', 'mako', 'config')]

    def invoke(self, action):
        subprocess.run(['/usr/bin/makoctl', 'invoke', action], env=self._machine.environment, check=True,
                       timeout=30)


class XfceNotifyd(NotificationDaemon):
    """Needs an X screen. Draws a button for each action."""

    window_class = 'Xfce4-notifyd'

    def argv(self):
        return [library('xfce4/notifyd/xfce4-notifyd')]
