"""The item on real tray hosts: what the screen shows, and that it comes back with its host."""
import os

import pytest

from laptop.lxqt_panel import LxqtPanel
from laptop.waiting import wait_until

PANEL_HEIGHT = 30


@pytest.fixture
def pictures():
    """A folder for screenshots, kept for whoever wants to look."""
    folder = os.environ.get('VORLANE_SCREENSHOTS')
    if folder:
        os.makedirs(folder, exist_ok=True)

    def keep(picture, name):
        if folder:
            picture.save(os.path.join(folder, name + '.png'))
        return picture
    return keep


def still_picture(screen):
    """The screen once two pictures in a row are the same."""
    last = [screen.picture()]

    def still():
        last.append(screen.picture())
        return last[-2].difference(last[-1]) is None
    wait_until(still, 'the screen to be still', look_every=0.4)
    return last[-1]


def picture_with_panel(screen, start):
    """A still picture of the screen once the host that `start` starts has painted all of its panel."""
    empty = screen.picture()
    start()

    def painted():
        box = screen.picture().difference(empty)
        return box and box[2] - box[0] == empty.width
    wait_until(painted, 'the panel from edge to edge', look_every=0.2)
    return still_picture(screen)


def picture_that_differs(screen, from_picture):
    """A still picture of the screen after a change, and the box in which it changed."""
    wait_until(lambda: screen.picture().difference(from_picture), 'a change on the screen', look_every=0.1)
    picture = still_picture(screen)
    box = picture.difference(from_picture)
    assert box, 'the change went away again'
    return picture, box


def inside_panel(box):
    left, top, right, bottom = box
    return top >= 0 and bottom <= PANEL_HEIGHT and 12 <= right - left <= 120


def test_the_panel_shows_icon_and_tooltip(laptop, vorlane, screen, panel, item, pictures):
    without = pictures(picture_with_panel(screen, panel.start), 'panel-without')

    vorlane.start()
    item.wait_until_registered()
    with_item, box = picture_that_differs(screen, without)
    pictures(with_item, 'panel-with')
    assert inside_panel(box)

    screen.move_pointer((box[0] + box[2]) // 2, (box[1] + box[3]) // 2)
    tipped, tip_box = picture_that_differs(screen, with_item)
    pictures(tipped, 'panel-tooltip')
    assert tip_box[3] > PANEL_HEIGHT
    assert item.tooltip.startswith('On battery, ')


def test_the_panel_draws_another_icon_when_the_symbol_changes(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    before, _ = picture_that_differs(screen, without)

    laptop.plug_in()

    after, box = picture_that_differs(screen, before)
    pictures(after, 'panel-charging')
    assert 0 <= box[1] and box[3] <= PANEL_HEIGHT


def test_a_host_with_labels_shows_the_percentage(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, lambda: panel.start(('stretch', 'indicator')))

    vorlane.start()
    assert item.label == '60%'
    assert item.icon == 'vorlane-battery-50-symbolic'
    with_label, box = picture_that_differs(screen, without)
    pictures(with_label, 'indicator')

    vorlane.write_settings('showPercent = false\n')
    item.wait_for_label('')
    icon_only, icon_box = picture_that_differs(screen, with_label)
    pictures(icon_only, 'indicator-icon-only')
    label_box = icon_only.difference(without)
    assert label_box[2] - label_box[0] < box[2] - box[0]


def assert_number_drawn(picture, box, item):
    """Each pixel that the item draws opaque is on the screen as it is: nothing is scaled or blurred."""
    drawn = item.pixels(22)
    assert item.icon == '' and drawn
    assert (box[2] - box[0], box[3] - box[1]) == (22, 22)
    for (x, y), color in drawn.items():
        seen = picture.pixel(box[0] + x, box[1] + y)
        assert max(abs(a - b) for a, b in zip(seen, color)) <= 2, f'{seen} instead of {color} at {x}, {y}'


def test_the_panel_shows_the_number_in_the_icon(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    before, box = picture_that_differs(screen, without)
    pictures(before, 'panel-60')
    assert_number_drawn(before, box, item)

    laptop.charge_to(61)

    after, changed = picture_that_differs(screen, before)
    pictures(after, 'panel-61')
    assert_number_drawn(after, box, item)
    assert changed[1] > box[1] + 7, 'the same symbol'
    assert item.tooltip.startswith('On battery, ')


def test_the_number_goes_from_the_icon_with_the_setting(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    before, _ = picture_that_differs(screen, without)

    vorlane.write_settings('showPercent = false\n')

    after, _ = picture_that_differs(screen, before)
    pictures(after, 'panel-without-number')
    assert item.icon == 'vorlane-battery-50-symbolic'


def test_the_number_moves_when_the_tray_changes(laptop, vorlane, screen, panel, item, pictures):
    panel.start()
    vorlane.start()
    item.wait_until_registered()
    assert item.icon == ''

    panel.kill()
    panel.start(('stretch', 'indicator'))
    item.wait_until_registered()
    item.wait_for_icon('battery.50')
    pictures(still_picture(screen), 'switched-to-indicator')

    panel.kill()
    panel.start()
    item.wait_until_registered()
    wait_until(lambda: item.icon == '', 'the number in the icon')
    pictures(still_picture(screen), 'switched-back')


def test_waybar_shows_the_number_in_the_icon(laptop, vorlane, wayland, waybar, item, pictures):
    without = picture_with_panel(wayland, waybar.start)

    vorlane.start()
    item.wait_until_registered()

    with_item, box = picture_that_differs(wayland, without)
    pictures(with_item, 'waybar')
    assert inside_panel(box)
    assert_number_drawn(with_item, box, item)


def test_the_lxqt_panel_shows_the_number_in_the_icon(laptop, vorlane, screen, item, pictures):
    LxqtPanel(laptop.machine, laptop.session_bus).start()
    without = still_picture(screen)

    vorlane.start()
    item.wait_until_registered()

    with_item, box = picture_that_differs(screen, without)
    pictures(with_item, 'lxqt')
    assert_number_drawn(with_item, box, item)


def test_the_item_comes_back_with_the_panel(laptop, vorlane, screen, panel, item):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    item.wait_until_registered()
    _, first_box = picture_that_differs(screen, without)

    before = item.registrations()
    panel.kill()
    panel.start()

    item.wait_until_registered()
    assert item.registrations() > before
    wait_until(lambda: screen.picture().difference(without) == first_box, 'the item in its old place',
               look_every=0.1)


def test_the_item_appears_on_a_panel_that_comes_late(laptop, vorlane, screen, panel, item):
    vorlane.start()
    assert not item.registered()

    panel.start()

    item.wait_until_registered()


def test_the_menu_offers_what_there_is_to_do(laptop, vorlane, item):
    vorlane.start()

    assert item.menu_lines() == [item.tooltip, 'Open Vorlane', 'Snooze 1 hour', 'Settings', 'Quit']


def test_a_click_on_the_item_takes_a_fresh_reading(laptop, vorlane, screen, panel, item):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    item.wait_until_registered()
    _, box = picture_that_differs(screen, without)

    laptop.charge_silently_to(61)
    screen.click((box[0] + box[2]) // 2, (box[1] + box[3]) // 2)

    item.wait_for_label('61%')


def test_quit_in_the_menu_ends_the_program(laptop, vorlane, item):
    vorlane.start()

    item.choose('Quit')

    vorlane.expect_clean_end()
