"""A month of samples, one a minute, in the machine's history file."""
import json
import time

FULL_HISTORY = 43200


def write_full_history(machine, count=FULL_HISTORY):
    now = time.time()
    samples = [{'t': now - 60 * (count - i), 'p': 20 + abs(240 - i % 480) // 4,
                'c': i % 480 >= 240, 'a': i % 480 >= 240} for i in range(count)]
    machine.write(json.dumps(samples), 'data', 'Vorlane', 'history.json')
