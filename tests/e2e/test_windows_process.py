"""The windows process: killed, stopped, replaced, and short of file descriptors."""
import contextlib
import os
import signal
import tomllib

import pytest

from laptop.children import children, has_ended
from laptop.desktop import POPOVER, SETTINGS, Desktop
from laptop.installation import upgrade
from laptop.vorlane import WINDOWS
from laptop.waiting import wait_until


@pytest.fixture
def desktop(laptop, screen):
    return Desktop(laptop, screen)


@pytest.fixture
def tree(desktop):
    return desktop.accessibility


@pytest.fixture
def in_panel(panel, vorlane, item):
    """Runs the program with a panel, so that the X tray does not open descriptors later."""
    panel.start()
    vorlane.start()
    item.wait_until_registered()


def open_both(desktop):
    desktop.open_settings()
    desktop.open_popover()
    assert desktop.settings()


def wait_until_no_window(desktop):
    wait_until(lambda: not desktop.popover_box() and not desktop.screen.window_titled(f'^{SETTINGS}$'),
               'the windows to disappear', look_every=0.02)


def test_a_killed_windows_process_leaves_nothing_behind_and_the_next_click_starts_another(
        laptop, desktop, dunst, in_panel, vorlane, notifications, item, tree):
    descriptors = []

    for percent in (59, 58, 57):
        item.activate()
        tree.wait_for_window(POPOVER)
        vorlane.kill_windows()
        wait_until_no_window(desktop)
        assert children(vorlane.process.pid) == []
        laptop.charge_to(percent)
        item.wait_for_label(f'{percent}%')
        vorlane.settle()
        descriptors.append(vorlane.descriptors())
    assert descriptors[1:] == descriptors[:-1]

    laptop.charge_to(20)
    assert notifications.wait_for(1).title == 'Low battery'


@pytest.mark.parametrize('title, key', [('Show time remaining', 'showTime'), ('Low battery', 'lowEnabled')])
def test_a_kill_during_a_settings_change_leaves_the_settings_intact(desktop, vorlane, tree, title, key):
    vorlane.write_settings('limit = 77\nlowSound = "Frog"\n')
    desktop.start(notifications=False)
    toggle = desktop.open_settings().find(title, 'check box')
    at_first = toggle.checked

    toggle.do('Toggle')
    vorlane.kill_windows()

    vorlane.round_trip()
    stored = tomllib.loads(vorlane.settings())
    assert (stored['limit'], stored['lowSound']) == (77, 'Frog')
    assert desktop.open_settings().wait_for(title, 'check box').checked == stored.get(key, at_first)


def test_a_stopped_windows_process_blocks_nothing_and_a_click_replaces_it(
        laptop, desktop, dunst, vorlane, notifications, item):
    desktop.start(notifications=False)
    stopped = vorlane.windows_process()
    os.kill(stopped, signal.SIGSTOP)

    laptop.charge_to(20)
    assert notifications.wait_for(1).title == 'Low battery'
    item.wait_for_label('20%')
    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')

    item.activate()
    wait_until(desktop.popover_box, 'the popover', look_every=0.05)
    assert [child.pid for child in children(vorlane.process.pid)] == [vorlane.windows_process()]
    assert vorlane.windows_process() != stopped


def test_a_click_closes_the_popover_of_a_stopped_windows_process(desktop, vorlane, item):
    vorlane.start()
    desktop.open_popover()
    os.kill(vorlane.windows_process(), signal.SIGSTOP)

    item.activate()

    vorlane.wait_until_windows_process_is_gone()
    wait_until_no_window(desktop)
    item.activate()
    desktop.accessibility.wait_for_window(POPOVER)


def test_a_windows_program_of_another_build_shows_nothing_until_the_resident_program_is_upgraded(
        laptop, desktop, dunst, vorlane, notifications, item, tmp_path):
    vorlane.install_to(tmp_path)
    vorlane.start()
    upgrade(tmp_path, [WINDOWS])

    for open_it in (item.activate, lambda: item.choose('Settings')):
        open_it()
        vorlane.round_trip()
        vorlane.wait_until_windows_process_is_gone()
    assert not desktop.popover_box() and not desktop.settings()
    laptop.charge_to(20)
    assert notifications.wait_for(1).title == 'Low battery'

    upgrade(tmp_path, ['bin/vorlane'])
    item.activate()
    desktop.accessibility.wait_for_window(POPOVER)


