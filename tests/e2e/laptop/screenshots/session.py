"""A desktop session at twice the usual scale: wallpaper, compositor, panel, notifications, the program."""
from ..desktop import without_shadow
from ..notification_daemons import XfceNotifyd
from ..pictures import still_picture
from ..settings_portal import DARK, LIGHT, SettingsPortal
from ..virtual_laptop import VirtualLaptop
from ..x_compositor import XCompositor
from ..x_screen import XScreen
from ..xfce_panel import XfcePanel
from .habits import samples

SCALE = 2
SIZE = (1280 * SCALE, 800 * SCALE)
PANEL = 30 * SCALE
ITEM = (SIZE[0] - 62 * SCALE, PANEL // 2)
WALLS = {False: ('#8fb3c4', '#d8e2e8'), True: ('#1d3f50', '#10232d')}
# Sets the default font of the session.
FONTS = '''<?xml version="1.0"?><fontconfig><alias binding="strong">
<family>sans-serif</family><prefer><family>Inter</family></prefer></alias></fontconfig>'''
AROUND = 16 * SCALE  # width of the strip of desktop around a window in a picture
AWAY = (SIZE[0] // 2, SIZE[1] - 1)  # where the pointer is parked
RANGE, CHART = 232, 140  # distances of the range buttons and the chart from the panel's lower edge


class Session:
    def __init__(self, program, scene):
        self.laptop = VirtualLaptop(program)
        try:
            self._begin(scene)
        except BaseException:
            self.laptop.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.laptop.close()

    def _begin(self, scene):
        laptop, machine, bus = self.laptop, self.laptop.machine, self.laptop.session_bus
        clock = laptop.moved_clock()
        clock.set_time_of_day(*scene.time)
        laptop.testbed.change('BAT0', announce=False, **scene.battery)
        laptop.testbed.change('AC', announce=False, online=int(scene.plugged))
        laptop.vorlane.write_history(samples(clock.now(), int(scene.battery['capacity'])))
        laptop.upower.start()
        machine.write(FONTS, 'config', 'fontconfig', 'fonts.conf')
        machine.environment.update(GDK_SCALE=str(SCALE), QT_SCALE_FACTOR=str(SCALE))
        SettingsPortal(machine, bus, DARK if scene.dark else LIGHT)
        self.screen = XScreen(machine, size=SIZE)
        self.screen.paint_wall(*WALLS[scene.dark])
        XCompositor(machine).start()
        XfcePanel(machine, bus, clock).start(('stretch', scene.tray, 'minutes'))
        self.notifyd = XfceNotifyd(machine, bus).start()
        laptop.vorlane.start(clock)
        laptop.item.wait_until_registered()

    def open_popover(self):
        """Clicks the item, which is next to the panel's clock."""
        self.screen.click_until(lambda: self.screen.window_titled('^Vorlane$'), 'the popover', *ITEM)
        self._shown = self.screen.window_titled('^Vorlane$')
        self.screen.move_pointer(*AWAY)

    def choose_week(self):
        _, _, right, bottom = without_shadow(self._shown, SCALE)
        self.screen.click(right - 80 * SCALE, bottom - RANGE * SCALE)
        self.screen.move_pointer(*AWAY)

    def point_at_chart(self):
        left, _, _, bottom = without_shadow(self._shown, SCALE)
        self.screen.move_pointer(left + 140 * SCALE, bottom - CHART * SCALE)

    def wait_for_reminder(self):
        self.laptop.notifications.wait_for(1)
        self._shown = self.screen.wait_for_window(self.notifyd.window_class)

    def photograph(self, path):
        """Saves the top right corner of the screen with the opened window and a little of the desktop around it."""
        left, _, _, bottom = self._shown
        still_picture(self.screen).crop((left - AROUND, 0, SIZE[0], bottom + AROUND)).save(path)
