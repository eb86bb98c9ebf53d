"""The windows as an assistive program sees them: a tree of controls with roles, names and actions.

Uses plain D-Bus on the laptop's own accessibility bus, because libatspi keeps the same bus for the
life of a process.
"""
import dbus
import dbus.bus
from dbus.mainloop.glib import DBusGMainLoop

from .bus import PROPERTIES, REPLY_TIMEOUT
from .waiting import wait_until

BUS = 'org.a11y.Bus'
REGISTRY = 'org.a11y.atspi.Registry'
ROOT = '/org/a11y/atspi/accessible/root'  # the root object of the registry and of each program
ACCESSIBLE = 'org.a11y.atspi.Accessible'
ACTION = 'org.a11y.atspi.Action'
COMPONENT = 'org.a11y.atspi.Component'
TEXT = 'org.a11y.atspi.Text'
VALUE = 'org.a11y.atspi.Value'
STATES = {'checked': 4, 'enabled': 8, 'focused': 12, 'showing': 25}  # AtspiStateType
ON_SCREEN = 0  # AtspiCoordType


class Accessibility:
    def __init__(self, machine, bus):
        """Programs started afterwards appear in this tree."""
        launcher = machine.start('at-spi', ['/usr/libexec/at-spi-bus-launcher', '--launch-immediately'])
        bus.wait_for(BUS, launcher)
        machine.environment['QT_LINUX_ACCESSIBILITY_ALWAYS_ON'] = '1'
        address = bus.call(BUS, '/org/a11y/bus', BUS, 'GetAddress')
        self._connection = dbus.bus.BusConnection(str(address), mainloop=DBusGMainLoop())
        self._root = Control(self._connection, REGISTRY, ROOT)

    @property
    def connected(self):
        """Whether the program is in the tree, which it joins with its first window."""
        return self.program('Vorlane') is not None

    def programs(self):
        """The names of all programs in the tree."""
        return [program.name for program in self._root.children]

    def program(self, name):
        """The root of a program's controls; None while it is not in the tree."""
        return next((program for program in self._root.children if program.name == name), None)

    def windows(self, title):
        """The program's visible windows with that title."""
        return [window for program in self._root.children if program.name == 'Vorlane'
                for window in program.children if window.name == title and window.showing]

    def window(self, title):
        return next(iter(self.windows(title)), None)

    def wait_for_window(self, title):
        return wait_until(lambda: self.window(title), f'a window {title!r}', look_every=0.02)

    def wait_until_gone(self, title):
        wait_until(lambda: not self.window(title), f'no window {title!r}', look_every=0.02)


class ScreenReader(Accessibility):
    """Reports controls whose properties change, including those embedded in another program's window, as in
    a panel: these are in no program's tree.
    """

    def __init__(self, machine, bus):
        super().__init__(machine, bus)
        self._heard = []
        self._connection.add_signal_receiver(self._hear, 'PropertyChange', 'org.a11y.atspi.Event.Object',
                                             sender_keyword='sender', path_keyword='path')
        self._connection.call_blocking(REGISTRY, '/org/a11y/atspi/registry', REGISTRY,
                                       'RegisterEvent', 's', ('object:property-change',), timeout=REPLY_TIMEOUT)
        machine.environment.pop('NO_AT_BRIDGE')  # so that panels started afterwards are included

    def wait_for(self, role, name):
        """`name` is a function and called at each check."""
        wait_until(lambda: any((one.role, one.name) == (role, name()) for one in self._heard),
                   lambda: f'{role} {name()!r} among {self._heard}', look_every=0.1)

    def _hear(self, *_, sender, path):
        self._heard.append(Control(self._connection, sender, path))


class Control:
    """One node of the tree. Queries the program at each access and caches nothing."""

    def __init__(self, connection, owner, path):
        self._connection, self._owner, self._path = connection, owner, path

    def __repr__(self):
        return f'<{self.role} {self.name!r}>'

    def __eq__(self, other):
        return (self._owner, self._path) == (other._owner, other._path)

    def at(self, path):
        """The control of the same program that has this path, or had it."""
        return Control(self._connection, self._owner, path)

    @property
    def name(self):
        return str(self._get(ACCESSIBLE, 'Name') or '')

    @property
    def description(self):
        return str(self._get(ACCESSIBLE, 'Description') or '')

    @property
    def role(self):
        name = str(self._call(ACCESSIBLE, 'GetRoleName') or '')
        return 'push button' if name == 'button' else name  # as it is called since AT-SPI 2.54

    @property
    def children(self):
        return [Control(self._connection, str(owner), str(path))
                for owner, path in self._call(ACCESSIBLE, 'GetChildren') or []]

    @property
    def checked(self):
        return self._has('checked')

    @property
    def enabled(self):
        return self._has('enabled')

    @property
    def focused(self):
        return self._has('focused')

    @property
    def showing(self):
        return self._has('showing')

    @property
    def value(self):
        return self._get(VALUE, 'CurrentValue')

    @value.setter
    def value(self, number):
        self._connection.call_blocking(self._owner, self._path, PROPERTIES, 'Set', 'ssv',
                                       (VALUE, 'CurrentValue', dbus.Double(number, variant_level=1)),
                                       timeout=REPLY_TIMEOUT)

    @property
    def text(self):
        """The content of a text field."""
        return str(self._call(TEXT, 'GetText', 'ii', 0, -1) or '')

    @property
    def box(self):
        """Left, top, right, bottom: on the screen, or under Wayland in the window."""
        x, y, width, height = map(int, self._call(COMPONENT, 'GetExtents', 'u', ON_SCREEN))
        return x, y, x + width, y + height

    @property
    def actions(self):
        return [str(name) for name, _, _ in self._call(ACTION, 'GetActions') or []]

    def do(self, action):
        self._call(ACTION, 'DoAction', 'i', self.actions.index(action))

    def press(self):
        self.do('Press')

    def focus(self):
        self._call(COMPONENT, 'GrabFocus')

    def walk(self):
        """Yields itself and all visible descendants in tree order."""
        yield self
        for child in self.children:
            if child.showing:
                yield from child.walk()

    def find(self, name, role=None):
        """The first visible control with that name (and role), or None."""
        return next((one for one in self.walk()
                     if one.name == name and (role is None or one.role == role)), None)

    def wait_for(self, name, role=None):
        return wait_until(lambda: self.find(name, role), lambda: f'{name!r} among {list(self.walk())}',
                          look_every=0.02)

    def texts(self):
        """The names of all visible controls that have one, in tree order."""
        return [one.name for one in self.walk() if one.name]

    def wait_until_gone(self, name):
        wait_until(lambda: not self.find(name), f'{name!r} to disappear', look_every=0.02)

    def _has(self, state):
        low, _ = self._call(ACCESSIBLE, 'GetState') or (0, 0)
        return bool(low >> STATES[state] & 1)

    def _get(self, interface, name):
        return self._call(PROPERTIES, 'Get', 'ss', interface, name)

    def _call(self, interface, method, signature='', *arguments):
        """None when the control is gone or lacks the interface."""
        try:
            return self._connection.call_blocking(self._owner, self._path, interface, method, signature,
                                                  arguments, timeout=REPLY_TIMEOUT)
        except dbus.DBusException:
            return None
