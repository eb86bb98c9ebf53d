"""The story: on battery down to the low level, plugged in, up to the limit, snoozed, unplugged."""
from gi.repository import GLib

from ..testbed import BATTERY
from ..virtual_laptop import VirtualLaptop
from ..waiting import wait_until
from .desktop import Desktop
from .narrator import Narrator

PACE = 0.8  # seconds to show each step
CAPACITY = int(BATTERY['energy_full'])


def live_through(program, pictures):
    laptop = VirtualLaptop(program)
    try:
        Day(laptop, pictures).run()
    finally:
        laptop.close()


class Day:
    def __init__(self, laptop, pictures):
        self._laptop = laptop
        self._clock = laptop.moved_clock()
        self._clock.set_time_of_day(8)
        self._narrator = Narrator(self._clock)
        self._percent = 64
        self._plugged = False
        self._item_changed = False
        self._set(64, 'Discharging', 15)
        laptop.upower.start()
        self._desktop = Desktop(laptop, self._clock, pictures)
        laptop.item.on_change(self._narrate_item_soon)
        laptop.notifications.on_post(self._narrator.notification)

    def run(self):
        self._start()
        self._use_up()
        self._plug_in_and_charge()
        self._snooze()
        self._unplug()
        self._look()
        self._finish()

    def _start(self):
        self._narrator.user('starts Vorlane, on battery')
        self._narrate_reading()
        self._laptop.vorlane.start(self._clock)
        self._laptop.item.wait_until_registered()
        self._laptop.item.wait_for_label('64%')
        self._narrate_item()
        self._pause()

    def _use_up(self):
        for percent in (57, 50, 43, 36, 29, 22):
            self._step(minutes=13, percent=percent)
        self._expect_posts(0)
        self._step(minutes=4, percent=20)
        self._expect_posts(1, 'Low battery')
        self._photograph('1-low')

    def _plug_in_and_charge(self):
        self._narrator.user('closes the notification and plugs in')
        self._desktop.dismiss()
        self._laptop.notifications.wait_until_closed(self._laptop.notifications.posted[-1])
        self._plugged = True
        self._step(minutes=1, percent=20)
        self._laptop.item.wait_for_icon('battery.100.bolt')
        for percent in (32, 44, 56, 68, 79):
            self._step(minutes=12, percent=percent)
        self._expect_posts(1)
        self._step(minutes=1, percent=80)
        self._expect_posts(2, 'Charge limit reached')
        self._photograph('2-limit')

    def _snooze(self):
        self._narrator.user('presses "Snooze 1 hour" on the notification')
        shown = self._laptop.notifications.posted[-1]
        self._desktop.press_snooze()
        self._laptop.notifications.wait_for_action(shown)
        self._laptop.item.wait_for_menu_line('Cancel Snooze')
        for percent in (86, 91, 95):
            self._step(minutes=15, percent=percent)
        self._expect_posts(2)
        self._photograph('3-snoozed')
        self._step(minutes=16, percent=98)
        self._expect_posts(3, 'Charge limit reached')
        self._photograph('4-an-hour-later')

    def _unplug(self):
        self._narrator.user('unplugs')
        self._plugged = False
        self._step(minutes=1, percent=98)
        self._laptop.item.wait_for_icon('battery.100')
        for percent in (91, 85):
            self._step(minutes=13, percent=percent)
        self._expect_posts(3)
        self._photograph('5-unplugged')

    def _look(self):
        self._narrator.user('clicks the item')
        self._desktop.open_popover()
        self._photograph('6-popover')
        self._narrator.user('opens the settings')
        self._desktop.open_settings()
        self._photograph('7-settings')

    def _finish(self):
        self._narrator.user('logs out')
        self._laptop.vorlane.quit()
        samples = self._laptop.vorlane.history()
        assert samples and samples[-1]['p'] == self._percent, 'the day is missing from the history'
        hours = (samples[-1]['t'] - samples[0]['t']) / 3600
        print(f'\nAll as expected: {len(self._laptop.notifications.posted)} notifications, '
              f'{len(samples)} samples of {hours:.1f} hours in the history.')

    def _step(self, minutes, percent):
        """Lets time pass, then sets the new battery level."""
        self._clock.move(60 * minutes)
        self._percent = percent
        self._narrate_reading()
        self._set(percent, 'Charging' if self._plugged else 'Discharging', 27 if self._plugged else 15)
        self._laptop.vorlane.advance(1)
        self._laptop.item.wait_for_label(f'{percent}%')
        self._pause()

    def _set(self, percent, status, watts):
        self._laptop.testbed.change('AC', announce=False, online=int(self._plugged))
        self._laptop.testbed.change('BAT0', capacity=percent, status=status,
                                    energy_now=CAPACITY * percent // 100, power_now=watts * 1000000)

    def _narrate_reading(self):
        self._narrator.reading(self._percent, 'charging' if self._plugged else 'discharging',
                           27 if self._plugged else 15)

    def _narrate_item_soon(self):
        """Icon, label and tooltip change one after the other but are printed as one line."""
        if not self._item_changed:
            self._item_changed = True
            GLib.timeout_add(200, self._narrate_item)

    def _narrate_item(self):
        self._item_changed = False
        item = self._laptop.item
        self._narrator.item(item.icon, item.label, item.tooltip)

    def _expect_posts(self, count, title=None):
        notifications = self._laptop.notifications
        if title:
            posted = notifications.wait_for(count)
            assert posted.title == title, f'expected "{title}", but "{posted.title}" was posted'
        titles = notifications.titles()
        assert len(titles) == count, f'expected {count} notifications, not {titles}'

    def _photograph(self, name):
        self._pause()  # the panel's clock ticks once a second
        self._narrator.picture(self._desktop.photograph(name))

    @staticmethod
    def _pause():
        """Gives the reader time to follow."""
        over = []
        GLib.timeout_add(int(PACE * 1000), lambda: over.append(True))
        wait_until(lambda: over, 'the pause to end')
