"""The calls on a bus that are still waiting for a reply."""
import dbus

from .bus_monitor import BusMonitor
from .waiting import wait_until

RULES = ["type='method_call'", "type='method_return'", "type='error'"]


class OpenCalls:
    def __init__(self, bus):
        self._bus = bus
        self._open = {}  # (caller, serial): the call
        self._monitor = BusMonitor(bus, RULES)
        self._monitor.listen(self._note)

    def of(self, pid):
        """The method names of the open calls of a process."""
        self._monitor.catch_up()
        return [seen.member for (caller, _), seen in list(self._open.items()) if self._pid_of(caller) == pid]

    def wait_until_answered(self, pid):
        """Returns whether there were any open calls."""
        waited = bool(self.of(pid))
        wait_until(lambda: not self.of(pid), lambda: f'the answers to {self.of(pid)}', look_every=0.02)
        return waited

    def _pid_of(self, caller):
        try:
            return self._bus.pid_of(caller)
        except dbus.DBusException:  # the caller has disconnected
            return None

    def _note(self, seen):
        if seen.kind == 'call' and seen.wants_answer:
            self._open[seen.sender, seen.serial] = seen
        elif seen.kind in ('return', 'error'):
            self._open.pop((seen.destination, seen.reply_to), None)
