"""The real UPower daemon, reading the testbed."""
import os
import signal

NAME = 'org.freedesktop.UPower'


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
