"""Records selected messages of a bus in order, like dbus-monitor."""
import itertools
from dataclasses import dataclass

import dbus
import dbus.lowlevel

from .bus import BUS
from .waiting import wait_until

MARK = 'org.vorlane.test.Mark'
marks = itertools.count(1)  # shared, because each monitor sees the marks of the others


@dataclass(frozen=True)
class Seen:
    """A message. `reply_to` is the serial of the call that the message answers."""
    kind: str  # "call", "return", "error" or "signal"
    sender: str
    destination: str
    serial: int
    reply_to: int
    path: str
    interface: str
    member: str
    arguments: tuple
    wants_answer: bool


KINDS = {dbus.lowlevel.MESSAGE_TYPE_METHOD_CALL: 'call', dbus.lowlevel.MESSAGE_TYPE_METHOD_RETURN: 'return',
         dbus.lowlevel.MESSAGE_TYPE_ERROR: 'error', dbus.lowlevel.MESSAGE_TYPE_SIGNAL: 'signal'}


class BusMonitor:
    def __init__(self, bus, rules):
        """`rules` are D-Bus match rules; every matching message is recorded and passed to the listeners."""
        self.messages = []
        self._bus = bus
        self._last_mark = 0
        self._listeners = []
        self._connection = bus.connect()
        self._connection.add_message_filter(self._note)
        self._connection.call_blocking(BUS, '/org/freedesktop/DBus', BUS + '.Monitoring',
                                       'BecomeMonitor', 'asu', ([*rules, f"interface='{MARK}'"], 0))

    def listen(self, callback):
        """Calls `callback` with each message from now on."""
        self._listeners.append(callback)

    def catch_up(self):
        """Returns once every message that the bus delivered before this call is recorded."""
        mark = next(marks)
        self._bus.emit('/', MARK, 'Mark', 'u', mark)
        wait_until(lambda: self._last_mark >= mark, 'the monitor to catch up')

    def _note(self, _connection, message):
        if message.get_interface() == MARK:
            self._last_mark, = message.get_args_list()
        elif message.get_type() in KINDS:
            seen = Seen(KINDS[message.get_type()], message.get_sender(),
                        message.get_destination(), message.get_serial(),
                        message.get_reply_serial(), message.get_path(), message.get_interface(),
                        message.get_member(), _without_files(message.get_args_list()),
                        not message.get_no_reply())
            self.messages.append(seen)
            for callback in self._listeners:
                callback(seen)
        # A monitor must not send; libdbus would answer an unhandled call with an error.
        return dbus.lowlevel.HANDLER_RESULT_HANDLED


def _without_files(arguments):
    """Drops file descriptors: our copy of a sleep inhibitor, for example, would keep delaying sleep."""
    return tuple(None if isinstance(one, dbus.types.UnixFd) else one for one in arguments)
