"""Plasma on Wayland at twice the usual scale, with the look, the time of day and the battery of one scene."""
import datetime
import subprocess

from laptop.desktop import POPOVER, SETTINGS, without_shadow
from laptop.pictures import still_picture
from laptop.waiting import wait_until
from laptop.x_screen import SIZE

from boxes import middle
from habits import samples
from lab import Lab
from plasma import PlasmaWayland

WIDTH, HEIGHT = SIZE
COLORS = {False: '/usr/share/color-schemes/BreezeLight.colors', True: '/usr/share/color-schemes/BreezeDark.colors'}
WALLS = {False: ('#8fb3c4', '#d8e2e8'), True: ('#1d3f50', '#10232d')}
WALLPAPER = '''desktops().forEach(desktop => {
    desktop.wallpaperPlugin = 'org.kde.image';
    desktop.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];
    desktop.writeConfig('Image', 'file://%s');
})'''
SHELL = 'org.kde.plasmashell'
AROUND = 16  # width of the strip of desktop around a window in a picture
AWAY = (WIDTH // 2, 2)  # where the pointer is parked
DAY = 24 * 60  # minutes


def zone_where_it_is(hour, minute):
    """A time zone in which it is that time of day now. Every program's clock shows it."""
    now = datetime.datetime.now(datetime.timezone.utc)
    ahead = (60 * (hour - now.hour) + minute - now.minute + DAY // 2) % DAY - DAY // 2
    return datetime.timezone(datetime.timedelta(minutes=ahead))


def posix_name(zone):
    """The zone as the variable TZ has it: counted westwards."""
    ahead = zone.utcoffset(None) // datetime.timedelta(minutes=1)
    return f"<LAB>{'-' if ahead > 0 else '+'}{abs(ahead) // 60}:{abs(ahead) % 60:02}"


class Scenery(PlasmaWayland):
    scale = 2
    dark = zone = None  # set by a subclass

    def start(self):
        with open(COLORS[self.dark]) as file:
            self._machine.write(file.read(), 'config', 'kdeglobals')
        self._machine.environment['TZ'] = posix_name(self.zone)
        super().start()
        self._paint_wall(*WALLS[self.dark])
        return self

    def _paint_wall(self, top, bottom):
        path = self._machine.folder('wall.png')
        subprocess.run(['convert', '-size', f'{WIDTH * self.scale}x{HEIGHT * self.scale}', f'gradient:{top}-{bottom}',
                        path], check=True)
        self._bus.call(SHELL, '/PlasmaShell', 'org.kde.PlasmaShell', 'evaluateScript', 's', WALLPAPER % path)
        wait_until(lambda: self.picture().pixel(0, 0) == tuple(bytes.fromhex(top[1:])), 'the wallpaper', look_every=0.2)


class Stage:
    def __init__(self, scene, program, logs):
        self._zone = zone_where_it_is(*scene.time)
        scenery = type('Scenery', (Scenery,), {'dark': scene.dark, 'zone': self._zone})
        self._lab = Lab(scenery, logs, program)
        self.laptop, self._desktop, self._tree = self._lab.laptop, self._lab.desktop, self._lab.accessibility
        try:
            self._begin(scene)
        except BaseException:
            self._lab.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._lab.close()

    def _begin(self, scene):
        laptop = self.laptop
        laptop.testbed.change('AC', announce=False, online=int(scene.plugged))
        laptop.testbed.change('BAT0', **scene.battery)
        laptop.vorlane.write_history(samples(datetime.datetime.now(self._zone), int(scene.battery['capacity'])))
        self._desktop.move_pointer(*AWAY)
        laptop.vorlane.start()
        wait_until(self._desktop.item_box, 'the item in the panel', look_every=0.2)

    def open_popover(self):
        self._desktop.click(*middle(self._desktop.item_box()))
        box = wait_until(lambda: self._desktop.window_titled(POPOVER), 'the popover', look_every=0.1)
        self._show(without_shadow(box), to_corner=True)
        self._desktop.move_pointer(*AWAY)

    def choose_week(self):
        self._tree.window(POPOVER).wait_for('7 days').do('Toggle')

    def point_at_chart(self):
        left, _, _, bottom = self._shown
        for x in (left + 89, left + 90):  # the chart notices only motion within the window
            self._desktop.move_pointer(x, bottom - 140)

    def open_settings(self):
        self.laptop.item.choose('Settings')
        self._show(wait_until(lambda: self._desktop.window_titled(SETTINGS), 'the settings', look_every=0.1))

    def wait_for_reminder(self):
        self._show(wait_until(self._reminder, 'the reminder', look_every=0.2).box, to_corner=True)

    def _reminder(self):
        shell = self._tree.program(self._desktop.shell_program)
        return next((one for one in shell.walk() if one.role == 'notification'), None)

    def _show(self, box, to_corner=False):
        """The picture shows this box; with `to_corner` up to the corner of the screen, with the panel."""
        left, top, right, bottom = self._shown = box
        end = (WIDTH, HEIGHT) if to_corner else (right + AROUND, bottom + AROUND)
        self._crop = left - AROUND, top - AROUND, *end

    def photograph(self, path):
        """Saves the opened window with a little of the desktop around it."""
        picture = still_picture(self._desktop)
        picture.crop([length * Scenery.scale for length in self._crop]).save(path)
