"""Fixtures: a virtual laptop for each test; the program in it must end cleanly."""
import contextlib
import os
import pathlib

import pytest

from laptop.notification_daemons import Dunst, Mako
from laptop.pictures import Album
from laptop.sway import Sway
from laptop.virtual_laptop import VirtualLaptop
from laptop.waybar import Waybar
from laptop.xfce_panel import XfcePanel

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]


def pytest_addoption(parser):
    parser.addoption('--vorlane', default=str(REPOSITORY / 'build/sanitize/bin/vorlane'),
                     help='the program to test')
    parser.addoption('--flood', type=int, help='number of messages per flood')


@pytest.fixture(scope='session')
def program(pytestconfig):
    path = os.path.abspath(pytestconfig.getoption('--vorlane'))
    assert os.access(path, os.X_OK), f'{path} does not exist; build it first'
    return path


@contextlib.contextmanager
def running(program):
    """A laptop for a `with` block; afterwards the program must quit cleanly."""
    laptop = VirtualLaptop(program)
    try:
        laptop.upower.start()
        yield laptop
        if laptop.vorlane.process:
            laptop.vorlane.quit()
    finally:
        # Shown by pytest when the test fails.
        for process in laptop.machine.processes:
            if process.name == 'vorlane':
                print(process.stderr, end='')
        laptop.close()


@pytest.fixture
def laptop(program):
    """Buses, login manager, UPower and a battery, but no screen."""
    with running(program) as laptop:
        yield laptop


@pytest.fixture(scope='module')
def shared_laptop(program):
    """One laptop for all tests of a file; each test restores its state."""
    with running(program) as laptop:
        yield laptop


@pytest.fixture
def vorlane(laptop):
    """The program, not started yet. If the test leaves it running, it is quit and must end cleanly."""
    return laptop.vorlane


@pytest.fixture
def item(laptop):
    return laptop.item


@pytest.fixture
def notifications(laptop):
    return laptop.notifications


@pytest.fixture
def clock(laptop):
    """A clock that the program uses if it is passed to `start`."""
    return laptop.moved_clock()


@pytest.fixture
def screen(laptop):
    return laptop.x_screen()


@pytest.fixture
def dunst(laptop, screen):
    """The notification daemon, running."""
    return Dunst(laptop.machine, laptop.session_bus).start()


@pytest.fixture
def late_dunst(laptop, screen):
    """The notification daemon, not started yet."""
    return Dunst(laptop.machine, laptop.session_bus)


@pytest.fixture
def panel(laptop, screen):
    """The panel, not started yet."""
    return XfcePanel(laptop.machine, laptop.session_bus)


@pytest.fixture
def wayland(laptop):
    return Sway(laptop.machine)


@pytest.fixture
def without_layer_shell(vorlane):
    """For tests of the popover as an ordinary window: skips them if it would be a layer surface."""
    if vorlane.has_layer_shell:
        pytest.skip('this program was built with LayerShellQt; see test_layer_shell.py')


@pytest.fixture
def mako(laptop, wayland):
    return Mako(laptop.machine, laptop.session_bus).start()


@pytest.fixture
def waybar(laptop, wayland):
    """The bar, not started yet."""
    return Waybar(laptop.machine, laptop.session_bus)


@pytest.fixture(scope='session')
def pictures():
    """Keeps screenshots in the folder that VORLANE_SCREENSHOTS names."""
    return Album()
