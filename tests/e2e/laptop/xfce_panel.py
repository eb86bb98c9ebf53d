"""The XFCE panel at an edge of the screen, with either of its two plugins for status items."""
from .preload import library
from .status_item import WATCHER
from .waiting import wait_until

CHANNEL = '''<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p={corner};x=0;y=0"/>
      <property name="mode" type="uint" value="{mode}"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="double" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
{ids}
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
{plugins}
  </property>
</channel>
'''
STRETCH = '''    <property name="{name}" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>'''
CLOCK = '''    <property name="{name}" type="string" value="clock">
      <property name="digital-layout" type="uint" value="3"/>
      <property name="digital-time-format" type="string" value="%H:%M:%S"/>
      <property name="digital-time-font" type="string" value="DejaVu Sans 10"/>
    </property>'''
PLUGIN = '    <property name="{name}" type="string" value="{kind}"/>'
TEMPLATES = {'stretch': STRETCH, 'clock': CLOCK}
# For each edge, the corner where the panel begins and whether it is vertical.
EDGES = {'top': (6, 0), 'bottom': (8, 0), 'left': (6, 1), 'right': (2, 1)}
INDICATORS = '/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service'


class XfcePanel:
    def __init__(self, machine, bus, clock=None, plugins=('stretch', 'systray')):
        """The panel's clock follows `clock`, if given. See `start` for the plugins."""
        self._machine, self._bus, self._plugins = machine, bus, plugins
        self._environment = {**clock.environment(), 'LD_PRELOAD': clock.preloaded} if clock else {}
        self._started = []

    def start(self, plugins=None, edge='top'):
        """`systray` shows icons with tooltips, `indicator` icons with labels and menus."""
        plugins = plugins or self._plugins
        self._configure(plugins, edge)
        self._start('xfconfd', [library('xfce4/xfconf/xfconfd')], 'org.xfce.Xfconf')
        if 'indicator' in plugins:
            self._start('indicators', [INDICATORS], WATCHER)
        self._start('xfce4-panel', ['/usr/bin/xfce4-panel', '--disable-wm-check'], WATCHER, self._environment)
        wait_until(self._hosting, 'a host at the watcher', look_every=0.05)
        return self

    def kill(self):
        """Kills it, as in a crash."""
        while self._started:
            self._started.pop().kill()
        self._bus.wait_until_free(WATCHER)

    def _configure(self, plugins, edge):
        numbered = [(f'plugin-{number}', kind) for number, kind in enumerate(plugins, 1)]
        corner, mode = EDGES[edge]
        text = CHANNEL.format(
            corner=corner, mode=mode,
            ids='\n'.join(f'        <value type="int" value="{number}"/>'
                          for number in range(1, len(numbered) + 1)),
            plugins='\n'.join(TEMPLATES.get(kind, PLUGIN).format(name=name, kind=kind)
                              for name, kind in numbered))
        self._machine.write(text, 'config', 'xfce4', 'xfconf', 'xfce-perchannel-xml', 'xfce4-panel.xml')

    def _start(self, name, argv, owned, environment=None):
        process = self._machine.start(name, argv, environment)
        self._started.append(process)
        self._bus.wait_for(owned, process)

    def _hosting(self):
        return self._bus.get(WATCHER, '/StatusNotifierWatcher', WATCHER, 'IsStatusNotifierHostRegistered')
