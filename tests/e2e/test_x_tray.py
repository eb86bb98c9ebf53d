"""The icon in trays that embed windows (XEMBED), used while no panel watches the bus for status items."""
import os
import pathlib
import time

import pytest

from laptop.pictures import picture_that_differs, picture_with_panel, still_picture
from laptop.status_item import WATCHER
from laptop.waiting import wait_until
from laptop.x_screen import XScreen
from laptop.x_trays import I3, Tint2, TrayIcon

DARK, LIGHT = '#222222', '#eeeeee'
WHITE = (0xf6, 0xf6, 0xf6)  # colour of the number on a bar that sets none
PANEL_HEIGHT = 30
POPOVER = '^Vorlane$'


@pytest.fixture
def tint2(laptop, screen):
    """The bar, not started yet."""
    return Tint2(laptop.machine)


@pytest.fixture
def icon(screen):
    return TrayIcon(screen)


def maps_x(process):
    """Whether the process has loaded the X client library."""
    return 'libxcb' in pathlib.Path(f'/proc/{process.pid}/maps').read_text()


def processor_time(process):
    """CPU seconds used so far by the process."""
    fields = pathlib.Path(f'/proc/{process.pid}/stat').read_text().rsplit(')', 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf('SC_CLK_TCK')


def near(color, wanted):
    """Whether two colours are equal except for rounding in the bar's blending."""
    return all(abs(one - other) <= 3 for one, other in zip(color, wanted))


def has_color(picture, box, wanted):
    left, top, right, bottom = box
    return any(near(picture.pixel(x, y), wanted) for y in range(top, bottom) for x in range(left, right))


@pytest.mark.parametrize('color', [DARK, LIGHT])
def test_the_bar_shows_the_icon(laptop, vorlane, screen, tint2, icon, pictures, color):
    without = pictures(picture_with_panel(screen, lambda: tint2.start(color)), f'tint2-{color[1:]}-without')

    vorlane.start()
    left, top, right, bottom = icon.wait_for()

    assert bottom - top <= PANEL_HEIGHT
    with_icon, box = picture_that_differs(screen, without)
    pictures(with_icon, f'tint2-{color[1:]}-with')
    assert left <= box[0] and top <= box[1] and box[2] <= right and box[3] <= bottom
    assert box[2] - box[0] >= 16
    assert has_color(with_icon, box, WHITE)


def test_the_bar_shows_another_icon_when_the_symbol_changes(laptop, vorlane, screen, tint2, icon, item):
    without = picture_with_panel(screen, tint2.start)
    vorlane.start()
    _, first = picture_that_differs(screen, without)
    before = still_picture(screen)

    laptop.plug_in()
    item.wait_for_icon('battery.100.bolt')

    _, box = picture_that_differs(screen, before)
    assert first[1] - 4 <= box[1] and box[3] <= first[3] + 4
    wait_until(lambda: screen.window_titled('^Vorlane: Battery .*, Charging'), 'the new name', look_every=0.05)


def test_a_click_opens_and_closes_the_popover(vorlane, screen, tint2, icon):
    tint2.start()
    vorlane.start()

    icon.click()
    box = wait_until(lambda: screen.window_titled(POPOVER), 'the popover', look_every=0.05)
    assert PANEL_HEIGHT < box[1] <= PANEL_HEIGHT + 8
    icon.click()

    wait_until(lambda: not screen.window_titled(POPOVER), 'the popover to close', look_every=0.05)
    still_picture(screen)
    assert not screen.window_titled(POPOVER)


def open_menu(screen, icon, box=None):
    """Right-clicks the icon; returns the picture with the menu, and the box that changed."""
    closed = still_picture(screen)
    icon.click(3, box)
    return picture_that_differs(screen, closed)


def test_a_menu_closed_without_a_choice_does_nothing(vorlane, screen, tint2, icon):
    tint2.start()
    vorlane.start()
    icon.wait_for()
    before = still_picture(screen)

    open_menu(screen, icon)
    screen.click(600, 500)

    wait_until(lambda: screen.picture().difference(before) is None, 'the menu to close', look_every=0.1)


def test_the_icon_appears_in_a_tray_that_starts_late(vorlane, screen, tint2, icon):
    vorlane.start()
    wait_until(lambda: maps_x(vorlane.process), 'the program to connect to the display', look_every=0.05)

    tint2.start()

    icon.wait_for()


def test_the_icon_yields_to_a_panel_that_watches_the_bus(vorlane, screen, panel, item, tint2, icon):
    tint2.start()
    vorlane.start()
    icon.wait_for()

    panel.start()
    item.wait_until_registered()
    icon.wait_until_gone()
    panel.kill()
    tint2.kill()  # the icon has left this tray for the panel
    tint2.start()

    icon.wait_for()


def test_x_is_not_used_with_a_panel_that_watches_the_bus(vorlane, screen, panel, item, clock):
    panel.start()
    vorlane.start(clock=clock)
    item.wait_until_registered()

    vorlane.advance(60)

    assert not maps_x(vorlane.process)


def test_x_is_not_used_under_wayland(vorlane, screen, clock):
    vorlane.start(clock=clock, environment={'WAYLAND_DISPLAY': 'wayland-missing'})

    vorlane.advance(60)

    assert not maps_x(vorlane.process)


def test_a_display_that_dies_removes_only_the_icon(laptop, vorlane, screen, tint2, icon, item):
    tint2.start()
    vorlane.start()
    icon.wait_for()

    screen.kill()
    laptop.charge_to(40)
    item.wait_for_label('40%')

    before = processor_time(vorlane.process)
    time.sleep(1)  # the program should stay idle in this second
    assert processor_time(vorlane.process) - before < 0.1


def test_a_display_that_hangs_delays_only_the_icon(laptop, vorlane, screen, tint2, icon, item, clock):
    tint2.start()
    wait_until(lambda: screen.window('tint2'), 'the bar', look_every=0.05)
    screen.hang()

    vorlane.start(clock=clock)
    vorlane.advance(60)  # the program has tried the display by then
    laptop.charge_to(40)
    item.wait_for_label('40%')
    screen.go_on()

    icon.wait_for()


def test_a_display_that_hangs_later_delays_nothing(laptop, vorlane, screen, tint2, icon, item):
    tint2.start(height=120)  # so tall that thirty icon updates overflow the socket buffer
    vorlane.start()
    icon.wait_for()

    screen.hang()
    for percent in range(90, 60, -1):
        laptop.charge_to(percent)
        item.wait_for_label(f'{percent}%')
    screen.go_on()

    icon.wait_for()
    laptop.plug_in(61)
    wait_until(lambda: screen.window_titled('^Vorlane: Battery .*, Charging'), 'the new name', look_every=0.05)


def test_i3bar_shows_the_icon_in_the_bars_text_colour(laptop, vorlane, pictures):
    screen = XScreen(laptop.machine, manager=None)
    icon = TrayIcon(screen)
    without = picture_with_panel(screen, I3(laptop.machine).start)

    vorlane.start()
    icon.wait_for()

    with_icon, box = picture_that_differs(screen, without)
    pictures(with_icon, 'i3bar')
    assert box[3] <= PANEL_HEIGHT
    assert has_color(with_icon, box, (255, 255, 255))
    icon.click(box=box)
    wait_until(lambda: screen.window_titled(POPOVER), 'the popover', look_every=0.05)


def test_the_watcher_may_come_and_go_rapidly(laptop, vorlane, screen, tint2, icon):
    tint2.start()
    vorlane.start()
    icon.wait_for()
    connection = laptop.session_bus.connect()

    for _ in range(20):
        connection.request_name(WATCHER)
        connection.release_name(WATCHER)
    vorlane.round_trip()
    assert not icon.box()

    icon.wait_for()
