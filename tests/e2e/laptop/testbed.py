"""The power supplies: a folder tree like /sys that umockdev shows to chosen programs.

A helper process holds the tree under umockdev's preload library: sending a uevent needs the device in
that tree, and this process must keep seeing the real /sys.
"""
import json
import os
import subprocess
import sys

from . import preload

BATTERY = {
    'type': 'Battery',
    'present': '1',
    'status': 'Discharging',
    'manufacturer': 'Virtual',
    'model_name': 'VB-50',
    'serial_number': '0042',
    'technology': 'Li-ion',
    'cycle_count': '123',
    'energy_full_design': '50000000',
    'energy_full': '45000000',
    'energy_now': '27000000',
    'power_now': '9000000',
    'voltage_min_design': '11400000',
    'voltage_now': '11800000',
    'capacity': '60',
}
ADAPTER = {'type': 'Mains', 'online': '0'}
MOUSE = {'type': 'Battery', 'scope': 'Device', 'present': '1', 'status': 'Discharging',
         'model_name': 'Virtual Mouse', 'capacity': '7'}


class Testbed:
    def __init__(self, machine):
        environment = {**machine.environment, **preload.testbed_environment()}
        helper = os.path.join(os.path.dirname(__file__), 'testbed_helper.py')
        self._helper = subprocess.Popen([sys.executable, helper], env=environment, text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.root = json.loads(self._helper.stdout.readline())['root']

    def environment(self):
        """Variables that make a program see this tree instead of the real one."""
        return {'UMOCKDEV_DIR': self.root, **preload.testbed_environment()}

    def add(self, name, attributes):
        self._ask(order='add', name=name, attributes=attributes)

    def remove(self, name):
        self._ask(order='remove', name=name)

    def change(self, name, announce=True, **attributes):
        """Writes attributes (None removes one), then sends one uevent if `announce` is set."""
        texts = {key: None if value is None else str(value) for key, value in attributes.items()}
        self._ask(order='change', name=name, attributes=texts, announce=announce)

    def close(self):
        self._helper.stdin.close()
        self._helper.wait(10)
        self._helper.stdout.close()

    def _ask(self, **order):
        self._helper.stdin.write(json.dumps(order) + '\n')
        self._helper.stdin.flush()
        answer = json.loads(self._helper.stdout.readline())
        if answer['error']:
            raise RuntimeError(answer['error'])