def test_a_truncated_windows_program_shows_nothing_and_a_repaired_one_starts_at_the_next_click(
        laptop, desktop, dunst, vorlane, notifications, item, tmp_path):
    program = vorlane.install_to(tmp_path)
    whole = program.read_bytes()
    os.truncate(program, len(whole) // 2)
    vorlane.start()
    item.activate()
    vorlane.round_trip()
    vorlane.wait_until_windows_process_is_gone()
    laptop.charge_to(20)
    assert notifications.wait_for(1).title == 'Low battery'

    program.write_bytes(whole)
    item.activate()

    desktop.accessibility.wait_for_window(POPOVER)


@pytest.mark.parametrize('spare', range(3))  # starting the windows process takes three descriptors
def test_a_click_without_free_descriptors_does_nothing_until_some_are_free(
        laptop, desktop, in_panel, vorlane, item, spare):
    # Warm up: the sanitizer opens a pipe for each object type that it meets for the first time.
    item.choose('Snooze 1 hour')
    item.choose('Cancel Snooze')
    desktop.open_popover()
    vorlane.kill_windows()

    with vorlane.without_descriptors(spare):
        item.activate()
        item.choose('Snooze 1 hour')
        item.wait_for_menu_line('Cancel Snooze')
        vorlane.wait_until_windows_process_is_gone()
        assert not desktop.popover_box()

    laptop.charge_to(59)
    item.wait_for_label('59%')
    item.activate()
    desktop.accessibility.wait_for_window(POPOVER)


def test_the_windows_process_ends_a_minute_after_its_last_window_closed(desktop, vorlane, clock, tree):
    desktop.start(notifications=False, clock=clock)
    before = vorlane.windows_process()
    desktop.open_popover()
    clock.move(61)
    assert tree.programs() == ['Vorlane']  # a query that wakes the process
    assert vorlane.windows_process() == before

    desktop.close_popover()
    clock.move(61)

    def gone():
        tree.programs()
        return not vorlane.windows_process()
    wait_until(gone, 'it to end', look_every=0.05)
    assert desktop.open_popover()


def test_quitting_closes_open_windows(laptop, desktop, vorlane):
    vorlane.start()
    open_both(desktop)
    windows = vorlane.windows_process()

    vorlane.quit()

    assert has_ended(windows)
    wait_until_no_window(desktop)


def running(_screen, vorlane, _item):
    vorlane.wait_for_windows_process()


def stopped(_screen, vorlane, _item):
    os.kill(vorlane.windows_process(), signal.SIGSTOP)


def hung(screen, vorlane, item):
    vorlane.kill_windows()
    screen.hang()
    item.activate()
    vorlane.wait_for_windows_process()


@pytest.mark.parametrize('state', [running, stopped, hung])
def test_the_windows_do_not_outlive_a_killed_resident_program(desktop, screen, vorlane, item, state):
    vorlane.start()
    desktop.open_popover()
    state(screen, vorlane, item)
    windows = vorlane.windows_process()

    process, vorlane.process = vorlane.process, None
    process.signal(signal.SIGKILL)

    wait_until(lambda: has_ended(windows), 'the windows process to end', look_every=0.02)
    screen.go_on()
    wait_until_no_window(desktop)


def test_starting_windows_do_not_outlive_a_killed_resident_program(desktop, screen, vorlane, item):
    vorlane.start()
    screen.hang()
    item.activate()
    windows = vorlane.wait_for_windows_process()
    os.kill(windows, signal.SIGSTOP)
    process, vorlane.process = vorlane.process, None
    process.signal(signal.SIGKILL)
    process.wait_for_end()

    with contextlib.suppress(ProcessLookupError):  # the process had already started and ended
        os.kill(windows, signal.SIGCONT)

    wait_until(lambda: has_ended(windows), 'the windows process to end', look_every=0.02)
    screen.go_on()


def test_assistive_programs_see_one_application(desktop, vorlane, tree):
    vorlane.start()

    open_both(desktop)

    assert tree.programs() == ['Vorlane']
    assert {window.name for window in tree.program('Vorlane').children} == {POPOVER, SETTINGS}
