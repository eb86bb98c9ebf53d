"""The popover as a layer surface, under sway with waybar. Needs a program that was built with LayerShellQt."""
import pytest

from laptop.accessibility import Accessibility
from laptop.desktop import POPOVER, SETTINGS
from laptop.sway import SIZE

WIDTH, HEIGHT = SIZE
PANEL_HEIGHT = 30
GAP = 6
ITEM = (WIDTH - 16, PANEL_HEIGHT // 2)  # our item, the only one, at the end of the bar
BELOW_ITEM = (WIDTH - 170, 200)


class Desk:
    """The bar with our item in it, and a mouse."""

    def __init__(self, laptop, wayland, waybar):
        self.wayland, self.item = wayland, laptop.item
        self.tree = Accessibility(laptop.machine, laptop.session_bus)
        wayland.plug_in_pointer()
        waybar.start()
        laptop.vorlane.start()
        self.item.wait_until_registered()

    def park_pointer(self, *place):
        """Call before opening, with a place that the popover will cover: there, `popover_box` does not see the pointer."""
        self._parked = place
        self._empty = self._below_the_bar()

    def open_popover(self):
        self.wayland.move_pointer(*ITEM)
        self.item.activate()
        return self.wait_for_popover()

    def wait_for_popover(self):
        popover = self.tree.wait_for_window(POPOVER)
        popover.wait_for('Quit')
        return popover

    def wait_until_closed(self):
        self.tree.wait_until_gone(POPOVER)

    def popover_box(self):
        """The box of the popover's panel, by its pixels; the shadow does not show on black."""
        left, top, right, bottom = self._below_the_bar().difference(self._empty)
        return left, top + PANEL_HEIGHT, right, bottom + PANEL_HEIGHT

    def _below_the_bar(self):
        self.wayland.move_pointer(*self._parked)
        return self.wayland.picture().crop((0, PANEL_HEIGHT, WIDTH, HEIGHT))


@pytest.fixture
def desk(laptop, wayland, waybar):
    if not laptop.vorlane.has_layer_shell:
        pytest.skip('this program was built without LayerShellQt')
    return Desk(laptop, wayland, waybar)


def test_a_click_on_the_item_opens_the_popover_below_the_bar(desk):
    desk.park_pointer(*BELOW_ITEM)

    desk.open_popover()

    _, top, right, _ = desk.popover_box()
    assert abs(top - PANEL_HEIGHT - GAP) <= 1
    assert abs(WIDTH - GAP - right) <= 1


def test_the_menu_opens_the_popover_at_the_edge_nearest_to_the_pointer(desk):
    desk.park_pointer(300, HEIGHT - 100)
    desk.wayland.click(300, HEIGHT - 20)

    desk.item.choose('Open Vorlane')

    desk.wait_for_popover()
    left, _, right, bottom = desk.popover_box()
    assert abs((left + right) // 2 - 300) <= 1
    assert abs(HEIGHT - GAP - bottom) <= 1


@pytest.mark.parametrize('place', [(200, 500), (200, PANEL_HEIGHT // 2), ITEM],
                         ids=['the desktop', 'the bar', 'the item'])
def test_a_press_outside_closes_the_popover(desk, place):
    desk.open_popover()

    desk.wayland.click(*place)

    desk.wait_until_closed()
    desk.item.activate_until(lambda: desk.tree.window(POPOVER), 'the popover again')


def test_the_popover_has_the_keyboard(desk):
    desk.open_popover()

    desk.wayland.press_keys('Escape')

    desk.wait_until_closed()


def test_the_popover_stays_at_the_bar_while_its_content_changes(laptop, desk):
    desk.park_pointer(*BELOW_ITEM)
    popover = desk.open_popover()

    laptop.charge_to(61)
    popover.wait_for('61%')

    _, top, right, _ = desk.popover_box()
    assert abs(top - PANEL_HEIGHT - GAP) <= 1
    assert abs(WIDTH - GAP - right) <= 1


def test_the_settings_replace_the_popover(desk):
    desk.open_popover().find('Settings', 'push button').press()

    desk.tree.wait_for_window(SETTINGS)
    desk.tree.wait_until_gone(POPOVER)
    assert desk.wayland.is_floating(SETTINGS)
