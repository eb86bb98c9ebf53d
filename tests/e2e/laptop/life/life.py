"""Simulates days of laptop use: the same events go to the real program and to a plain model of its rules.

The program's clock is moved on minute by minute and the program woken, so that its own timer fires; only the waiting is
skipped. Its reminders are compared with the model's whenever one is due, and every hour.
"""
import collections
import contextlib
import datetime
import json
import os
import re
import signal
import time
import zoneinfo

from ..laptop import Laptop
from ..notification_daemons import Dunst
from ..notifications import Notifications
from ..status_item import StatusItem
from ..vorlane import Vorlane
from ..waiting import wait_until
from ..x_screen import XScreen
from ..xfce_panel import XfcePanel
from .costs import costs, private_dirty
from .days import DAY
from .plain_rules import PlainRules, Reading
from .recorded import Recorded

ZONE = 'Europe/Berlin'
BEGIN = datetime.datetime(2026, 10, 1, tzinfo=zoneinfo.ZoneInfo(ZONE)).timestamp()  # summer time ends on the 25th
LATE = 5  # seconds after the full minute; the timer fires a few seconds later, and the events 25 seconds after that
SLACK = 5  # seconds; the timer's first minute begins this long after the first sample at most, because the history is
           # saved in between
FULL_HISTORY = 43200
POPOVER, SETTINGS = '^Vorlane$', '^Vorlane Settings$'
CLICK_PAUSE = 0.5  # seconds from a click that closes the popover to the next click; Qt would close a popover that opens
                   # before the last one has released the keyboard (0.1 s)
NEVER = 'infinity'  # no timeout: the clock moves a minute while replies are in flight


