"""The desktops' notification servers as users see them: texts on a screen and a button."""
import subprocess
from xml.etree import ElementTree

from .accessibility import Accessibility
from .helper_program import helper_program
from .notification_daemons import Dunst, Mako, NotificationDaemon, XfceNotifyd
from .sway import Sway
from .waiting import wait_until

SNOOZE = 'Snooze 1 hour'


def without_markup(text):
    """The text as the user sees it."""
    return ''.join(ElementTree.fromstring(f'<text>{text}</text>').itertext())


class DunstServer(Dunst):
    """dunst has no accessible controls, so its printed output is read. dunst reports an action only to the connection
    that posted the notification.
    """

    plays_sounds = False
    broadcasts_actions = False

    def __init__(self, laptop):
        super().__init__(laptop.machine, laptop.session_bus)
        self.screen = laptop.x_screen()

    def argv(self):
        return [*super().argv(), '-print']

    def texts(self):
        """Title and body of each visible notification, oldest first."""
        shown = int(self._ask('count', 'displayed'))
        lines = [line.strip() for line in self.process.stdout.splitlines()]
        titles, bodies = ([line.split("'", 1)[1].rsplit("'", 1)[0] for line in lines if line.startswith(key)]
                          for key in ('summary:', 'body:'))
        pairs = list(zip(titles, map(without_markup, bodies)))
        return [text for pair in pairs[len(pairs) - shown:] for text in pair]

    def snooze(self):
        """A click on the notification invokes its only action."""
        self.screen.click_on_window(self.window_class)

    def _ask(self, *words):
        return subprocess.run(['/usr/bin/dunstctl', *words], env=self._machine.environment, check=True,
                              stdout=subprocess.PIPE, timeout=30).stdout


class MakoServer(Mako):
    """Draws no buttons: its users choose an action with makoctl."""

    plays_sounds = False
    broadcasts_actions = True

    def __init__(self, laptop):
        super().__init__(laptop.machine, laptop.session_bus)
        self.screen = Sway(laptop.machine)

    def texts(self):
        shown = self._bus.call('org.freedesktop.Notifications', '/fr/emersion/Mako', 'fr.emersion.Mako',
                               'ListNotifications')
        return [text for one in reversed(shown) for text in (one['summary'], without_markup(one['body']))]

    def snooze(self):
        self.invoke('SNOOZE')


class AccessibleServer(NotificationDaemon):
    """A server whose notifications are toolkit windows with accessible labels and buttons."""

    program = None
    plays_sounds = False
    broadcasts_actions = True

    def __init__(self, laptop):
        super().__init__(laptop.machine, laptop.session_bus)
        self.screen = laptop.x_screen()
        self._accessibility = Accessibility(laptop.machine, laptop.session_bus)
        laptop.machine.environment.pop('NO_AT_BRIDGE')

    def texts(self):
        return [control.name for control in self._controls() if control.role == 'label' and control.name]

    def snooze(self):
        """Clicks the button once it has stopped moving."""
        left, top, right, bottom = wait_until(self._button_at_rest, f'a button {SNOOZE!r}', look_every=0.05)
        self.screen.click((left + right) // 2, (top + bottom) // 2)

    def _button_at_rest(self):
        def box():
            return next((one.box for one in self._controls() if one.name == SNOOZE), None)
        first = box()
        return first if first and first == box() else None

    def _controls(self):
        root = self._accessibility.program(self.program)
        return list(root.walk()) if root else []


class XfceServer(AccessibleServer, XfceNotifyd):
    program = 'xfce4-notifyd'


class LxqtServer(AccessibleServer):
    program = 'lxqt-notificationd'
    window_class = 'lxqt-notificationd'

    def argv(self):
        return ['/usr/bin/lxqt-notificationd']

    def texts(self):
        """Leaves out the program's name, which is shown above each notification."""
        return [text for text in super().texts() if text != 'Vorlane']


class MateServer(AccessibleServer):
    program = 'mate-notification-daemon'
    window_class = 'Mate-notification-daemon'
    plays_sounds = True

    def argv(self):
        return [helper_program('mate-notification-daemon/mate-notification-daemon')]


SERVERS = [DunstServer, MakoServer, XfceServer, LxqtServer, MateServer]
