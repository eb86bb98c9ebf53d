"""The child processes of a program, from /proc."""
import os
import pathlib
import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Child:
    pid: int
    name: str  # the executable's name, cut to 15 characters
    zombie: bool


def children(parent):
    found = [_stat(int(name)) for name in os.listdir('/proc') if name.isdigit()]
    return [child for number, child in filter(None, found) if number == parent]


def has_ended(pid):
    """Also true for a zombie."""
    stat = _stat(pid)
    return stat is None or stat[1].zombie


def _stat(pid):
    """The id of the parent, and the child; None when the child is gone."""
    try:
        text = pathlib.Path(f'/proc/{pid}/stat').read_text()
    except (FileNotFoundError, ProcessLookupError):
        return None
    name, state, parent = re.match(r'\d+ \((.*)\) (.) (\d+)', text, re.DOTALL).groups()
    return int(parent), Child(pid, name, zombie=state in 'ZX')