class Life:
    def __init__(self, program, days, begin_at=0, history=FULL_HISTORY, wrapper=()):
        """Begins at minute `begin_at` of the first day, with `history` samples recorded. `wrapper` is a command that runs
        the program."""
        self.days, self.minute = days, begin_at
        self.expected, self.daily, self.happened = [], [], collections.Counter()
        self.windows = {}  # private dirty bytes when the popover last opened, by process id
        self._closed = 0.0  # when the popover was closed
        self._laptop = Laptop(program)
        try:
            self._set_up(program, history, wrapper)
        except BaseException:
            self.close()
            raise

    def live(self, minutes, each_day=lambda day: None):
        """Simulates this many minutes awake."""
        for _ in range(minutes):
            reminded = len(self.expected)
            self._pass_minute()
            happening = self.days.at(self.minute)
            if happening:
                self._pass(25)
                self._apply(*happening)
                self.happened[happening[0]] += 1
            if len(self.expected) > reminded and self.days.clicks_on_reminder():
                self._open_popover_beside_reminder()
            self._account_for_real_time()
            if self.minute % 60 == 59:
                self._compare()
            if self.minute % DAY == DAY - 1:
                self._end_windows()
                self.daily.append(costs(self.pid, self._laptop.session_bus))
                each_day(len(self.daily))

    def end(self):
        """Quits the program and checks that it ends cleanly."""
        self._compare()
        self.vorlane.quit()

    def check_history(self):
        """Checks the history file against the recorded looks; returns the number of early changes (see `Recorded`)."""
        return self._recorded.check([tuple(sample[key] for key in 'tpca') for sample in self.vorlane.history()])

    def close(self):
        self._laptop.close()

    def _set_up(self, program, history, wrapper):
        machine, bus = self._laptop.machine, self._laptop.session_bus
        self._laptop.upower.start()
        self._screen = XScreen(machine)
        self._panel = XfcePanel(machine, bus)
        self._panel.start()
        self._dunst = Dunst(machine, bus).start()
        self._notifications, self._item = Notifications(bus), StatusItem(bus)
        self._clock = self._laptop.moved_clock()
        self._clock.set(BEGIN + 60 * self.minute + LATE - time.time())
        self.rules = PlainRules(ZONE)
        self._level, self._plugged, self._charging, self._health = 60.0, False, False, 90.0
        self.vorlane = Vorlane(program, machine, bus, self._laptop.system_bus, self._laptop.testbed,
                               settles=False, wrapper=wrapper)
        self._write_history(history)
        self._recorded = Recorded(self.rules.samples)
        started = self._now()
        self.vorlane.start(self._clock, {'TZ': ZONE, 'SYSTEMD_BUS_TIMEOUT': NEVER})
        self.pid = self.vorlane.process.pid
        self._look('launch', started)
        # The timer's first minute began when the first sample was taken.
        since = self._now() - self.vorlane.history()[-1]['t']
        self._origin = self._clock.monotonic() - since
        self._passed = 0  # minutes at which the timer has fired

    def _write_history(self, count):
        now = self._now()
        self.rules.samples.extend((now - 60 * (count - i), 50 + i // 240 % 2, False, False) for i in range(count))
        self.vorlane.write_history([dict(zip('tpca', sample)) for sample in self.rules.samples])

    # Time

    def _now(self):
        return self._clock.now().timestamp()

    def _until_timer(self):
        return self._origin + 60 * (self._passed + 1) - self._clock.monotonic()

    def _pass_minute(self):
        self.minute += 1
        self._drain_or_charge(1)
        self._let_timer_fire()

    def _let_timer_fire(self):
        """Moves the clock until the timer has fired, unless the timer has already fired by itself."""
        until = self._until_timer()
        due = self._now() + until
        self._pass(until + SLACK)
        self._passed += 1
        self._look('timer', due)

    def _pass(self, seconds):
        """Moves the clock and lets due timers run. The program may answer the first query within a loop turn that began
        before, and the second one in the next turn ahead of its timers; by the third reply the timers have run."""
        self._clock.move(max(seconds, 0))
        for _ in range(3):
            self.vorlane.round_trip()

    def _account_for_real_time(self):
        """Accounts for real time spent here, during which the timer may have fired by itself."""
        while self._until_timer() < SLACK:  # due, or so soon that the timer may or may not have fired
            self._let_timer_fire()

    def _look(self, reason, since):
        """Notes that the program has taken a reading, not before `since`."""
        self._recorded.note(reason, since, self._now(), self._sample())
        self._expect(reason)

    def _expect(self, reason):
        due = self.rules.look(reason, self._reading(), self._now())
        if due:
            self.expected += due
            # The post may be late: a new notification daemon is first asked for its capabilities.
            wait_until(lambda: len(self._notifications.posted) >= len(self.expected),
                       lambda: f'{due} in minute {self.minute}')
            self._compare()

    def _compare(self):
        self._notifications.titles()
        posted = [(one.title, one.body) for one in self._notifications.posted]
        assert posted == self.expected, (
            f'minute {self.minute}: {len(posted)} reminders and {len(self.expected)} expected, '
            f'the last ones {posted[-4:]} and {self.expected[-4:]}')

    # The battery

    def _sample(self):
        return int(self._level), self._charging, self._plugged

    def _reading(self):
        return Reading(int(self._level), self._plugged, self._charging, self._health)

    def _drain_or_charge(self, minutes, asleep=False):
        before = int(self._level)
        rate = (0.55 if self._plugged else -0.22) * (0.1 if asleep and not self._plugged else 1)
        self._level = min(max(self._level + rate * minutes, 5.0), 100.0)
        if self._plugged and self._level == 100.0 and self._charging:
            self._charging = False
            self._laptop.testbed.change('BAT0', announce=False, status='Full')
        percent = int(self._level)
        if percent != before:
            self._laptop.charge_silently_to(percent)

    def _read_change(self):
        since = self._now()
        self._pass_burst()
        self._look('change', since)

    def _pass_burst(self):
        """After a kernel event the program waits for the end of the burst before it takes a reading."""
        self._pass(0.1)
        self._pass(0.4)

    # What happens

    def _apply(self, name, value):
        {'plug': self._plug, 'unplug': self._unplug, 'health': self._wear, 'sleep': self._sleep,
         'snooze': self._snooze, 'cancel snooze': self._cancel_snooze, 'quiet hours': self._set_quiet_hours,
         'limit': self._set_limit, 'popover': self._open_popover, 'settings': self._open_settings,
         'panel restarts': self._restart_panel, 'notification daemon restarts': self._restart_notification_daemon,
         'upower restarts': self._restart_upower}[name](value)

    def _plug(self, _):
        self._set_cable(True)
        self._read_change()

    def _unplug(self, _):
        self._set_cable(False)
        self._read_change()

    def _set_cable(self, plugged, announce=True):
        self._plugged = self._charging = plugged
        set_cable = self._laptop.plug_in if plugged else self._laptop.unplug
        set_cable(announce=announce)

    def _wear(self, percent):
        self._health = float(percent)
        self._laptop.wear_to(percent)
        self._read_change()

    def _sleep(self, sleep):
        self._laptop.logind.say_sleep(True)
        self._pass(0)
        self._clock.sleep(60 * sleep.minutes)
        self._drain_or_charge(sleep.minutes, asleep=True)
        if sleep.moves_cable:
            self._set_cable(not self._plugged, announce=False)
        woken = self._now()
        self._laptop.logind.say_sleep(False)
        self._pass(0)
        self._live_first_seconds(woken, sleep.then)
        self.minute += sleep.minutes

    def _live_first_seconds(self, woken, then):
        """On a slow machine the program may take its wake reading before or after these actions. The reminders are the
        same either way; the samples differ."""
        at_wake = self._sample()
        self.rules.woke(self._reading())
        if 'cable' in then:
            self._set_cable(not self._plugged)
            self._pass_burst()
            self._expect('change')
        if 'click' in then:
            self._click()
            self._expect('change')
        self._pass(woken + 3.2 - self._now())
        self._expect('wake')
        until = self._now() + min(self._until_timer(), 0)
        self._recorded.note('wake', woken, until, self._sample(), earlier=[at_wake])
        if 'click' in then:
            self._close_popover()
        self.happened.update(f'{name} after wake' for name in then)

    def _snooze(self, _):
        self._item.choose('Snooze 1 hour')
        self.rules.snoozed_until = self._clock.now().timestamp() + 3600
        self._pass(0)

    def _cancel_snooze(self, _):
        snoozed = self.rules.snoozed_until > self._clock.now().timestamp()
        assert self._item.has_menu_line('Cancel Snooze') == snoozed, f'snoozed: {snoozed}'
        if snoozed:
            self._item.choose('Cancel Snooze')
            self.rules.snoozed_until = 0.0
            self._pass(0)

    def _set_quiet_hours(self, on):
        self._change_setting('quietEnabled', on)

    def _set_limit(self, percent):
        self._change_setting('limit', percent)

    def _open_popover(self, second):
        self._pass(second)
        since = self._now()
        self._click()
        self._account_for_real_time()
        self._look('change', since)
        self._close_popover()

    def _open_popover_beside_reminder(self):
        """Opening the popover must not withdraw the reminder."""
        self._notifications.titles()
        withdrawn = list(self._notifications.closed)
        self._open_popover(0)
        self._notifications.titles()
        assert self._notifications.closed == withdrawn, f'minute {self.minute}'
        self.happened['click on reminder'] += 1

    def _click(self):
        wait_until(lambda: time.monotonic() >= self._closed + CLICK_PAUSE, 'the pause between clicks', look_every=0.05)
        self._pass(0)
        self._item.activate()
        wait_until(lambda: self._screen.window_titled(POPOVER), 'the popover', look_every=0.01)
        windows = self.vorlane.windows_process()
        self.windows[windows] = private_dirty(windows)

    def _close_popover(self):
        self._item.activate()
        wait_until(lambda: not self._screen.window_titled(POPOVER), 'the popover to close', look_every=0.01)
        self._closed = time.monotonic()

    def _open_settings(self, _):
        self._item.choose('Settings')
        wait_until(lambda: self._screen.window_titled(SETTINGS), 'the settings', look_every=0.02)

        def closed():
            self._screen.press_keys('ctrl+w')
            return not self._screen.window_titled(SETTINGS)
        wait_until(closed, 'the settings to close', look_every=0.1)

    def _end_windows(self):
        """Ends the windows process, so that the costs at the end of each day are comparable."""
        process = self.vorlane.windows_process()
        if process:
            with contextlib.suppress(ProcessLookupError):  # it may have just exited
                os.kill(process, signal.SIGKILL)
        self.vorlane.wait_until_windows_process_is_gone()

    def _restart_panel(self, _):
        self._panel.kill()
        self._panel.start()
        self._item.wait_until_registered()

    def _restart_notification_daemon(self, _):
        self._dunst.kill()
        self._dunst.start()

    def _restart_upower(self, _):
        self._laptop.upower.kill()
        self._laptop.upower.start()

    def _change_setting(self, key, value):
        """Edits the file as the user would: keys written by the program are kept."""
        self.rules.settings[key] = value
        line = f'{key} = {json.dumps(value)}\n'
        text, found = re.subn(rf'^{key} = .*\n', line, self._settings_text(), flags=re.MULTILINE)
        self.vorlane.write_settings(text if found else line + text)
        self._pass(0.5)

    def _settings_text(self):
        try:
            return self.vorlane.settings()
        except FileNotFoundError:
            return ''
