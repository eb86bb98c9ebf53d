"""The user's own edits to the settings file."""
import os
import subprocess


def test_an_edit_with_sed_takes_effect(laptop, vorlane, item):
    vorlane.write_settings('# mine\nshowPercent = true\n')
    vorlane.start()
    assert item.label == '60%'

    subprocess.run(['sed', '-i', 's/true/false/', vorlane.settings_path], check=True)
    item.wait_for_label('')
    subprocess.run(['sed', '-i', 's/false/true/', vorlane.settings_path], check=True)
    item.wait_for_label('60%')


def test_an_edit_by_rename_takes_effect(laptop, vorlane, item):
    vorlane.write_settings('showPercent = true\n')
    vorlane.start()

    for value, label in (('false', ''), ('true', '60%')):
        draft = vorlane.settings_path + '~'
        with open(draft, 'w') as file:
            file.write(f'showPercent = {value}\n')
        os.rename(draft, vorlane.settings_path)
        item.wait_for_label(label)


def test_a_file_created_later_is_read(laptop, vorlane, item):
    vorlane.start()
    assert item.label == '60%'

    vorlane.write_settings('showPercent = false\n')
    item.wait_for_label('')

    os.unlink(vorlane.settings_path)
    item.wait_for_label('60%')


def test_the_time_is_shown_when_enabled(laptop, vorlane, item):
    vorlane.write_settings('showTime = true\n')
    vorlane.start()

    # 27 Wh at 9 W.
    item.wait_for_label('60% · 3:00')


def test_unknown_keys_survive_a_write(laptop, vorlane, item):
    vorlane.write_settings('low = 15\nfuture = "kept"\n')
    vorlane.start()

    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')

    settings = vorlane.settings()
    assert 'future = ' in settings and 'kept' in settings
    assert 'low = 15' in settings
    assert 'snoozeUntil' in settings


def test_a_malformed_file_is_backed_up_before_the_first_write(laptop, vorlane, item):
    malformed = 'showPercent = = false\n'
    vorlane.write_settings(malformed)
    vorlane.start()
    assert item.label == '60%'
    assert vorlane.settings() == malformed

    item.choose('Snooze 1 hour')
    item.wait_for_menu_line('Cancel Snooze')

    with open(vorlane.settings_path + '.bad') as file:
        assert file.read() == malformed
    assert 'snoozeUntil' in vorlane.settings()
