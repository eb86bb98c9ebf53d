"""The windows under sway with waybar, without layer-shell: a client can neither grab the pointer nor place itself."""
import pytest

from laptop.accessibility import Accessibility
from laptop.desktop import POPOVER, SETTINGS, without_shadow
from laptop.mute_sway import MuteSway
from laptop.waiting import wait_until

PANEL_HEIGHT = 30
pytestmark = pytest.mark.usefixtures('without_layer_shell')


@pytest.fixture
def accessibility(laptop, wayland, waybar):
    accessibility = Accessibility(laptop.machine, laptop.session_bus)
    waybar.start()
    wayland.move_pointer(1000, PANEL_HEIGHT // 2)
    return accessibility


@pytest.fixture
def tree(accessibility, vorlane, item):
    vorlane.start()
    item.wait_until_registered()
    return accessibility


@pytest.fixture
def popover(wayland, tree, item):
    item.activate()
    popover = wait_for_popover(tree)
    wait_for_focus(wayland, POPOVER)
    return popover


def wait_for_popover(tree):
    popover = tree.wait_for_window(POPOVER)
    popover.wait_for('Quit')  # appears once the popover is placed
    return popover


def wait_for_focus(wayland, title):
    wait_until(lambda: wayland.focused() == title, lambda: f'the focus on {title!r}; {wayland.focused()!r} has it',
               look_every=0.02)


def test_the_popover_floats_and_stays_current(laptop, wayland, popover):
    assert popover.find('60%') and popover.find('On battery, 3 h left')
    assert wayland.is_floating(POPOVER)

    laptop.charge_to(61)
    popover.wait_for('61%')
    popover.find('7 days').do('Toggle')
    wait_until(lambda: popover.find('7 days').checked, 'the other range', look_every=0.02)


def test_escape_closes_the_popover(wayland, tree, popover):
    wayland.press_keys('Escape')

    tree.wait_until_gone(POPOVER)


def test_the_settings_replace_the_popover_float_and_work(vorlane, wayland, tree, popover):
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
    wait_for_focus(wayland, POPOVER)

    wayland.focus(SETTINGS)

    tree.wait_until_gone(POPOVER)


def test_a_compositor_that_hangs_does_not_hold_up_reminders(laptop, wayland, tree, item):
    wayland.hang()
    item.activate()

    laptop.charge_to(20)
    item.wait_for_label('20%')

    wayland.go_on()
    item.activate_until(lambda: tree.window(POPOVER), 'the popover')


@pytest.fixture
def settings(wayland, tree, item):
    """The settings window, open so that sway can leave the focus on it."""
    wayland.plug_in_pointer()
    item.choose('Settings')
    settings = tree.wait_for_window(SETTINGS)
    wait_for_focus(wayland, SETTINGS)
    return settings


def test_a_popover_without_the_focus_closes_at_a_second_click(wayland, tree, item, settings):
    wayland.refuse_focus(POPOVER)
    for _ in range(2):
        item.activate()
        wait_for_popover(tree)
        assert wayland.focused() == SETTINGS

        item.activate()
        tree.wait_until_gone(POPOVER)


def test_a_popover_without_the_focus_closes_at_a_press_on_the_settings(wayland, tree, item, settings):
    wayland.refuse_focus(POPOVER)
    item.activate()
    wait_for_popover(tree)
    left, top, _, _ = wayland.window_titled(SETTINGS)

    wayland.click(left + 5, top + 5)

    tree.wait_until_gone(POPOVER)
    assert wayland.focused() == SETTINGS


def test_the_menu_leaves_an_open_popover_open(wayland, tree, item, popover):
    item.choose('Open Vorlane')

    wayland.press_keys('Tab')  # arrives after the menu click
    wait_for_popover(tree)
    assert wayland.focused() == POPOVER
    item.activate()
    tree.wait_until_gone(POPOVER)


def test_a_second_start_brings_the_popover_to_the_current_workspace_with_the_focus(
        wayland, vorlane, tree, item, settings):
    wayland.refuse_focus(POPOVER, workspace=1)
    item.activate()
    wait_for_popover(tree)
    wayland.go_to_workspace(2)

    vorlane.activate()

    wait_for_focus(wayland, POPOVER)
    wayland.press_keys('Escape')
    tree.wait_until_gone(POPOVER)


def test_a_second_start_hands_its_activation_token_to_the_compositor(wayland, vorlane, accessibility, item):
    vorlane.start(environment={'WAYLAND_DEBUG': 'client'})
    item.activate()
    wait_for_popover(accessibility)

    for token in ('first', 'second'):
        vorlane.activate(token)
        wait_until(lambda: f'.activate("{token}", wl_surface@' in vorlane.process.stderr, f'{token} to be used',
                   look_every=0.05)

    assert wayland.focused() == POPOVER
    vorlane.kill()  # a clean quit would fail on the debug log in stderr


def test_closing_by_the_item_hands_its_activation_token_to_the_compositor(wayland, vorlane, accessibility, item):
    vorlane.start(environment={'WAYLAND_DEBUG': 'client'})
    item.activate()
    wait_for_popover(accessibility)

    item.provide_token('closing')
    item.activate()
    accessibility.wait_until_gone(POPOVER)

    assert '.activate("closing", wl_surface@' in vorlane.process.stderr
    vorlane.kill()  # a clean quit would fail on the debug log in stderr


@pytest.mark.parametrize('answers', [0, 1])
def test_an_unresponsive_sway_is_asked_once_per_opening(
        laptop, wayland, accessibility, vorlane, item, answers):
    sway = MuteSway(laptop.machine, answers)
    vorlane.start(environment={'SWAYSOCK': sway.path})
    item.wait_until_registered()
    before = wayland.picture()

    for opening in (1, 2):
        item.activate()
        wait_for_popover(accessibility)
        left, top, right, bottom = without_shadow(wayland.window_titled(f'^{POPOVER}$'))
        ends = [((left + right) // 2, top), (left, (top + bottom) // 2), (right - 1, bottom - 20)]
        wait_until(lambda: differs_at(ends, before, wayland.picture()), 'something to see', look_every=0.1)
        assert sway.questions == answers + opening

        item.activate()
        accessibility.wait_until_gone(POPOVER)


def differs_at(places, picture, other):
    return all(picture.pixel(*place) != other.pixel(*place) for place in places)
