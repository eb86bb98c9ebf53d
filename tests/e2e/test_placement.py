"""Where the popover appears: beside the clicked panel, on its screen."""
import pytest

from laptop.desktop import Desktop
from laptop.x_screen import SIZE
from laptop.xfce_panel import XfcePanel

WIDTH, HEIGHT = SIZE
PANEL = 30
GAP = 6
# The tray is at the end of the panel, and our item is the only one in it.
PLACES = {
    'top': (WIDTH - 16, PANEL // 2),
    'bottom': (WIDTH - 16, HEIGHT - PANEL // 2),
    'left': (PANEL // 2, HEIGHT - 16),
    'right': (WIDTH - PANEL // 2, HEIGHT - 16),
}


@pytest.fixture(scope='module')
def shared_desktop(shared_laptop):
    return Desktop(shared_laptop).start(notifications=False)


@pytest.fixture
def desktop(shared_desktop):
    yield shared_desktop
    shared_desktop.close_popover()


@pytest.fixture
def panel(desktop):
    panel = XfcePanel(desktop.laptop.machine, desktop.laptop.session_bus)
    yield panel
    panel.kill()


def open_by_click(desktop, place):
    """Returns the popover's box."""
    desktop.item.wait_until_registered()
    return desktop.screen.click_until(desktop.popover_box, 'the popover', *place)


@pytest.mark.parametrize('edge', PLACES)
def test_it_appears_beside_the_panel_at_any_edge(desktop, panel, edge):
    panel.start(edge=edge)

    left, top, right, bottom = open_by_click(desktop, PLACES[edge])

    distance = {'top': top, 'bottom': HEIGHT - bottom, 'left': left, 'right': WIDTH - right}[edge]
    assert PANEL + GAP <= distance <= PANEL + GAP + 2
    assert left >= GAP and top >= GAP and right <= WIDTH - GAP and bottom <= HEIGHT - GAP


def test_it_appears_on_the_clicked_screen(desktop):
    desktop.screen.split()

    # So close to the border that a centred popover would straddle it.
    border = WIDTH // 2
    for x, screen in ((border - 20, range(0, border)), (border + 20, range(border, WIDTH))):
        desktop.screen.move_pointer(x, 2)
        desktop.open_popover()
        left, _, right, _ = desktop.popover_box()
        assert left in screen and right - 1 in screen
        desktop.close_popover()
