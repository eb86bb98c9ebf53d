"""The windows: opened, closed and placed on a real desktop; and the program without them."""
import signal
import socket

import pytest

from laptop.desktop import without_shadow
from laptop.pictures import still_picture
from laptop.waiting import wait_until
from laptop.x_screen import SIZE

WIDTH, HEIGHT = SIZE
PANEL_HEIGHT = 30
POPOVER, SETTINGS = '^Vorlane$', '^Vorlane Settings$'
POPOVER_WIDTH = 340
# The tray is at the end of the panel, and our item is the only one in it.
ITEM = (WIDTH - 16, PANEL_HEIGHT // 2)
SETTINGS_SIZE = (480, 640)


class Desk:
    """A panel with our item in it, and the pointer."""

    def __init__(self, screen, panel, vorlane, item):
        self.screen, self.item = screen, item
        panel.start()
        vorlane.start()
        item.wait_until_registered()

    def click_on_item(self):
        self.screen.click(*ITEM)

    def popover(self):
        return self.screen.window_titled(POPOVER)

    def open_popover(self):
        """Returns the popover's box."""
        return self.screen.click_until(self.popover, 'the popover', *ITEM)

    def wait_for_settings(self):
        return wait_until(lambda: self.screen.window_titled(SETTINGS), 'the settings window', look_every=0.05)

    def popover_after_a_while(self):
        """The popover's box if it is open once the screen is still."""
        still_picture(self.screen)
        return self.popover()

    def wait_until_closed(self):
        wait_until(lambda: not self.popover(), 'the popover to close', look_every=0.05)


@pytest.fixture
def desk(screen, panel, vorlane, item):
    return Desk(screen, panel, vorlane, item)


def test_a_click_on_the_item_opens_the_popover_under_the_panel(desk):
    left, top, right, bottom = desk.open_popover()

    assert PANEL_HEIGHT < top <= PANEL_HEIGHT + 8
    assert right == WIDTH - 6  # kept inside the screen
    assert POPOVER_WIDTH <= right - left <= POPOVER_WIDTH + 2
    assert bottom < HEIGHT


def test_escape_closes_the_popover(desk):
    desk.open_popover()

    desk.screen.press_keys('Escape')

    desk.wait_until_closed()


def test_a_second_click_on_the_item_closes_the_popover(desk):
    desk.open_popover()

    desk.click_on_item()

    desk.wait_until_closed()
    assert not desk.popover_after_a_while()
    desk.open_popover()


def test_the_menu_opens_the_popover_and_leaves_it_open(desk):
    desk.item.choose('Open Vorlane')
    wait_until(desk.popover, 'the popover', look_every=0.05)

    desk.item.choose('Open Vorlane')

    assert desk.popover_after_a_while()
    desk.item.activate()
    desk.wait_until_closed()


def test_a_second_start_brings_the_popover_to_the_front(laptop, dunst, desk, vorlane, notifications):
    desk.open_popover()
    laptop.charge_to(20)
    notifications.wait_for(1)
    desk.screen.wait_for_window(dunst.window_class)
    assert desk.screen.is_in_front(dunst.window_class, 'Vorlane')

    vorlane.activate()

    wait_until(lambda: desk.screen.is_in_front('Vorlane', dunst.window_class), 'the popover in front',
               look_every=0.05)
    desk.screen.press_keys('Escape')
    desk.wait_until_closed()


def test_a_press_outside_closes_the_popover(desk):
    desk.open_popover()

    desk.screen.click(200, 500)

    desk.wait_until_closed()


def test_the_settings_open_centred_and_replace_the_popover(laptop, desk):
    desk.open_popover()

    laptop.item.choose('Settings')

    left, top, right, bottom = desk.wait_for_settings()
    assert (right - left, bottom - top) == SETTINGS_SIZE
    assert abs((left + right) - WIDTH) <= 4
    desk.wait_until_closed()


def test_quitting_with_an_open_window_saves_the_history(laptop, desk, vorlane):
    desk.open_popover()
    laptop.charge_to(59)
    desk.item.wait_for_label('59%')

    vorlane.quit()

    assert vorlane.history()[-1]['p'] == 59


def test_a_session_bus_that_dies_with_a_window_and_a_reminder_open_loses_no_history(
        laptop, dunst, desk, vorlane, notifications):
    desk.open_popover()
    laptop.wear_to(79)
    notifications.wait_for(1)
    dunst.freeze()
    laptop.charge_to(20)
    wait_until(lambda: len(notifications.posted) == 2, 'the post to the frozen daemon')
    process, vorlane.process = vorlane.process, None

    laptop.session_bus.close()

    assert (process.wait_for_end(), process.stderr) == (0, '')
    assert vorlane.history()[-1]['p'] == 20


def test_a_display_that_dies_with_windows_open_loses_neither_history_nor_settings(laptop, desk, vorlane):
    desk.item.choose('Settings')
    desk.wait_for_settings()
    desk.open_popover()
    with vorlane.without_room():
        desk.item.choose('Snooze 1 hour')
        desk.item.wait_for_menu_line('Cancel Snooze')
    laptop.charge_to(59)
    desk.item.wait_for_label('59%')

    desk.screen.kill()

    vorlane.wait_until_windows_process_is_gone()
    expect_no_windows_and_a_clean_end(laptop, vorlane, desk.item)
    assert vorlane.snooze_deadline()


def expect_no_windows_and_a_clean_end(laptop, vorlane, item):
    item.activate()
    item.choose('Settings')
    laptop.charge_to(58)
    item.wait_for_label('58%')
    vorlane.wait_until_windows_process_is_gone()
    quit_despite_stderr(vorlane)
    assert vorlane.history()[-1]['p'] == 58


def quit_despite_stderr(vorlane):
    """Without checking stderr, where Qt reports the lost display."""
    process, vorlane.process = vorlane.process, None
    process.signal(signal.SIGTERM)
    assert process.wait_for_end() == 0


def test_a_display_that_hangs_does_not_hold_up_reminders(laptop, screen, vorlane, dunst, notifications, item):
    vorlane.start()
    screen.hang()
    item.activate()

    laptop.charge_to(20)
    item.wait_for_label('20%')

    screen.go_on()
    assert notifications.wait_for(1).title == 'Low battery'
    item.activate_until(lambda: screen.window_titled(POPOVER), 'the popover')


def test_reminders_go_on_while_a_window_is_open(laptop, dunst, desk, notifications):
    desk.open_popover()

    laptop.charge_to(20)

    assert notifications.wait_for(1).title == 'Low battery'
    assert desk.popover()


def test_the_windows_do_not_connect_to_the_session_manager(laptop, screen, vorlane, item):
    path = laptop.machine.folder('session-manager')
    with socket.socket(socket.AF_UNIX) as manager:
        manager.bind(path)
        manager.listen()
        manager.setblocking(False)
        vorlane.start(environment={'SESSION_MANAGER': f'local/{socket.gethostname()}:{path}'})

        item.activate()

        wait_until(lambda: screen.window_titled(POPOVER), 'the popover', look_every=0.05)
        with pytest.raises(BlockingIOError):
            manager.accept()


@pytest.fixture
def sway_desk(without_layer_shell, wayland, waybar, vorlane, item):
    """sway with a bar at the top, the program running, and the pointer on the bar."""
    waybar.start()
    vorlane.start()
    item.wait_until_registered()
    wayland.move_pointer(1000, PANEL_HEIGHT // 2)
    return wayland


def test_sway_shows_the_popover_under_its_bar_at_the_pointer(sway_desk, item):
    item.activate()

    def box_in_place():
        box = sway_desk.window_titled(POPOVER)
        panel = box and without_shadow(box)
        return panel and panel[1] == PANEL_HEIGHT + 6 and panel
    left, _, right, bottom = wait_until(box_in_place, 'the popover under the bar', look_every=0.05)
    assert abs((left + right) // 2 - 1000) <= 2
    assert bottom < HEIGHT

    item.activate()
    wait_until(lambda: not sway_desk.window_titled(POPOVER), 'the popover to close', look_every=0.05)


def test_a_compositor_that_dies_with_windows_open_loses_no_history(laptop, sway_desk, vorlane, item):
    item.choose('Settings')
    wait_until(lambda: sway_desk.window_titled(SETTINGS), 'the settings window', look_every=0.05)
    item.activate()
    wait_until(lambda: sway_desk.window_titled(POPOVER), 'the popover', look_every=0.05)
    laptop.charge_to(59)
    item.wait_for_label('59%')

    sway_desk.kill()

    vorlane.wait_until_windows_process_is_gone()
    expect_no_windows_and_a_clean_end(laptop, vorlane, item)


def expect_reminders_without_windows(laptop, item, notifications):
    for _ in range(3):
        item.activate()
    item.choose('Settings')

    laptop.charge_to(20)

    assert notifications.wait_for(1).title == 'Low battery'


def test_reminders_work_without_the_windows_program(laptop, vorlane, dunst, notifications, item, tmp_path):
    vorlane.install_to(tmp_path).unlink()
    vorlane.start()

    expect_reminders_without_windows(laptop, item, notifications)


def test_reminders_work_without_a_display(laptop, vorlane, dunst, notifications, item):
    vorlane.start(environment={'DISPLAY': None})

    expect_reminders_without_windows(laptop, item, notifications)
    vorlane.wait_until_windows_process_is_gone()


def test_reminders_work_with_an_unreachable_display(laptop, vorlane, dunst, notifications, item):
    vorlane.start(environment={'DISPLAY': ':4095'})

    expect_reminders_without_windows(laptop, item, notifications)
    quit_despite_stderr(vorlane)
