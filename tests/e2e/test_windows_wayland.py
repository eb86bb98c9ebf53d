"""The windows under sway with waybar, where a client neither grabs the pointer nor places itself."""
import pytest

from laptop.accessibility import Accessibility
from laptop.desktop import POPOVER, SETTINGS
from laptop.waiting import wait_until

PANEL_HEIGHT = 30


@pytest.fixture
def tree(laptop, wayland, waybar, vorlane, item):
    accessibility = Accessibility(laptop.machine, laptop.session_bus)
    waybar.start()
    vorlane.start()
    item.wait_until_registered()
    return accessibility


@pytest.fixture
def popover(wayland, tree, item):
    wayland.move_pointer(1000, PANEL_HEIGHT // 2)
    item.activate()
    popover = tree.wait_for_window(POPOVER)
    wait_until(lambda: wayland.focused() == POPOVER, 'the focus on the popover', look_every=0.02)
    return popover


def test_the_popover_floats_and_shows_what_happens(laptop, wayland, popover):
    assert popover.find('60%') and popover.find('On battery, 3 h left')
    assert wayland.is_floating(POPOVER)

    laptop.charge_to(61)
    popover.wait_for('61%')
    popover.find('7 days').do('Toggle')
    wait_until(lambda: popover.find('7 days').checked, 'the other range', look_every=0.02)


def test_escape_closes_the_popover(wayland, tree, popover):
    wayland.press_keys('Escape')

    tree.wait_until_gone(POPOVER)


def test_the_settings_float_in_the_popovers_place_and_work(vorlane, wayland, tree, popover):
    popover.find('Settings', 'push button').press()
    settings = tree.wait_for_window(SETTINGS)
    tree.wait_until_gone(POPOVER)
    assert wayland.is_floating(SETTINGS)

    settings.find('Show time remaining', 'check box').do('Toggle')
    vorlane.wait_for_setting('showTime', True)


def test_the_popover_closes_when_the_focus_goes_elsewhere(wayland, tree, item, popover):
    popover.find('Settings', 'push button').press()
    tree.wait_for_window(SETTINGS)
    tree.wait_until_gone(POPOVER)
    item.activate()
    tree.wait_for_window(POPOVER)
    wait_until(lambda: wayland.focused() == POPOVER, 'the focus on the popover', look_every=0.02)

    wayland.focus(SETTINGS)

    tree.wait_until_gone(POPOVER)


def test_a_compositor_that_hangs_does_not_hold_up_reminders(laptop, wayland, tree, item):
    wayland.hang()
    item.activate()

    laptop.charge_to(20)
    item.wait_for_label('20%')

    wayland.go_on()
    item.activate()
    tree.wait_for_window(POPOVER)
