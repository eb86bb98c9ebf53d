"""Holds the umockdev testbed for testbed.py: reads one JSON order per line, prints one JSON answer per line."""
import json
import os
import sys

import gi

gi.require_version('UMockdev', '1.0')
from gi.repository import UMockdev  # noqa: E402


# Attributes added by platform drivers have a file but no uevent line.
BESIDE_UEVENT = {'charge_behaviour', 'charge_control_end_threshold', 'charge_types'}


class Supplies:
    """The supplies of the testbed, each with the `uevent` file that the kernel would show."""

    def __init__(self, testbed):
        self._testbed = testbed
        self._paths = {}
        self._attributes = {}

    def add(self, name, attributes):
        self._attributes[name] = dict(attributes)
        flat = [text for pair in attributes.items() for text in pair]
        properties = [text for key, value in self._lines(name) for text in (key, value)]
        self._paths[name] = self._testbed.add_device('power_supply', name, None, flat, properties)
        self._write_uevent(name)

    def remove(self, name):
        path = self._paths.pop(name)
        del self._attributes[name]
        self._testbed.uevent(path, 'remove')
        self._testbed.remove_device(path)

    def change(self, name, attributes, announce):
        path = self._paths[name]
        for key, value in attributes.items():
            if value is None:
                self._attributes[name].pop(key, None)
                os.unlink(os.path.join(path, key))
            else:
                self._attributes[name][key] = value
                self._testbed.set_attribute(path, key, value)
        self._write_uevent(name)
        if announce:
            self._testbed.uevent(path, 'change')

    def _lines(self, name):
        yield 'POWER_SUPPLY_NAME', name
        for key, value in self._attributes[name].items():
            if key in BESIDE_UEVENT:
                continue
            yield 'POWER_SUPPLY_' + key.upper(), value

    def _write_uevent(self, name):
        text = ''.join(f'{key}={value}\n' for key, value in self._lines(name))
        self._testbed.set_attribute(self._paths[name], 'uevent', text)


def main():
    testbed = UMockdev.Testbed.new()
    supplies = Supplies(testbed)
    print(json.dumps({'root': testbed.get_root_dir()}), flush=True)
    for line in sys.stdin:
        order = json.loads(line)
        error = None
        try:
            getattr(supplies, order.pop('order'))(**order)
        except Exception as trouble:  # testbed.py raises the reported exception
            error = repr(trouble)
        print(json.dumps({'error': error}), flush=True)


main()
