"""The popover's round corners and shadow, which it has only on a composited display."""
import re

import pytest

from laptop.desktop import POPOVER, SHADOW, Desktop, without_shadow
from laptop.pictures import still_picture
from laptop.waiting import wait_until
from laptop.x_compositor import XCompositor
from laptop.x_screen import SIZE
from laptop.xfce_panel import XfcePanel

WIDTH, HEIGHT = SIZE
PANEL_HEIGHT = 30
EDGES = {'top': PANEL_HEIGHT // 2, 'bottom': HEIGHT - PANEL_HEIGHT // 2}
ITEM_X = WIDTH - 16  # the item is the last one on the panel
WALL = (160, 200, 220)


class Desk(Desktop):
    """A desktop with a panel and a light wallpaper."""

    def __init__(self, laptop, edge):
        super().__init__(laptop)
        self.screen.paint_wall(*['#%02x%02x%02x' % WALL] * 2)
        XfcePanel(laptop.machine, laptop.session_bus).start(edge=edge)
        self._place = (ITEM_X, EDGES[edge])
        self.vorlane.start()
        self.item.wait_until_registered()

    def click_on_item(self):
        self.screen.click(*self._place)

    def open_by_click(self):
        """Returns the box of the popover's window."""
        return self.screen.click_until(self.popover_box, 'the popover', *self._place)

    def picture_of(self, box):
        """A still picture of the screen with the popover painted in the box."""
        wait_until(lambda: min(self.screen.picture().pixel(box[0] + 30, box[3] - 10)) > 240, 'the popover',
                   look_every=0.05)
        return still_picture(self.screen)


def corner(picture, box):
    """The colour of a corner pixel of the popover's panel, on the side away from the bar."""
    return picture.pixel(box[0], box[1] if box[1] > HEIGHT // 4 else box[3] - 1)


@pytest.fixture(params=EDGES)
def desk(request, laptop):
    return Desk(laptop, request.param)


def test_a_compositor_gives_it_round_corners_and_a_shadow_at_the_same_place(laptop, desk):
    square = desk.open_by_click()
    assert max(corner(desk.picture_of(square), square)) < 220, 'its line'
    desk.close_popover()

    compositor = XCompositor(laptop.machine).start()
    round_one = without_shadow(desk.open_by_click())
    assert round_one == square
    picture, middle = desk.picture_of(square), (square[1] + square[3]) // 2
    assert picture.pixel(square[0] - SHADOW, middle) == WALL
    brightness = [sum(picture.pixel(square[0] - distance, middle)) for distance in (20, 12, 6, 1)]
    assert brightness == sorted(brightness, reverse=True) and brightness[-1] < sum(WALL) - 30
    red, _, blue = corner(picture, square)
    assert blue > red + 20, 'the wall, in its shadow'
    desk.close_popover()

    compositor.stop()
    assert desk.open_by_click() == square


def test_it_keeps_its_place_when_its_height_changes(laptop, desk):
    XCompositor(laptop.machine).start()
    before = without_shadow(desk.open_by_click())

    laptop.pull_battery()

    after = wait_until(lambda: (box := without_shadow(desk.popover_box())) != before and box, 'another height',
                       look_every=0.05)
    beside = 1 if before[1] < HEIGHT // 4 else 3
    assert after[beside] == before[beside] and (after[0], after[2]) == (before[0], before[2])


def test_a_second_click_on_the_item_closes_it_under_the_shadow_too(laptop, desk):
    XCompositor(laptop.machine).start()
    window = desk.open_by_click()
    across = range(window[1], window[3])
    assert PANEL_HEIGHT - 4 in across or HEIGHT - PANEL_HEIGHT + 4 in across, 'the shadow falls on the panel'

    desk.screen.click(ITEM_X, PANEL_HEIGHT - 4 if window[1] < PANEL_HEIGHT else HEIGHT - PANEL_HEIGHT + 4)

    desk.wait_until_popover_closed()
    desk.open_by_click()


def test_a_press_on_the_shadow_closes_it(laptop, desk):
    XCompositor(laptop.machine).start()
    left, top, _, bottom = desk.open_by_click()

    desk.screen.click(left + SHADOW // 2, (top + bottom) // 2)

    desk.wait_until_popover_closed()


@pytest.mark.usefixtures('without_layer_shell')
def test_under_sway_a_press_on_the_shadow_closes_it(wayland, waybar, vorlane, item):
    waybar.start()
    vorlane.start()
    item.wait_until_registered()
    wayland.plug_in_pointer()
    wayland.move_pointer(WIDTH // 2, PANEL_HEIGHT // 2)
    item.activate()
    wait_until(lambda: wayland.focused() == POPOVER, 'the focus on the popover', look_every=0.05)
    wait_until(lambda: wayland.window_titled(f'^{POPOVER}$')[1] < PANEL_HEIGHT, 'its place', look_every=0.05)
    left, top, _, bottom = wayland.window_titled(f'^{POPOVER}$')

    wayland.click(left + SHADOW // 2, (top + bottom) // 2)

    wait_until(lambda: not wayland.window_titled(f'^{POPOVER}$'), 'the popover to close', look_every=0.05)


@pytest.mark.usefixtures('without_layer_shell')
def test_other_wayland_compositors_are_asked_to_pass_presses_through_the_shadow(wayland, waybar, vorlane, item):
    waybar.start()
    vorlane.start(environment={'WAYLAND_DEBUG': 'client', 'SWAYSOCK': None})
    item.wait_until_registered()
    item.activate()

    left, top, right, bottom = wait_until(lambda: wayland.window_titled(f'^{POPOVER}$'), 'the popover',
                                          look_every=0.05)
    panel = f'add({SHADOW}, {SHADOW}, {right - left - 2 * SHADOW}, {bottom - top - 2 * SHADOW})'
    wait_until(lambda: re.search(rf'wl_region@(\d+)\.{re.escape(panel)}[^$]*?set_input_region\(wl_region@\1\)',
                                 vorlane.process.stderr), 'the region that takes presses', look_every=0.05)
    vorlane.kill()  # a clean quit would fail on the debug log in stderr
