"""Plays the scenario on a desktop and prints a line for each step. See `play`."""
import argparse
import sys
import time
import traceback

import orders
from cinnamon import Cinnamon
from gnome import Gnome
from lab import Lab
from plasma import PlasmaWayland, PlasmaX11
from scenario import Scenario

DESKTOPS = {kind.name: kind for kind in (Gnome, PlasmaWayland, PlasmaX11, Cinnamon)}


def play(lab):
    """The number of failed steps."""
    scenario, failed = Scenario(lab), 0
    for step in Scenario.STEPS:
        name, begun = step.__name__.replace('_', ' '), time.monotonic()
        try:
            step(scenario)
            print(f'ok      {name} ({time.monotonic() - begun:.0f} s)', flush=True)
        except Exception:
            failed += 1
            print(f'FAILED  {name}\n{traceback.format_exc()}', flush=True)
            lab.photograph('failed-' + step.__name__)
            if step is not Scenario.STEPS[-1]:
                lab.tidy()
    return failed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('desktop', choices=DESKTOPS)
    parser.add_argument('out')
    parser.add_argument('--stay', action='store_true')
    parser.add_argument('--scale', type=float, default=1)
    parser.add_argument('--program', default='/usr/bin/vorlane')
    options = parser.parse_args()
    kind = DESKTOPS[options.desktop]
    kind.scale = options.scale
    lab = Lab(kind, options.out, options.program)
    try:
        return orders.follow(lab) if options.stay else min(play(lab), 1)
    finally:
        lab.close()


sys.exit(main())
