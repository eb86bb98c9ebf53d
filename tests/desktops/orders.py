"""Keeps a desktop open and follows orders, one per line, that are written to a pipe:

    start, quit            the program
    plug 80, unplug, level 20
    click X Y [BUTTON] [TIMES]
    shot NAME              a picture
    run COMMAND            a shell command in the session
    end                    the desktop

Any other line is a Python expression of `lab`, `laptop` and `desktop`.
"""
import os
import subprocess
import traceback

from gi.repository import GLib

from laptop.waiting import wait_until

PIPE = '/tmp/orders'
DAY = 86400.0


def run(lab, command):
    return subprocess.run(command, shell=True, env=lab.laptop.machine.environment, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=60).stdout


def numbers(text):
    return map(int, text.split())


ORDERS = {
    'start': lambda lab, _: lab.laptop.vorlane.start() and None,
    'quit': lambda lab, _: lab.laptop.vorlane.quit(),
    'plug': lambda lab, percent: lab.laptop.plug_in(*numbers(percent)),
    'unplug': lambda lab, percent: lab.laptop.unplug(*numbers(percent)),
    'level': lambda lab, percent: lab.laptop.charge_to(*numbers(percent)),
    'click': lambda lab, where: lab.desktop.click(*numbers(where)),
    'shot': lambda lab, name: lab.photograph(name),
    'run': run,
}


def follow(lab):
    """Returns at the order "end"."""
    os.mkfifo(PIPE)
    # Open for writing too, so that it has no end of file.
    pipe = os.open(PIPE, os.O_RDWR)
    ready = []
    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, pipe, GLib.IOCondition.IN, lambda *_: ready.append(True) or True)
    print(f'The desktop is up and follows the orders written to {PIPE} in its folder.', flush=True)
    while True:
        wait_until(lambda: ready, 'an order', patience=DAY)
        lines = os.read(pipe, 65536).decode().splitlines()
        ready.clear()
        for line in lines:
            if line == 'end':
                return
            try:
                print(line, '->', obey(lab, line), flush=True)
            except Exception:
                traceback.print_exc()


def obey(lab, line):
    verb, _, rest = line.partition(' ')
    if verb in ORDERS:
        return ORDERS[verb](lab, rest)
    return eval(line, {'lab': lab, 'laptop': lab.laptop, 'desktop': lab.desktop})
