"""Trays that embed windows (XEMBED), as in bars for plain window managers."""
from .waiting import wait_until

TINT2 = '''rounded = 0
border_width = 0
background_color = {color} 100
panel_items = S
panel_size = 100% {height}
panel_position = top center horizontal
panel_background_id = 1
panel_padding = 4 0 4
systray_padding = 4 4 4
systray_icon_size = {icon}
systray_background_id = 0
strut_policy = follow_size
'''
I3BAR = '''# i3 config file (v4)
font pango:DejaVu Sans 12
bar {{
    position top
    tray_padding 4
    status_command exec cat
    colors {{
        background {color}
        statusline {text}
    }}
}}
'''


class Tint2:
    """A bar at the top of the screen with its tray at the left end."""

    def __init__(self, machine):
        self._machine, self._process = machine, None

    def start(self, color='#222222', height=30):
        text = TINT2.format(color=color, height=height, icon=height - 8)
        path = self._machine.write(text, 'config', 'tint2', 'tint2rc')
        self._process = self._machine.start('tint2', ['/usr/bin/tint2', '-c', path])
        return self

    def kill(self):
        """Kills it, as in a crash."""
        self._process.kill()


class I3:
    """A window manager with its bar, for a screen without a window manager."""

    def __init__(self, machine):
        self._machine = machine

    def start(self, color='#222222', text='#ffffff'):
        path = self._machine.write(I3BAR.format(color=color, text=text), 'config', 'i3', 'config')
        self._machine.start('i3', ['/usr/bin/i3', '-c', path])
        return self


class TrayIcon:
    """The program's icon window in such a tray."""

    def __init__(self, screen):
        self._screen = screen

    def box(self):
        """The box of the icon; None while it is in no tray."""
        return self._screen.window_titled('^Vorlane: ')

    def wait_for(self):
        return wait_until(self.box, 'the icon in the tray', look_every=0.05)

    def wait_until_gone(self):
        wait_until(lambda: not self.box(), 'the icon to leave the tray', look_every=0.05)

    def click(self, button=1, box=None):
        left, top, right, bottom = box or self.wait_for()
        self._screen.click((left + right) // 2, (top + bottom) // 2, button)
