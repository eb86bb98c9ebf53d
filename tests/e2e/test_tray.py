"""The item on particular trays; test_tray_hosts.py covers what all trays share."""
import pytest

from laptop.accessibility import ScreenReader
from laptop.mate_panel import MatePanel
from laptop.pictures import picture_that_differs, picture_with_panel, still_picture
from laptop.waiting import wait_until

PANEL_HEIGHT = 30


@pytest.fixture
def screen_reader(laptop, screen):
    return ScreenReader(laptop.machine, laptop.session_bus)


def test_the_panel_shows_the_tooltip(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    item.wait_until_registered()
    with_item, box = picture_that_differs(screen, without)

    screen.move_pointer((box[0] + box[2]) // 2, (box[1] + box[3]) // 2)

    tipped, tip_box = picture_that_differs(screen, with_item)
    pictures(tipped, 'panel-tooltip')
    assert tip_box[3] > PANEL_HEIGHT
    assert item.tooltip.startswith('On battery, ')


def test_a_screen_reader_hears_the_items_name_on_mate(laptop, vorlane, screen_reader, item):
    MatePanel(laptop.machine, laptop.session_bus).start()
    vorlane.start()
    item.wait_until_registered()

    for percent in (59, 20):
        laptop.charge_to(percent)
        screen_reader.wait_for('push button', lambda: f'Vorlane: Battery {percent}%, {item.tooltip}')


# XFCE exposes nothing else of the item to screen readers.
def test_a_screen_reader_hears_the_items_tooltip_on_xfce(laptop, vorlane, screen_reader, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    item.wait_until_registered()
    with_item, box = picture_that_differs(screen, without)

    screen.move_pointer((box[0] + box[2]) // 2, (box[1] + box[3]) // 2)

    screen_reader.wait_for('tool tip', lambda: f'{item.tooltip}\nBattery 60%')
    pictures(still_picture(screen), 'panel-tooltip-of-two-lines')


def test_the_panel_draws_another_icon_when_the_symbol_changes(laptop, vorlane, screen, panel, item, pictures):
    without = picture_with_panel(screen, panel.start)
    vorlane.start()
    before, _ = picture_that_differs(screen, without)

    laptop.plug_in()

    after, box = picture_that_differs(screen, before)
    pictures(after, 'panel-charging')
    assert 0 <= box[1] and box[3] <= PANEL_HEIGHT


def test_the_number_moves_between_icon_and_label_with_the_tray(laptop, vorlane, screen, panel, item, pictures):
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


def test_the_item_appears_on_a_panel_that_starts_late(laptop, vorlane, screen, panel, item):
    vorlane.start()
    assert not item.registered()

    panel.start()

    item.wait_until_registered()


def test_the_menu_lists_the_actions(laptop, vorlane, item):
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
