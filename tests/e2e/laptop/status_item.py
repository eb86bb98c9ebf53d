"""The program's status item and its menu, read over the bus as a tray host does."""
import re

import dbus

from .bus_monitor import BusMonitor
from .waiting import NeverHappened, wait_until

OWNER = 'org.vorlane.Vorlane'
PATH = '/StatusNotifierItem'
ITEM = 'org.kde.StatusNotifierItem'
MENU = 'com.canonical.dbusmenu'
WATCHER = 'org.kde.StatusNotifierWatcher'
RULES = [f"type='signal',interface='{ITEM}'", f"type='signal',interface='{MENU}'",
         f"type='signal',interface='{WATCHER}'", f"type='method_call',interface='{WATCHER}'"]


class StatusItem:
    def __init__(self, bus):
        self._bus = bus
        # The recorded messages wake `wait_until` when the item changes.
        self._monitor = BusMonitor(bus, RULES)

    def on_change(self, callback):
        """Calls back after each signal of the item."""
        self._monitor.listen(lambda seen: callback() if seen.interface == ITEM else None)

    def get(self, name):
        """A property; None while the program is not on the bus."""
        try:
            return self._bus.get(OWNER, PATH, ITEM, name)
        except dbus.DBusException:
            return None

    @property
    def label(self):
        return str(self.get('XAyatanaLabel')).strip()

    @property
    def icon(self):
        return str(self.get('IconName'))

    def pixels(self, size):
        """The opaque pixels of the icon of this size: a map from position to red, green and blue."""
        data = next(bytes(data) for width, height, data in self.get('IconPixmap') if width == height == size)
        return {(at // 4 % size, at // 4 // size): tuple(data[at + 1:at + 4])
                for at in range(0, len(data), 4) if data[at] == 255}

    @property
    def tooltip(self):
        """The title line of the tooltip."""
        tip = self.get('ToolTip')
        return str(tip[2]) if tip else None

    def wait_for_label(self, label):
        wait_until(lambda: self.label == label, lambda: f'the label {label!r}; it is {self.label!r}')

    def wait_for_icon(self, symbol):
        name = 'vorlane-' + symbol.replace('.', '-') + '-symbolic'
        wait_until(lambda: self.icon == name, lambda: f'the icon {name}; it is {self.icon}')

    def wait_for_status(self, status):
        wait_until(lambda: self.get('Status') == status, lambda: f"{status!r}; it is {self.get('Status')!r}")

    def wait_for_tooltip(self, text):
        wait_until(lambda: self.tooltip == text, lambda: f'the tooltip {text!r}; it is {self.tooltip!r}')

    def registration_calls(self):
        """How often the program has registered an item with the watcher."""
        self._monitor.catch_up()
        return sum(seen.kind == 'call' and seen.member == 'RegisterStatusNotifierItem'
                   for seen in self._monitor.messages)

    def registrations(self):
        """How many of the items that the watcher lists are ours."""
        try:
            items = self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER,
                                  'RegisteredStatusNotifierItems')
        except dbus.DBusException:
            return 0
        # A name, then the path; GNOME Shell writes an @ between them.
        owners = [self._bus.owner(re.split('[/@]', str(item))[0]) for item in items]
        return owners.count(self._bus.owner(OWNER))

    def registered(self):
        return self.registrations() > 0

    def wait_until_registered(self):
        wait_until(self.registered, 'the item at its watcher', look_every=0.05)

    def menu_lines(self):
        """The labels of the menu, from top to bottom, without separators."""
        return [str(properties['label']) for _, properties in self._menu_items()
                if properties.get('type') != 'separator']

    def has_menu_line(self, beginning):
        return any(line.startswith(beginning) for line in self.menu_lines())

    def wait_for_menu_line(self, beginning):
        wait_until(lambda: self.has_menu_line(beginning), lambda: f'{beginning!r} in {self.menu_lines()}')

    def choose(self, beginning):
        """Reports a click on the menu line with this beginning, as a host does."""
        number = next(number for number, properties in self._menu_items()
                      if properties.get('label', '').startswith(beginning))
        self._bus.call(OWNER, self.get('Menu'), MENU, 'Event', 'isvu', number, 'clicked',
                       dbus.String('', variant_level=1), 0)

    def provide_token(self, token):
        """Hands over an activation token, as a host does before a click."""
        self._bus.call(OWNER, PATH, ITEM, 'ProvideXdgActivationToken', 's', token)

    def activate(self):
        """Reports a click with the main mouse button."""
        self._bus.call(OWNER, PATH, ITEM, 'Activate', 'ii', 0, 0)

    def activate_until(self, condition, description):
        """Checks for a while before each click: a click on an opening popover would close it."""
        def came():
            try:
                return wait_until(condition, description, patience=5, look_every=0.05)
            except NeverHappened:
                return self.activate()
        return wait_until(came, description, look_every=0.05)

    def _menu_items(self):
        layout = self._bus.call(OWNER, self.get('Menu'), MENU, 'GetLayout', 'iias', 0, -1,
                                dbus.Array([], signature='s'))
        _, (_, _, children) = layout
        return [(int(number), properties) for number, properties, _ in children]
