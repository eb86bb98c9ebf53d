"""The real UPower daemon, reading the testbed."""
import os
import signal

import dbus

NAME = 'org.freedesktop.UPower'
DISPLAY_DEVICE = '/org/freedesktop/UPower/devices/DisplayDevice'


class FixedUPower:
    """A stand-in that always gives the same time to empty."""

    def __init__(self, machine, bus, seconds):
        self._process = machine.start('fixed-upower', ['/usr/bin/python3', '-m', 'dbusmock', '--system', NAME,
                                                       DISPLAY_DEVICE, NAME + '.Device'])
        bus.wait_for(NAME, self._process)
        values = {'State': dbus.UInt32(2), 'TimeToEmpty': dbus.Int64(seconds)}
        for method in ('AddProperties', 'UpdateProperties'):  # only the latter sends a signal
            bus.call(NAME, DISPLAY_DEVICE, 'org.freedesktop.DBus.Mock', method, 'sa{sv}', NAME + '.Device', values)

    def freeze(self):
        self._process.signal(signal.SIGSTOP)

    def thaw(self):
        self._process.signal(signal.SIGCONT)


class UPower:
    def __init__(self, machine, bus, testbed):
        self._machine, self._bus, self._testbed = machine, bus, testbed
        self._process = None

    def start(self):
        history = self._machine.folder('state', 'upower')
        os.makedirs(history, exist_ok=True)
        configuration = self._machine.write('[UPower]\n', 'config', 'UPower.conf')
        self._process = self._machine.start(
            'upowerd', ['/usr/libexec/upowerd', '--replace'],
            {**self._testbed.environment(), 'UPOWER_CONF_FILE_NAME': configuration,
             'UPOWER_HISTORY_DIR': history})
        self._bus.wait_for(NAME, self._process)

    def kill(self):
        self._process.kill()
        self._bus.wait_until_free(NAME)

    def freeze(self):
        """Stops the daemon: it keeps its name but does not answer."""
        self._process.signal(signal.SIGSTOP)

    def thaw(self):
        self._process.signal(signal.SIGCONT)

    def battery(self, name='BAT0'):
        """UPower's properties of one battery."""
        return self._bus.call(NAME, f'/org/freedesktop/UPower/devices/battery_{name}',
                              'org.freedesktop.DBus.Properties', 'GetAll', 's', NAME + '.Device')
