"""What the program costs, as counted by the kernel and the bus."""
import os
import pathlib
import re
from dataclasses import dataclass

import dbus

from ..bus import BUS
from ..children import children
from ..status_item import OWNER


@dataclass(frozen=True)
class Costs:
    dirty: int  # bytes of private dirty memory
    resident: int
    descriptors: int
    zombies: int
    matches: int  # match rules on the session bus
    processor: float  # seconds
    wakeups: int
    written: int  # bytes passed to write calls


def costs(pid, bus):
    process = pathlib.Path(f'/proc/{pid}')
    tasks = list((process / 'task').iterdir())
    return Costs(
        dirty=private_dirty(pid),
        resident=_number('Rss', _rollup(pid)) * 1024,
        descriptors=len(os.listdir(process / 'fd')),
        zombies=sum(child.zombie for child in children(pid)),
        matches=_matches(bus),
        processor=sum(int((task / 'schedstat').read_text().split()[0]) for task in tasks) / 1e9,
        wakeups=sum(_number('voluntary_ctxt_switches', (task / 'status').read_text()) for task in tasks),
        written=_number('wchar', (process / 'io').read_text()))


def private_dirty(pid):
    return _number('Private_Dirty', _rollup(pid)) * 1024


def _rollup(pid):
    return pathlib.Path(f'/proc/{pid}/smaps_rollup').read_text()


def _matches(bus):
    rules = bus.call(BUS, '/org/freedesktop/DBus', BUS + '.Debug.Stats', 'GetAllMatchRules')
    return len(rules.get(dbus.String(bus.owner(OWNER)), []))


def _number(name, text):
    return int(re.search(rf'^{name}:\s*(\d+)', text, re.MULTILINE).group(1))
