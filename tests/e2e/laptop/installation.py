"""The installed program, started by the desktop through its desktop and service files."""
import os
import pathlib
import re
import shutil
import signal
import subprocess

from .status_item import OWNER
from .vorlane import WINDOWS
from .waiting import wait_until

PACKAGED = '/usr/bin/vorlane'
DESKTOP_FILE = f'{OWNER}.desktop'


def installed(program, folder):
    """The path of the installed program; a build tree is first installed into the folder."""
    tree = pathlib.Path(program).resolve().parents[1]
    if not (tree / 'cmake_install.cmake').exists():
        return program
    prefix = folder / 'usr'
    subprocess.run(['cmake', '--install', tree, '--prefix', prefix], check=True, stdout=subprocess.DEVNULL)
    return str(prefix / 'bin/vorlane')


class Installation:
    def __init__(self, program, laptop):
        """Makes the program activatable on the session bus."""
        self.program, self._laptop = program, laptop
        self.share = pathlib.Path(program).parents[1] / 'share'
        self._process = None
        self._keep_elsewhere('applications', DESKTOP_FILE)
        laptop.session_bus.install(OWNER, self._text('dbus-1/services', f'{OWNER}.service'))

    def launch(self):
        """Launches the desktop file, as an application menu does."""
        self._let_the_bus_start_it()
        subprocess.run(['/usr/bin/gtk-launch', OWNER], env=self._laptop.machine.environment, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60)
        return self._adopt()

    def choose(self, action):
        """Activates one of the desktop file's actions."""
        self._let_the_bus_start_it()
        self._laptop.session_bus.call(OWNER, '/org/vorlane/Vorlane', 'org.freedesktop.Application',
                                      'ActivateAction', 'sava{sv}', action, [], {})
        return self._adopt()

    def quit(self):
        """Ends the program that the bus started; it must not have printed anything."""
        os.kill(self._laptop.session_bus.pid_of(OWNER), signal.SIGTERM)
        self.wait_for_end()

    def wait_for_end(self):
        self._laptop.session_bus.wait_until_free(OWNER)
        wait_until(lambda: not os.path.exists(f'/proc/{self._process}'), 'the program to end',
                   look_every=0.02)
        assert self._laptop.session_bus.complaints() == []

    def _adopt(self):
        self._laptop.session_bus.wait_for(OWNER)
        self._process = self._laptop.session_bus.pid_of(OWNER)
        assert os.readlink(f'/proc/{self._process}/exe') == os.path.realpath(self.program)
        return self._process

    def _let_the_bus_start_it(self):
        self._laptop.session_bus.set_environment(
            {**self._laptop.machine.environment, **self._laptop.vorlane.environment()})

    def _keep_elsewhere(self, folder, name):
        """Corrects the program's path in the files of a package that was only unpacked."""
        text = self._text(folder, name)
        if text != (self.share / folder / name).read_text():
            self._laptop.machine.write(text, 'data', folder, name)

    def _text(self, folder, name):
        text = (self.share / folder / name).read_text()
        return text.replace(PACKAGED, self.program) if self.program not in text else text


def upgrade(prefix, names=(WINDOWS, 'bin/vorlane')):
    """Atomically replaces each program in the folder by one of another build."""
    for name in names:
        file = prefix / name
        content = file.read_bytes()
        # The name of the build, which must be the same in both programs.
        [build] = set(re.findall(rb'vorlane-ui-build-([0-9a-f]{32})', content))
        fresh = file.with_name(file.name + '.new')
        # Keep the last digit: the linker may share it with a shorter string, such as the key "a".
        fresh.write_bytes(content.replace(build, build[-2::-1] + build[-1:]))
        shutil.copymode(file, fresh)
        fresh.rename(file)
