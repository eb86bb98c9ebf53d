"""The desktop portal's appearance settings."""
import dbus

NAME = 'org.freedesktop.portal.Desktop'
PATH = '/org/freedesktop/portal/desktop'
SETTINGS = 'org.freedesktop.portal.Settings'
APPEARANCE = 'org.freedesktop.appearance'
MOCK = 'org.freedesktop.DBus.Mock'
NO_PREFERENCE, DARK, LIGHT = 0, 1, 2  # the values of color-scheme


class SettingsPortal:
    """Starts without a colour scheme preference."""

    def __init__(self, machine, bus):
        self._bus = bus
        process = machine.start('portal', ['/usr/bin/python3', '-m', 'dbusmock', '--session', NAME, PATH,
                                           SETTINGS])
        bus.wait_for(NAME, process)
        answer = "ret = {'%s': {'color-scheme': dbus.UInt32(%d, variant_level=1)}}" % (APPEARANCE, NO_PREFERENCE)
        bus.call(NAME, PATH, MOCK, 'AddMethod', 'sssss', SETTINGS, 'ReadAll', 'as', 'a{sa{sv}}', answer)

    def set_scheme(self, scheme):
        self._emit('color-scheme', dbus.UInt32(scheme, variant_level=1))

    def set_accent(self, red, green, blue):
        """Sets red, green and blue, each from 0 to 1."""
        parts = [dbus.Double(part) for part in (red, green, blue)]
        self._emit('accent-color', dbus.Struct(parts, variant_level=1))

    def _emit(self, key, value):
        arguments = dbus.Array([dbus.String(APPEARANCE, variant_level=1), dbus.String(key, variant_level=1),
                                value], signature='v')
        self._bus.call(NAME, PATH, MOCK, 'EmitSignal', 'sssav', SETTINGS, 'SettingChanged', 'ssv', arguments)
