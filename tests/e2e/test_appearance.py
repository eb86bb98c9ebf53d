"""How the windows look: they follow the desktop's colours, and nothing is cut off."""
import pytest

from laptop.desktop import Desktop
from laptop.settings_portal import DARK, LIGHT, SettingsPortal
from laptop.waiting import wait_until
from laptop.x_screen import XScreen

PURPLE = (0.8, 0.0, 0.8)


@pytest.fixture(scope='module')
def shared_desktop(shared_laptop):
    shared_laptop.portal = SettingsPortal(shared_laptop.machine, shared_laptop.session_bus)
    return Desktop(shared_laptop).start()


@pytest.fixture
def desktop(shared_desktop):
    yield shared_desktop
    shared_desktop.tidy()


def brightness(desktop, window):
    """Brightness of the window's background, 0 to 255."""
    left, top, _, bottom = window.box
    return sum(desktop.screen.picture().pixel(left + 8, bottom - 8)) / 3


def wait_for_background(desktop, window, dark):
    wait_until(lambda: (brightness(desktop, window) < 100) == dark,
               lambda: f'a {"dark" if dark else "light"} background; its brightness is {brightness(desktop, window)}',
               look_every=0.05)


def has_color(desktop, window, color):
    return desktop.screen.picture().holds(window.box, tuple(round(part * 255) for part in color))


def test_open_windows_follow_the_colour_scheme(desktop):
    portal = desktop.laptop.portal
    settings, popover = desktop.open_settings(), desktop.open_popover()
    wait_for_background(desktop, popover, dark=False)

    portal.set_scheme(DARK)
    wait_for_background(desktop, popover, dark=True)
    wait_for_background(desktop, settings, dark=True)

    portal.set_scheme(LIGHT)
    wait_for_background(desktop, popover, dark=False)
    wait_for_background(desktop, settings, dark=False)


def test_an_open_popover_follows_the_accent_colour(desktop):
    popover = desktop.open_popover()
    assert not has_color(desktop, popover, PURPLE)

    desktop.laptop.portal.set_accent(*PURPLE)

    wait_until(lambda: has_color(desktop, popover, PURPLE), 'the accent colour', look_every=0.05)


def within(inner, outer):
    return (inner[0] >= outer[0] and inner[1] >= outer[1] and inner[2] <= outer[2] and inner[3] <= outer[3])


def expect_everything_inside(popover):
    for control in popover.walk():
        assert within(control.box, popover.box), control
    texts = [control for control in popover.walk() if control.name and not control.children]
    for one, other in zip(texts, texts[1:]):
        assert not overlap(one.box, other.box), (one, other)


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


@pytest.mark.parametrize('locale, environment', [
    ('de_DE', {'QT_FONT_DPI': '144'}), ('ja_JP', {'QT_FONT_DPI': '192'}), ('en_US', {'QT_SCALE_FACTOR': '1.5'})],
    ids=['larger-german', 'doubled-japanese', 'scaled'])
def test_nothing_is_cut_off(laptop, locale, environment):
    screen = XScreen(laptop.machine, size=(2560, 1600))
    desktop = Desktop(laptop, screen).start(environment={**environment, **laptop.machine.locale(locale)})
    laptop.plug_in(79)
    laptop.item.choose('Snooze 1 hour')
    laptop.item.wait_for_menu_line('Cancel Snooze')

    popover = desktop.open_popover()
    popover.wait_for('Plugged in for 1 min')
    popover.wait_for('Cancel')
    expect_everything_inside(popover)
    assert within(desktop.popover_box(), desktop.screen.box)
