"""A bus client that floods the program with messages, and the memory and CPU time that the program uses."""
import os

import dbus.lowlevel


class Flood:
    """Sends to the unique name of the program, so that the bus delivers every message."""

    def __init__(self, bus, process):
        self._connection, self._pid = bus.connect(), process.pid
        bus_object = self._connection.get_object('org.freedesktop.DBus', '/org/freedesktop/DBus')
        names = [name for name in bus_object.ListNames() if name.startswith(':')]
        self._target = next(name for name in names
                            if bus_object.GetConnectionUnixProcessID(name) == self._pid)

    def signals(self, count, path, interface, member, signature, *arguments):
        for _ in range(count):
            message = dbus.lowlevel.SignalMessage(path, interface, member)
            message.append(*arguments, signature=signature)
            self._send(message)

    def calls(self, count, path, interface, member, signature, *arguments):
        """Sends `count` calls that want no reply."""
        for _ in range(count):
            message = dbus.lowlevel.MethodCallMessage(self._target, path, interface, member)
            message.append(*arguments, signature=signature)
            message.set_no_reply(True)
            self._send(message)

    def flush(self):
        self._connection.flush()

    def _send(self, message):
        message.set_destination(self._target)
        self._connection.send_message(message)


def memory_of(process):
    """Private dirty memory in KiB."""
    with open(f'/proc/{process.pid}/smaps_rollup') as file:
        return next(int(line.split()[1]) for line in file if line.startswith('Private_Dirty'))


def cpu_of(process):
    """CPU seconds used so far by a process."""
    with open(f'/proc/{process.pid}/stat') as file:
        fields = file.read().rpartition(')')[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf('SC_CLK_TCK')
