"""Reminder sounds on a desktop whose notification daemon plays none."""
import pathlib

import pytest

from laptop.desktop import Desktop
from laptop.settings_controls import focus_picker
from laptop.speaker import Speaker


@pytest.fixture
def speaker(laptop, program):
    return Speaker(laptop.machine, pathlib.Path(program).parents[1] / 'share/sounds/vorlane/stereo').start()


def test_a_reminder_plays_its_chosen_sound(laptop, speaker, vorlane, dunst, notifications):
    vorlane.write_settings('limitSound = "Hero"\n')
    laptop.plug_in(79)
    vorlane.start()

    laptop.charge_to(80)

    assert speaker.wait_for_sound() == 'hero'
    assert notifications.wait_for(1).hints['suppress-sound'] == 1


def test_the_sound_none_is_silent(laptop, speaker, vorlane, dunst, notifications, item):
    vorlane.write_settings('limitSound = "none"\nlowSound = "Frog"\n')
    laptop.plug_in(79)
    vorlane.start()
    laptop.charge_to(80)
    notifications.wait_for(1)

    laptop.unplug()
    item.wait_for_icon('battery.75')
    laptop.charge_to(20)
    notifications.wait_for(2)

    assert speaker.wait_for_sound() == 'frog'


def test_a_reminder_is_posted_without_a_sound_server(laptop, vorlane, dunst, notifications):
    laptop.machine.environment['PULSE_SERVER'] = 'unix:' + laptop.machine.folder('nothing')
    vorlane.write_settings('limitSound = "Hero"\n')
    laptop.plug_in(79)
    vorlane.start()

    laptop.charge_to(80)

    notifications.wait_for(1)
    vorlane.quit()  # checks that nothing was printed


def test_choosing_a_sound_plays_it(laptop, speaker):
    desktop = Desktop(laptop).start()
    focus_picker(desktop, desktop.open_settings(), 'healthSound')

    desktop.screen.press_keys('End')

    assert speaker.wait_for_sound() == 'tink'
    desktop.vorlane.wait_for_setting('healthSound', 'Tink')
    desktop.close_settings()
