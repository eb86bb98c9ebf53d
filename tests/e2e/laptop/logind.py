"""The login manager (dbusmock's template): announces sleep and wake, and lists the programs that delay sleep."""
import dbus

NAME = 'org.freedesktop.login1'
PATH = '/org/freedesktop/login1'
MANAGER = NAME + '.Manager'


class Logind:
    def __init__(self, machine, bus):
        self._bus = bus
        process = machine.start('logind', ['/usr/bin/python3', '-m', 'dbusmock', '--system',
                                           '--template', 'logind'])
        bus.wait_for(NAME, process)

    def say_sleep(self, going):
        """True: the machine is about to sleep; false: it has woken."""
        self._bus.call(NAME, PATH, 'org.freedesktop.DBus.Mock', 'EmitSignal', 'sssav', MANAGER,
                       'PrepareForSleep', 'b', [dbus.Boolean(going, variant_level=1)])

    def sleep_delays(self):
        """The names of the programs that delay sleep."""
        held = self._bus.call(NAME, PATH, MANAGER, 'ListInhibitors')
        return [str(who) for what, who, _, mode, _, _ in held
                if 'sleep' in what.split(':') and mode == 'delay']
