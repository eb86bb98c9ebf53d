"""The popover: what it shows, and what its controls do."""
import re
import time

import pytest

from laptop.desktop import Desktop
from laptop.waiting import wait_until

HOUR = 3600
FOOTNOTE = 'Vorlane can only remind you. It cannot stop the charger.'
DAY = 'Charge over the last 24 hours: 60% to 70%, now 60%'


def seeded_history():
    """Two samples within the last 24 hours and one before."""
    now = time.time()
    return [{'t': now - ago, 'p': percent, 'c': False, 'a': False}
            for ago, percent in ((30 * HOUR, 30), (2 * HOUR, 70), (HOUR, 65))]


@pytest.fixture(scope='module')
def shared_desktop(shared_laptop):
    shared_laptop.vorlane.write_history(seeded_history())
    return Desktop(shared_laptop).start()


@pytest.fixture
def desktop(shared_desktop):
    yield shared_desktop
    shared_desktop.tidy()


@pytest.fixture
def popover(desktop):
    return desktop.open_popover()


def test_it_shows_all_facts_about_the_battery(popover):
    assert popover.texts() == [
        'Vorlane', '60%', 'On battery, 3 h left', 'Cycle count: 123 of 1000', 'Cycle count',
        'Battery health: 90% · Fair', 'Power out: 9.0 W', '24 hours', '7 days', DAY, FOOTNOTE, 'Settings',
        'Quit']


def test_opening_it_takes_a_fresh_reading(desktop):
    desktop.laptop.charge_silently_to(59)

    popover = desktop.open_popover()

    popover.wait_for('59%')
    desktop.item.wait_for_label('59%')


def wait_for_span(popover, span):
    """Waits until the chart covers that span; checks that the button of the span is selected."""
    def shown():
        chart = next(one for one in popover.walk() if one.role == 'chart')
        return chart.name.startswith(f'Charge over the last {span}: ')
    wait_until(shown, lambda: f'{span} in {popover.texts()}', look_every=0.02)
    assert [popover.find(one).checked for one in ('24 hours', '7 days')] == [span == '24 hours',
                                                                             span == '7 days']


def test_the_range_can_be_chosen_by_pointer_and_keyboard(desktop, popover):
    desktop.click(popover, popover.find('7 days'))
    wait_for_span(popover, '7 days')
    desktop.click(popover, popover.find('24 hours'))
    wait_for_span(popover, '24 hours')

    desktop.screen.press_keys('Tab', 'Right')
    wait_for_span(popover, '7 days')
    desktop.screen.press_keys('Left')
    wait_for_span(popover, '24 hours')


def test_the_chosen_range_is_kept_across_openings(desktop, popover):
    popover.find('7 days').do('Toggle')
    wait_for_span(popover, '7 days')

    desktop.close_popover()

    popover = desktop.open_popover()
    wait_for_span(popover, '7 days')
    popover.find('24 hours').do('Toggle')
    wait_for_span(popover, '24 hours')


def test_a_snooze_is_shown_and_can_be_cancelled(desktop):
    desktop.laptop.charge_to(20)
    reminder = desktop.notifications.wait_for(1)
    desktop.screen.click_on_window(desktop.dunst.window_class)
    desktop.notifications.wait_for_action(reminder)

    popover = desktop.open_popover()
    deadline = wait_until(desktop.vorlane.snooze_deadline, 'the stored snooze', look_every=0.02)
    assert abs(deadline - time.time() - HOUR) < 60
    popover.wait_for('Alerts snoozed until ' + time.strftime('%H:%M', time.gmtime(deadline)))

    popover.find('Cancel', 'push button').press()
    popover.wait_until_gone('Cancel')
    assert not any(text.startswith('Alerts snoozed') for text in popover.texts())
    assert desktop.vorlane.snooze_deadline() is None


def test_a_battery_that_is_pulled_and_put_back_shows_at_once(desktop, popover):
    desktop.laptop.pull_battery()
    popover.wait_for('No battery found')
    assert popover.texts() == [
        'Vorlane', 'No battery found', 'This laptop does not report a battery, so Vorlane stays quiet.',
        FOOTNOTE, 'Settings', 'Quit']

    desktop.laptop.put_battery_back()
    popover.wait_for('On battery, 3 h left')
    assert popover.find('60%') and popover.find('7 days')


def test_charge_and_adapter_show_at_once(desktop, popover):
    desktop.laptop.charge_to(61)
    popover.wait_for('61%')

    desktop.laptop.plug_in(62)
    popover.wait_for('Plugged in for 1 min')
    assert popover.find('62%')
    assert any(text.startswith('Charging, ') for text in popover.texts())
    assert popover.find('Power in: 9.0 W')


def test_details_that_the_battery_does_not_report_are_left_out(desktop, popover):
    desktop.laptop.pull_battery()
    desktop.laptop.put_battery_back(cycle_count='0', energy_full_design=None, temp='305')

    popover.wait_for('Temperature: 30.5 °C')
    assert not any(re.match('Cycle count|Battery health', text) for text in popover.texts())

    desktop.laptop.pull_battery()
    popover.wait_for('No battery found')
    desktop.laptop.put_battery_back()


def test_opening_it_twenty_times_leaves_one_unchanged_window(desktop):
    at_first = count(desktop.open_popover())

    for _ in range(20):
        desktop.close_popover()
        popover = desktop.open_popover()

    assert count(popover) == at_first
    assert len(desktop.accessibility.windows('Vorlane')) == 1


def count(control):
    """The control and all its descendants, hidden or not."""
    return 1 + sum(count(child) for child in control.children)


def test_a_screen_reader_that_asks_for_an_unknown_control_leaves_no_message(laptop):
    popover = Desktop(laptop).start().open_popover()

    assert not popover.at('/org/a11y/atspi/accessible/2147483646').role
    # At the end of the test, the laptop expects that the program has printed nothing.
