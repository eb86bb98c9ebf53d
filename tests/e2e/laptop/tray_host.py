"""The kinds of tray: their program, where they show the number, and what clicks do."""
from dataclasses import dataclass
from functools import partial

from .lxqt_panel import LxqtPanel
from .mate_panel import MatePanel
from .sway import Sway
from .waybar import Waybar
from .x_screen import XScreen
from .x_trays import Tint2
from .xfce_panel import XfcePanel


@dataclass(frozen=True)
class TrayHost:
    program: object  # called with the machine and its session bus; has `start` and `kill`
    screen: object = XScreen
    label: bool = False  # the number is shown beside the icon
    exact: bool = False  # shows the pixels from the bus unchanged
    opens: str = 'popover'  # what a click opens
    menu_button: int = 3
    menu_keys: bool = True  # its menu can be used by keyboard


def without_bus(program):
    return lambda machine, bus: program(machine)


TRAY_HOSTS = {
    'xfce': TrayHost(XfcePanel, exact=True),
    'xfce-indicator': TrayHost(partial(XfcePanel, plugins=('stretch', 'indicator')), label=True,
                               opens='menu', menu_button=1),
    'lxqt': TrayHost(LxqtPanel, exact=True),
    'mate': TrayHost(MatePanel, label=True),
    'tint2': TrayHost(without_bus(Tint2)),
    'waybar': TrayHost(Waybar, screen=Sway, exact=True, menu_keys=False),
}
