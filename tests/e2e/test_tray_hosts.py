"""The item on each kind of tray: what the screen shows, and what pointer and keyboard do."""
import pytest

from conftest import running
from laptop.pictures import picture_that_differs, still_picture
from laptop.sway import Sway
from laptop.tray import Tray
from laptop.tray_host import TRAY_HOSTS
from laptop.waiting import wait_until

PANEL_HEIGHT = 32  # height of the tallest panel
HANDLE = 6  # width in pixels; MATE's tray keeps showing its handle once it has held an item


@pytest.fixture(scope='module', params=TRAY_HOSTS)
def shared_tray(request, program):
    with running(program) as laptop:
        yield Tray(laptop, TRAY_HOSTS[request.param])


@pytest.fixture
def keep(request, pictures):
    return lambda picture, name: pictures(picture, f'{request.node.callspec.params["shared_tray"]}-{name}')


@pytest.fixture
def tray(shared_tray):
    yield shared_tray
    shared_tray.tidy()


def assert_drawn_as_offered(picture, box, item):
    """Each opaque pixel of the icon is on the screen unchanged: nothing is scaled or blurred."""
    drawn = item.pixels(22)
    assert item.icon == '' and drawn
    assert (box[2] - box[0], box[3] - box[1]) == (22, 22)
    for (x, y), color in drawn.items():
        seen = picture.pixel(box[0] + x, box[1] + y)
        assert max(abs(a - b) for a, b in zip(seen, color)) <= 2, f'{seen} instead of {color} at {x}, {y}'


def test_the_item_is_in_the_panel(tray, keep):
    keep(tray.without, 'without')
    keep(tray.picture, 'with')

    left, top, right, bottom = tray.box
    assert 0 <= top and bottom <= PANEL_HEIGHT
    assert 14 <= bottom - top <= 30 and 14 <= right - left <= 90


def test_the_number_is_legible(tray, keep):
    """A change of the last digit changes the screen only where that digit is."""
    tray.laptop.charge_to(62)

    picture, (left, top, right, bottom) = tray.change()
    keep(picture, '62')
    assert left >= (tray.box[0] + tray.box[2]) // 2 and right <= tray.box[2]
    assert 3 <= right - left <= 12 and 6 <= bottom - top <= 14
    if tray.host.exact:
        assert_drawn_as_offered(picture, tray.box, tray.item)


def test_a_low_battery_calls_for_attention_and_keeps_its_number(tray, keep):
    for percent in (20, 19):
        before = still_picture(tray.screen)
        tray.laptop.charge_to(percent)
        tray.item.wait_for_status('NeedsAttention')

        picture, _ = picture_that_differs(tray.screen, before)
        keep(picture, str(percent))
        box = picture.difference(tray.without)
        assert all(abs(now - first) <= 8 for now, first in zip(box, tray.box)), f'{box} instead of {tray.box}'
        if tray.host.exact:
            assert_drawn_as_offered(picture, tray.box, tray.item)


def test_the_symbol_shows_alone_when_the_number_is_off(tray, keep):
    tray.vorlane.write_settings('showPercent = false\n')

    picture, _ = tray.change()
    keep(picture, 'without-number')
    left, top, right, bottom = picture.difference(tray.without)
    assert 10 <= right - left <= 40 and bottom - top <= PANEL_HEIGHT
    if tray.host.label:
        assert right - left < tray.box[2] - tray.box[0] - 10


def under_the_item(popover, item):
    """Whether the popover is beside the panel and overlaps the clicked item horizontally."""
    return popover and item[3] <= popover[1] <= PANEL_HEIGHT + 8 and popover[0] < item[2] and item[0] < popover[2]


def test_a_click_opens_the_popover_or_the_menu(tray, keep):
    if tray.vorlane.has_layer_shell and isinstance(tray.screen, Sway):
        pytest.skip('this program was built with LayerShellQt; see test_layer_shell.py')
    tray.click()

    if tray.host.opens == 'menu':
        picture, (left, top, right, bottom) = tray.change()
        keep(picture, 'menu')
        assert bottom - top > 80 and right - left > 80
        tray.screen.press_keys('Escape')
        return
    wait_until(lambda: under_the_item(tray.popover(), tray.box), lambda: f'{tray.popover()} under {tray.box}',
               look_every=0.05)
    keep(still_picture(tray.screen), 'popover')


def test_the_menu_opens_the_settings(tray):
    tray.choose('Settings')

    wait_until(tray.settings, 'the settings', look_every=0.05)


def test_a_restarted_host_shows_the_current_item(tray):
    tray.laptop.charge_to(62)
    at_62, _ = tray.change()

    tray.program.kill()
    tray.laptop.charge_to(60)
    tray.item.wait_for_label('60%')
    tray.wait_until_gone(at_62)
    tray.program.start()

    tray.wait_until_looks_like(tray.picture)


def test_quit_in_the_menu_ends_the_program(tray):
    tray.choose('Quit')

    tray.vorlane.expect_clean_end()
    tray.wait_until_looks_like(tray.without, but_for=HANDLE)
