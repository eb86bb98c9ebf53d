"""The settings window: every control writes its setting and shows the stored value."""
import pytest

from laptop.desktop import Desktop
from laptop.settings_controls import (SOUNDS, STEPPERS, focus, focus_picker, operable, pickers, press,
                                      type_time)
from laptop.waiting import wait_until

TOGGLES = {
    'Charge limit': ('limitEnabled', True),
    'Repeat every 5 minutes, up to 3 times': ('repeatReminder', True),
    'Low battery': ('lowEnabled', True),
    'Plugged in too long': ('longEnabled', True),
    'Battery health below 80% (once)': ('healthEnabled', True),
    'Hold alerts during quiet hours': ('quietEnabled', False),
    'Show percentage in the tray': ('showPercent', True),
    'Show time remaining': ('showTime', False),
}
NAMES = ['Default', 'None', 'Glass', 'Ping', 'Hero', 'Submarine', 'Funk', 'Basso', 'Blow', 'Bottle', 'Frog',
         'Morse', 'Pop', 'Purr', 'Sosumi', 'Tink']


@pytest.fixture(scope='module')
def shared_desktop(shared_laptop):
    return Desktop(shared_laptop).start()


@pytest.fixture
def desktop(shared_desktop):
    yield shared_desktop
    shared_desktop.tidy()


@pytest.fixture
def window(desktop):
    return desktop.open_settings()


def test_it_opens_from_the_popover_and_replaces_it(desktop):
    popover = desktop.open_popover()

    popover.find('Settings', 'push button').press()

    desktop.accessibility.wait_for_window('Vorlane Settings')
    desktop.wait_until_popover_closed()


def test_it_is_the_same_window_each_time(desktop, window):
    focus(window.find('Show time remaining', 'check box'))
    on_screen = desktop.screen.window_ids('Vorlane Settings')
    assert len(on_screen) == 1

    desktop.open_settings()
    assert desktop.screen.window_ids('Vorlane Settings') == on_screen
    desktop.close_settings()

    # Reopening creates a new X window around the same controls.
    assert desktop.open_settings() == window
    assert len(desktop.screen.window_ids('Vorlane Settings')) == 1
    assert window.find('Show time remaining', 'check box').focused


def test_opening_it_restores_it_when_minimized(desktop, window):
    desktop.screen.minimize(desktop.screen.window_ids('Vorlane Settings')[0])
    wait_until(lambda: not desktop.screen.window_titled('Vorlane Settings'), 'the window to disappear',
               look_every=0.02)

    desktop.open_settings()

    wait_until(lambda: desktop.screen.window_titled('Vorlane Settings'), 'the window', look_every=0.02)


def test_every_toggle_writes_its_setting(desktop, window):
    for title, (key, at_first) in TOGGLES.items():
        toggle = window.find(title, 'check box')
        assert toggle.checked == at_first, title

        toggle.do('Toggle')
        desktop.vorlane.wait_for_setting(key, not at_first)
        press(desktop, toggle, 'space')
        desktop.vorlane.wait_for_setting(key, at_first)
        wait_until(lambda: toggle.checked == at_first, title, look_every=0.02)  # the first change may show late


def test_every_stepper_stays_within_its_range(desktop, window):
    for key, (title, at_first, least, most) in STEPPERS.items():
        control = window.find(title.format(at_first), 'spin box')

        control.do('Increase')
        desktop.vorlane.wait_for_setting(key, at_first + 1)
        window.wait_for(title.format(at_first + 1), 'spin box')
        control.value = most + 7
        desktop.vorlane.wait_for_setting(key, most)
        press(desktop, control, 'Up', 'Page_Up', 'plus')
        press(desktop, control, 'Down', 'Up')
        desktop.vorlane.wait_for_setting(key, most)

        press(desktop, control, 'Home')
        desktop.vorlane.wait_for_setting(key, least)
        press(desktop, control, 'Down', 'Page_Down', 'minus')
        press(desktop, control, 'Up')
        desktop.vorlane.wait_for_setting(key, least + 1)
        assert window.wait_for(title.format(least + 1), 'spin box').value == least + 1


def test_every_picker_writes_its_sound(desktop, window):
    assert [picker.name for picker in pickers(window)] == ['Default'] * 4

    for key in SOUNDS:
        picker = focus_picker(desktop, window, key)
        desktop.screen.press_keys('Down')
        desktop.vorlane.wait_for_setting(key, 'none')
        assert picker.name == 'None'


def test_the_pickers_list_opens_with_the_sounds_in_order(desktop, window):
    picker = focus_picker(desktop, window, 'limitSound')
    entries = [entry.name for child in picker.children for entry in child.children]
    assert entries == [*NAMES[:2], '', *NAMES[2:]]

    picker.do('Press')
    wait_until(lambda: any(child.showing for child in picker.children), 'the list', look_every=0.02)
    desktop.screen.press_keys('End', 'Return')

    desktop.vorlane.wait_for_setting('limitSound', 'Tink')
    assert picker.name == 'Tink'


