"""A private message bus: a real dbus-daemon without activatable services at first, and a connection to it."""
import os

import dbus
import dbus.bus
import dbus.lowlevel
from dbus.mainloop.glib import DBusGMainLoop

from .waiting import wait_until

BUS = 'org.freedesktop.DBus'
PROPERTIES = 'org.freedesktop.DBus.Properties'
REPLY_TIMEOUT = 20.0  # seconds

CONFIGURATION = '''<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{kind}</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{services}</servicedir>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_type="method_call"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow receive_sender="*" eavesdrop="true"/>
  </policy>
</busconfig>
'''


class Bus:
    def __init__(self, machine, kind):
        """`kind` is "session" or "system"; programs started afterwards use this bus."""
        socket = machine.folder('run', kind + '-bus')
        self.address = 'unix:path=' + socket
        self.services = machine.folder('run', kind + '-services')
        path = machine.write(CONFIGURATION.format(kind=kind, socket=socket, services=self.services),
                             'run', kind + '-bus.conf')
        self._start_daemon = lambda: machine.start(
            'dbus-' + kind, ['/usr/bin/dbus-daemon', '--config-file=' + path, '--nofork', '--nopidfile'])
        machine.environment[f'DBUS_{kind.upper()}_BUS_ADDRESS'] = self.address
        self.open()

    def open(self):
        """Starts the bus, also again after `close`."""
        self._daemon = self._start_daemon()
        self._connection = wait_until(self.connect, f'the bus at {self.address}', look_every=0.01)
        self._changes = 0  # owner changes so far; each one wakes `_wait_for_owner`
        self._connection.add_signal_receiver(self._count_change, 'NameOwnerChanged', BUS, BUS)

    def connect(self):
        """A new connection; None while the bus is not listening."""
        try:
            return dbus.bus.BusConnection(self.address, mainloop=DBusGMainLoop())
        except dbus.DBusException:
            return None

    def offer(self, name, argv):
        """Makes a service activatable by the bus."""
        self.install(name, f'[D-BUS Service]\nName={name}\nExec={" ".join(argv)}\n')

    def install(self, name, text):
        """Makes a service activatable, given the text of its service file."""
        os.makedirs(self.services, exist_ok=True)
        with open(os.path.join(self.services, name + '.service'), 'w') as file:
            file.write(text)
        self.call(BUS, '/org/freedesktop/DBus', BUS, 'ReloadConfig')

    def set_environment(self, environment):
        """Sets variables for services activated afterwards, as a session does at login."""
        self.call(BUS, '/org/freedesktop/DBus', BUS, 'UpdateActivationEnvironment', 'a{ss}',
                  dbus.Dictionary(environment, signature='ss'))

    def complaints(self):
        """The output of activated services."""
        return [line for line in self._daemon.stderr.splitlines() if not line.startswith('dbus-daemon[')]

    def call(self, name, path, interface, method, signature='', *arguments):
        return self._connection.call_blocking(name, path, interface, method, signature, arguments,
                                              timeout=REPLY_TIMEOUT)

    def get(self, name, path, interface, property_name):
        return self.call(name, path, PROPERTIES, 'Get', 'ss', interface, property_name)

    def round_trip(self):
        """Returns once the program, if it is running, has handled every message that reached it before."""
        try:
            # Not a ping: libdbus would answer the ping in our monitor connections too, and a monitor must not send.
            self.get('org.vorlane.Vorlane', '/StatusNotifierItem', 'org.kde.StatusNotifierItem', 'Id')
        except dbus.DBusException as error:
            if error.get_dbus_name() != BUS + '.Error.ServiceUnknown':
                raise

    def emit(self, path, interface, name, signature, *arguments):
        message = dbus.lowlevel.SignalMessage(path, interface, name)
        message.append(*arguments, signature=signature)
        self._connection.send_message(message)
        self._connection.flush()

    def owner(self, name):
        """The unique name of the owner, or None."""
        try:
            return str(self.call(BUS, '/org/freedesktop/DBus', BUS, 'GetNameOwner', 's', name))
        except dbus.DBusException:
            return None

    def wait_for(self, name, process=None):
        """Waits until the name has an owner; fails early if `process`, which should own it, has ended."""
        def not_ended(owner):
            if process is not None and not process.running:
                raise RuntimeError(f'{process.name} ended with {process.code}:\n{process.stderr[-2000:]}')
            return owner
        return self._wait_for_owner(name, not_ended, f'{name} on the bus')

    def wait_until_free(self, name):
        self._wait_for_owner(name, lambda owner: not owner, f'{name} to leave the bus')

    def _wait_for_owner(self, name, condition, description):
        """Queries the owner only after a change: each reply wakes the main loop, so polling would never sleep."""
        owner, changes = self.owner(name), self._changes

        def met():
            nonlocal owner, changes
            if changes != self._changes:
                owner, changes = self.owner(name), self._changes
            return condition(owner)
        return wait_until(met, description)

    def _count_change(self, *_):
        self._changes += 1

    def pid_of(self, name):
        return int(self.call(BUS, '/org/freedesktop/DBus', BUS, 'GetConnectionUnixProcessID', 's', name))

    def close(self):
        """Ends the bus and disconnects all its clients."""
        self._daemon.end()
