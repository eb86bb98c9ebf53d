"""Usage: python3 -m laptop.demo PROGRAM FOLDER-FOR-SCREENSHOTS"""
import sys

from ..waiting import NeverHappened
from .day import live_through


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        live_through(program=sys.argv[1], pictures=sys.argv[2])
    except (NeverHappened, AssertionError, RuntimeError) as trouble:
        print(f'\nThe demo failed: {trouble}', file=sys.stderr)
        return 1
    return 0


sys.exit(main())
