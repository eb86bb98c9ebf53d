"""Files that the program cannot read or write. tests/platform/linux covers other kinds of damage."""
import os
import stat

import pytest


def test_pipes_in_place_of_files_do_not_block_it(laptop, vorlane, item):
    for path in (vorlane.history_path, vorlane.settings_path):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        os.mkfifo(path)

    vorlane.start()
    laptop.charge_to(59)
    item.wait_for_label('59%')
    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')
    vorlane.quit()

    assert [sample['p'] for sample in vorlane.history()] == [60, 59]
    assert vorlane.snooze_deadline()
    for path in (vorlane.history_path, vorlane.settings_path):
        assert stat.S_ISFIFO(os.stat(path + '.bad').st_mode)
        assert stat.S_IMODE(os.stat(path).st_mode) == 0o600


def test_a_file_size_limit_does_not_end_it(laptop, vorlane, item):
    vorlane.start()
    with vorlane.without_room():
        laptop.plug_in()
        vorlane.round_trip()
        laptop.charge_to(59)
        item.wait_for_label('59%')
        assert len(vorlane.history()) == 1

    vorlane.quit()
    assert [sample['p'] for sample in vorlane.history()][-1] == 59


@pytest.mark.parametrize('argument', ['--help', '--version'])
def test_output_that_cannot_be_written_fails_the_command(laptop, vorlane, argument):
    process = vorlane.spawn_in_shell(f'"$0" {argument} >/dev/full')

    assert process.wait_for_end() == 1
