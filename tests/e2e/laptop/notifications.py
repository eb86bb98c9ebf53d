"""The notifications posted on a bus and what became of them, recorded by a bus monitor."""
from dataclasses import dataclass

import dbus

from .bus_monitor import BusMonitor
from .waiting import wait_until

NAME = 'org.freedesktop.Notifications'
RULES = [f"interface='{NAME}'", f"type='method_return',sender='{NAME}'", f"type='error',sender='{NAME}'"]


@dataclass
class Notification:
    application: str
    replaces: int
    icon: str
    title: str
    body: str
    actions: list
    hints: dict
    timeout: int
    id: int = None  # None until the daemon has answered
    open: bool = False


class Notifications:
    def __init__(self, bus):
        self.posted = []
        self.closed = []  # ids that the program asked to close
        self.invoked = []  # (id, action) of every action chosen
        self._unanswered = {}
        self._listeners = []
        self._bus = bus
        self._monitor = BusMonitor(bus, RULES)
        self._monitor.listen(self._note)

    def titles(self):
        """The titles of all notifications posted in response to events before this call.

        `posted` alone may lag behind.
        """
        for _ in range(2):
            self._bus.round_trip()
        self._monitor.catch_up()
        return [one.title for one in self.posted]

    def on_post(self, callback):
        self._listeners.append(callback)

    def wait_for(self, count):
        """The notification with that number, from 1, once the daemon has answered."""
        def there():
            return len(self.posted) >= count and self.posted[count - 1].id is not None
        wait_until(there, lambda: f'notification {count}; so far {self.posted}')
        return self.posted[count - 1]

    def wait_until_closed(self, notification):
        wait_until(lambda: not notification.open, f'{notification} to close')

    def wait_for_action(self, notification, action='SNOOZE'):
        wait_until(lambda: (notification.id, action) in self.invoked, f'{action} on {notification}')

    def _note(self, seen):
        if seen.kind == 'call' and seen.member == 'Notify':
            self._post(seen)
        elif seen.kind == 'call' and seen.member == 'CloseNotification':
            self.closed.append(int(seen.arguments[0]))
        elif seen.kind == 'return' and seen.reply_to in self._unanswered:
            notification = self._unanswered.pop(seen.reply_to)
            notification.id, notification.open = int(seen.arguments[0]), True
        elif seen.kind == 'signal' and seen.member == 'ActionInvoked':
            self.invoked.append((int(seen.arguments[0]), str(seen.arguments[1])))
        elif seen.kind == 'signal' and seen.member == 'NotificationClosed':
            for notification in self.posted:
                if notification.id == int(seen.arguments[0]):
                    notification.open = False

    def _post(self, seen):
        application, replaces, icon, title, body, actions, hints, timeout = seen.arguments
        notification = Notification(str(application), int(replaces), str(icon), str(title), str(body),
                                    [str(action) for action in actions], plain(hints), int(timeout))
        self._unanswered[seen.serial] = notification
        self.posted.append(notification)
        for callback in self._listeners:
            callback(notification)


def plain(value):
    """Converts a D-Bus value to plain Python types."""
    if isinstance(value, dict):
        return {plain(key): plain(one) for key, one in value.items()}
    if isinstance(value, (list, tuple)):
        return [plain(one) for one in value]
    if isinstance(value, dbus.Boolean):
        return bool(value)
    if isinstance(value, int):
        return int(value)
    if isinstance(value, float):
        return float(value)
    return str(value)
