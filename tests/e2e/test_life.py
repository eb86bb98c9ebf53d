"""Launching, launching twice, quitting, and being killed."""
import json
import os
import signal
import time

import pytest

from laptop.folder_events import FolderEvents
from laptop.waiting import wait_until


def test_launch_shows_the_battery_and_records_it(laptop, vorlane, item):
    vorlane.start()

    assert (item.label, item.icon) == ('60%', 'vorlane-battery-50-symbolic')
    assert item.get('Id') and item.get('Title')
    [sample] = vorlane.history()
    assert (sample['p'], sample['c'], sample['a']) == (60, False, False)


def test_a_second_start_activates_the_first_and_exits(laptop, vorlane, item):
    vorlane.start()
    laptop.charge_silently_to(61)

    second = vorlane.spawn()

    assert (second.wait_for_end(), second.stdout, second.stderr) == (0, '', '')
    item.wait_for_label('61%')
    assert vorlane.process.running


def test_a_start_right_after_a_quit_takes_over(laptop, vorlane, item):
    now = time.time()
    vorlane.write_history([{'t': now - 60 * (43200 - i), 'p': 50, 'c': False, 'a': False} for i in range(43200)])
    vorlane.start()

    first, vorlane.process = vorlane.process, vorlane.spawn_in_shell('"$0" --quit && exec "$0"')
    assert first.wait_for_end() == 0

    laptop.charge_to(59)
    item.wait_for_label('59%')
    assert vorlane.process.running


@pytest.mark.parametrize('number', [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
def test_a_termination_signal_saves_the_history(laptop, vorlane, item, number):
    vorlane.start()
    laptop.charge_to(59)
    item.wait_for_label('59%')
    assert [sample['p'] for sample in vorlane.history()] == [60]

    vorlane.quit(number)

    assert [sample['p'] for sample in vorlane.history()] == [60, 59]


def test_losing_the_session_bus_ends_the_program_with_its_history_saved(laptop, vorlane, item):
    vorlane.start()
    laptop.charge_to(59)
    item.wait_for_label('59%')

    laptop.session_bus.close()
    vorlane.expect_clean_end()

    assert [sample['p'] for sample in vorlane.history()] == [60, 59]


def test_a_session_bus_that_dies_during_a_save_leaves_the_history_intact(laptop, vorlane, clock):
    laptop.machine.write(json.dumps(month_of_samples(clock.now().timestamp())), 'data', 'Vorlane', 'history.json')
    vorlane.start()
    known = len(vorlane.history())
    folder = os.path.dirname(vorlane.history_path)
    events = FolderEvents(folder)

    laptop.plug_in()
    wait_until(lambda: events.count() >= 2, 'a save to have begun')
    vorlane.process.signal(signal.SIGSTOP)
    laptop.session_bus.close()
    vorlane.process.signal(signal.SIGCONT)
    vorlane.expect_clean_end()

    assert len(vorlane.history()) == known + 1
    assert os.listdir(folder) == ['history.json']
    events.close()


def test_without_a_session_bus_it_prints_one_line_and_fails(laptop, vorlane):
    process = vorlane.spawn(environment={'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/nonexistent'})

    assert process.wait_for_end() == 1
    assert process.stdout == ''
    [line] = process.stderr.splitlines()
    assert 'session bus' in line


def test_the_history_continues_after_a_restart(laptop, vorlane, item):
    vorlane.start()
    vorlane.quit()
    vorlane.start()

    assert [sample['p'] for sample in vorlane.history()] == [60, 60]


def test_a_malformed_history_is_backed_up(laptop, vorlane):
    malformed = '[{"t":1,"p":50,'
    laptop.machine.write(malformed, 'data', 'Vorlane', 'history.json')
    vorlane.start()

    with open(vorlane.history_path + '.bad') as file:
        assert file.read() == malformed
    assert [sample['p'] for sample in vorlane.history()] == [60]


def month_of_samples(now):
    return [{'t': now - 60.0 * minutes, 'p': 60, 'c': False, 'a': False} for minutes in range(43000, 0, -1)]


# A save causes a few events in its folder: create, writes, close, rename.
@pytest.mark.parametrize('moment', range(1, 11))
def test_a_kill_at_any_moment_of_a_save_leaves_the_history_intact(laptop, vorlane, clock, moment):
    earlier = month_of_samples(clock.now().timestamp())
    laptop.machine.write(json.dumps(earlier), 'data', 'Vorlane', 'history.json')
    vorlane.start()
    known = len(vorlane.history())
    file_before = os.stat(vorlane.history_path).st_ino
    events = FolderEvents(os.path.dirname(vorlane.history_path))

    laptop.plug_in()
    wait_until(lambda: events.count() >= moment or os.stat(vorlane.history_path).st_ino != file_before,
               'the save')
    vorlane.kill()

    assert len(vorlane.history()) in (known, known + 1)
    events.close()
    vorlane.start()
    assert len(vorlane.history()) > known