def test_times_can_be_typed(desktop, window):
    window.find('Hold alerts during quiet hours', 'check box').do('Toggle')
    start, end = window.find('From', 'spin box'), window.find('Until', 'spin box')
    wait_until(lambda: start.enabled and end.enabled, 'the time fields to be enabled', look_every=0.02)
    assert (start.text, end.text) == ('22:00', '07:00')

    type_time(desktop, end, '0630')
    desktop.vorlane.wait_for_setting('quietEnd', 390)
    type_time(desktop, start, '2315')
    desktop.vorlane.wait_for_setting('quietStart', 23 * 60 + 15)

    assert (start.text, end.text) == ('23:15', '06:30')


def test_times_can_be_typed_in_12_and_24_hour_form(laptop):
    desktop = Desktop(laptop).start(environment=laptop.machine.locale('en_US'))
    window = desktop.open_settings()
    window.find('Hold alerts during quiet hours', 'check box').do('Toggle')
    start = window.find('From', 'spin box')
    wait_until(lambda: start.enabled, 'the time field to be enabled', look_every=0.02)
    assert start.text.split() == ['10:00', 'PM']

    type_time(desktop, start, ['9', 'colon', '3', '0', 'space', 'P', 'M'])
    desktop.vorlane.wait_for_setting('quietStart', 21 * 60 + 30)
    assert start.text.split() == ['9:30', 'PM']

    type_time(desktop, start, ['0', 'colon', '4', '5'])
    desktop.vorlane.wait_for_setting('quietStart', 45)
    assert start.text.split() == ['12:45', 'AM']

    press(desktop, start, *'soon')
    wait_until(lambda: start.text == 'soon', 'the typed word', look_every=0.02)
    desktop.screen.press_keys('Return')
    wait_until(lambda: start.text.split() == ['12:45', 'AM'], 'the old time', look_every=0.02)


def test_controls_of_a_disabled_alert_keep_their_values(desktop, window):
    desktop.vorlane.write_settings('limit = 77\nlimitSound = "Frog"\nrepeatReminder = false\n')
    limit = window.wait_for('Alert when charging reaches 77%', 'spin box')
    dependent = [limit, window.find('Repeat every 5 minutes, up to 3 times', 'check box'), pickers(window)[0]]

    window.find('Charge limit', 'check box').do('Toggle')
    wait_until(lambda: not any(control.enabled for control in dependent), 'the limit to be disabled',
               look_every=0.02)
    limit.do('Increase')
    limit.value = 60
    focus(window.find('Charge limit', 'check box'))  # scrolls it into view
    desktop.click(window, dependent[1])
    window.find('Charge limit', 'check box').do('Toggle')
    wait_until(lambda: all(control.enabled for control in dependent), 'the limit to be enabled',
               look_every=0.02)

    assert (limit.value, dependent[1].checked, dependent[2].name) == (77, False, 'Frog')
    assert [desktop.vorlane.setting(key) for key in ('limit', 'limitSound', 'repeatReminder')] == [
        77, 'Frog', False]


def test_each_alert_switches_off_its_own_controls(desktop, window):
    enabled = {control.name for control in operable(window) if control.enabled}

    for title in ('Low battery', 'Plugged in too long', 'Battery health below 80% (once)'):
        window.find(title, 'check box').do('Toggle')

    def lost():
        return enabled - {control.name for control in operable(window) if control.enabled}
    gone = {'Alert on battery at 20% or less', 'Alert after 8 h plugged in above the charge limit'}
    wait_until(lambda: lost() == gone, lambda: f'{gone} to be disabled; {lost()} are', look_every=0.02)
    assert [picker.enabled for picker in pickers(window)] == [True, False, False, False]


def test_tab_follows_the_reading_order(desktop, window):
    window.find('Hold alerts during quiet hours', 'check box').do('Toggle')
    wait_until(lambda: window.find('Until', 'spin box').enabled, 'the times', look_every=0.02)
    in_reading_order = operable(window)
    focus(in_reading_order[0])

    for control in in_reading_order[1:] + in_reading_order[:1]:
        desktop.screen.press_keys('Tab')
        wait_until(lambda: control.focused, lambda: f'the focus on {control}, not on '
                   f'{[one for one in in_reading_order if one.focused]}', patience=5, look_every=0.01)


def test_an_external_change_shows_at_once(desktop, window):
    desktop.vorlane.write_settings('low = 33\nhealthEnabled = false\nlowSound = "Purr"\nquietEnd = 61\n')

    window.wait_for('Alert on battery at 33% or less', 'spin box')
    assert not window.find('Battery health below 80% (once)', 'check box').checked
    assert pickers(window)[1].name == 'Purr'
    assert window.find('Until', 'spin box').text == '01:01'
