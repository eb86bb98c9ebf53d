"""What is played on every desktop, step by step. Each step asserts what the buses, the shell and the windows say,
and leaves a picture.
"""
from laptop.desktop import POPOVER, SETTINGS, without_shadow
from laptop.notification_servers import SNOOZE
from laptop.pictures import picture_that_differs, still_picture
from laptop.waiting import wait_until

from boxes import beside, middle

WALLPAPER = 400, 300  # a point without panel or windows
# Lines of the toolkit and its plugins: the shell that is killed is the compositor; Plasma's theme tries OpenGL.
NOT_OURS = ('Did the Wayland compositor die?', 'neither GLX nor EGL are enabled', 'fallback to QtQuick software backend')


class Scenario:
    """`STEPS` in their order; each begins with the program running and no window open."""

    def __init__(self, lab):
        self.lab, self.laptop, self.desktop = lab, lab.laptop, lab.desktop
        self.item, self.vorlane, self.notifications = lab.laptop.item, lab.laptop.vorlane, lab.laptop.notifications

    def item_appears(self):
        self.desktop.move_pointer(*WALLPAPER)
        self.vorlane.start()
        self.item.wait_until_registered()
        wait_until(self.desktop.item_box, 'the item in the panel', look_every=0.2)
        self.lab.photograph('item')

        assert self.item.registrations() == 1
        assert (self.item.get('Category'), self.item.get('Status')) == ('Hardware', 'Active')
        if self.desktop.shows_label:
            self._wait_for_shown_label('60%')

    def number_follows_the_battery(self):
        box = self.desktop.item_box()
        before = still_picture(self.desktop).crop(box)
        self.laptop.charge_to(62)
        self.item.wait_for_label('62%')
        wait_until(lambda: self.desktop.picture().crop(box).difference(before), 'a change of the item', look_every=0.2)
        self.lab.photograph('number')

        if self.desktop.shows_label:
            self._wait_for_shown_label('62%')
        else:
            assert self.item.get('IconPixmap')
            assert self.item.icon == ('vorlane-battery-50-number-62-symbolic' if self.desktop.recolors_icons else '')

    def clicks_open_and_close_the_popover(self):
        self.laptop.charge_to(62)
        self.item.wait_for_label('62%')
        self._open_popover_by_clicking()
        self.lab.photograph('popover')

        assert '62%' in self.lab.accessibility.wait_for_window(POPOVER).texts()
        box = self._popover()
        self._click_item()
        self._wait_for_no_popover()
        self.lab.photograph('popover-closed')
        if self.desktop.places_popover:
            assert beside(without_shadow(box), self.desktop.item_box()), f'{box} beside {self.desktop.item_box()}'

    def click_outside_or_escape_closes_the_popover(self):
        self._open_popover_by_clicking()
        if self.desktop.wallpaper_takes_focus:
            self.desktop.click(*WALLPAPER)
        else:
            self.desktop.press_keys('Escape')
        self._wait_for_no_popover()

    def menu_opens_the_popover(self):
        before = still_picture(self.desktop)
        self.desktop.click(*middle(self.desktop.item_box()), self.desktop.menu_button)
        _, (left, top, right, bottom) = picture_that_differs(self.desktop, before)
        self.lab.photograph('menu')

        assert bottom - top > 80 and right - left > 80
        lines = self.item.menu_lines()
        if self.desktop.tells_menu:
            assert self.desktop.menu_lines() == lines
        self.desktop.choose('Open Vorlane', lines)
        wait_until(self._popover, 'the popover', look_every=0.1)
        self.desktop.press_keys('Escape')
        self._wait_for_no_popover()

    def menu_opens_the_settings(self):
        before = still_picture(self.desktop)
        self.item.choose('Settings')
        settings = self.lab.accessibility.wait_for_window(SETTINGS)
        wait_until(lambda: self.desktop.window_titled(SETTINGS), 'the settings', look_every=0.1)
        picture_that_differs(self.desktop, before)
        self.lab.photograph('settings')

        assert len(settings.texts()) > 10
        self.desktop.close_window(SETTINGS)
        self.lab.accessibility.wait_until_gone(SETTINGS)

    def reminder_is_shown_and_withdrawn(self):
        reminder = self._reach_the_limit()
        self.lab.photograph('reminder')

        assert 'SNOOZE' in reminder.actions
        self.laptop.unplug(81)
        self.notifications.wait_until_closed(reminder)
        wait_until(lambda: not self._shown(reminder.title), 'the reminder to vanish', look_every=0.2)
        self.lab.photograph('withdrawn')

    def button_snoozes(self):
        reminder = self._reach_the_limit()
        self.desktop.point_at_reminder(self._shown(reminder.title))
        wait_until(lambda: self._shown(SNOOZE), f'a button {SNOOZE!r}', look_every=0.2)
        self.desktop.press(self._shown(SNOOZE))
        self.notifications.wait_for_action(reminder)
        self.item.wait_for_menu_line('Cancel Snooze')
        still_picture(self.desktop)
        self.lab.photograph('snoozed')

        assert self.vorlane.snooze_deadline()
        self.item.choose('Cancel Snooze')
        self.item.wait_for_menu_line(SNOOZE)

    def item_outlives_the_shell(self):
        self.desktop.kill_shell()
        self.laptop.charge_to(77)
        self.desktop.start_shell()
        self.item.wait_until_registered()
        wait_until(self.desktop.item_box, 'the item in the new panel', look_every=0.2)
        still_picture(self.desktop)
        self.lab.photograph('restarted')

        assert self.item.registrations() == 1
        if self.desktop.shows_label:
            self._wait_for_shown_label('77%')
        self._open_popover_by_clicking()
        self._click_item()
        self._wait_for_no_popover()

    def quitting_removes_the_item(self):
        process, self.vorlane.process = self.vorlane.process, None
        self.item.choose('Quit')

        assert process.wait_for_end() == 0
        wait_until(lambda: not self.desktop.item_box(), 'the item to vanish', look_every=0.2)
        self.lab.photograph('quit')

    def nothing_was_printed(self):
        lines = {line for process in self.laptop.machine.processes if process.name == 'vorlane'
                 for line in process.stderr.splitlines() if not any(known in line for known in NOT_OURS)}

        assert not lines, '\n'.join(sorted(lines))

    STEPS = (item_appears, number_follows_the_battery, clicks_open_and_close_the_popover,
             click_outside_or_escape_closes_the_popover, menu_opens_the_popover, menu_opens_the_settings,
             reminder_is_shown_and_withdrawn, button_snoozes, item_outlives_the_shell, quitting_removes_the_item,
             nothing_was_printed)

    def _wait_for_shown_label(self, label):
        wait_until(lambda: self.desktop.shown_label() == label,
                   lambda: f'{label} in the panel, which shows {self.desktop.shown_label()!r}', look_every=0.2)

    def _click_item(self):
        self.desktop.click(*middle(self.desktop.item_box()), times=self.desktop.clicks)

    def _open_popover_by_clicking(self):
        self._click_item()
        wait_until(self._popover, 'the popover', look_every=0.1)
        still_picture(self.desktop)

    def _popover(self):
        return self.desktop.window_titled(POPOVER)

    def _wait_for_no_popover(self):
        wait_until(lambda: not self._popover(), 'the popover to close', look_every=0.1)

    def _reach_the_limit(self):
        """Returns the new reminder once the shell shows it."""
        known = len(self.notifications.posted)
        self.laptop.plug_in(81)
        reminder = self.notifications.wait_for(known + 1)
        wait_until(lambda: self._shown(reminder.title), f'{reminder.title!r} on the screen', look_every=0.2)
        return reminder

    def _shown(self, text):
        """The control of the shell with that text, or None."""
        shell = self.lab.accessibility.program(self.desktop.shell_program)
        return shell and shell.find(text)
