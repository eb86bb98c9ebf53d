"""The program under test: started, controlled, and ended cleanly."""
import contextlib
import itertools
import json
import os
import pathlib
import resource
import shutil
import signal
import tomllib

import dbus

from . import preload
from .children import children
from .open_calls import OpenCalls
from .status_item import OWNER
from .waiting import wait_until

WINDOWS = 'lib/vorlane/vorlane-windows'
WINDOWS_NAME = os.path.basename(WINDOWS)
APPLICATION = 'org.freedesktop.Application'
SUPPRESSED = pathlib.Path(__file__).resolve().parents[2] / 'sanitizers'
SANITIZERS = {
    # intercept_tls_get_addr=0: the leak sanitizer keeps a wrong address of the thread-local storage
    # of libraries loaded late, and crashes on it.
    'ASAN_OPTIONS': 'abort_on_error=1:detect_leaks=1:strict_string_checks=1:intercept_tls_get_addr=0:'
                    'detect_stack_use_after_return=1:check_initialization_order=1:'
                    f'suppressions={SUPPRESSED}/address.supp',
    'LSAN_OPTIONS': f'suppressions={SUPPRESSED}/leaks.supp:print_suppressions=0',
    'UBSAN_OPTIONS': 'print_stacktrace=1:halt_on_error=1',
    'QT_FORCE_STDERR_LOGGING': '1',  # otherwise Qt logs to the journal
}


class Vorlane:
    def __init__(self, program, machine, session_bus, system_bus, testbed, wrapper=(), settles=True):
        """`wrapper` is a command that runs the program. `advance` needs `settles`."""
        self._program, self._machine, self._wrapper = program, machine, list(wrapper)
        self._bus, self._testbed = session_bus, testbed
        self._open_calls = [OpenCalls(bus) for bus in (session_bus, system_bus) if settles]
        self._clock = None
        self._before_restart = None
        self.process = None

    @property
    def settings_path(self):
        return self._machine.folder('config', 'vorlane', 'settings.toml')

    @property
    def history_path(self):
        return self._machine.folder('data', 'Vorlane', 'history.json')

    @property
    def autostart_path(self):
        return pathlib.Path(self._machine.folder('config', 'autostart', 'org.vorlane.Vorlane.desktop'))

    @property
    def has_layer_shell(self):
        """Whether it was built with LayerShellQt. The popover is then a layer surface, which sway does not list."""
        windows = pathlib.Path(self._program).parents[1] / WINDOWS
        return b'libLayerShellQtInterface' in windows.read_bytes()

    def history(self):
        """The samples of the history file; None when there is no file."""
        try:
            with open(self.history_path) as file:
                return json.load(file)
        except FileNotFoundError:
            return None

    def write_history(self, samples):
        self._machine.write(json.dumps(samples), 'data', 'Vorlane', 'history.json')

    def snooze_deadline(self):
        """The stored end of the snooze in seconds since 1970, or None."""
        return self.setting('snoozeUntil') or None

    def write_settings(self, text):
        self._machine.write(text, 'config', 'vorlane', 'settings.toml')

    def settings(self):
        with open(self.settings_path) as file:
            return file.read()

    def install_to(self, prefix):
        """Uses a copy of the program from now on; returns the path of its windows program."""
        source = pathlib.Path(self._program).resolve().parents[1]
        for name in ('bin/vorlane', WINDOWS):
            os.makedirs((prefix / name).parent)
            shutil.copy(source / name, prefix / name)
        self._program = str(prefix / 'bin/vorlane')
        return prefix / WINDOWS

    def run_by(self, wrapper):
        """Starts the program through this command from now on."""
        self._wrapper = list(wrapper)

    def setting(self, key):
        """The stored value of a setting, or None."""
        return tomllib.loads(self.settings()).get(key) if os.path.exists(self.settings_path) else None

    def wait_for_setting(self, key, value):
        wait_until(lambda: self.setting(key) == value, lambda: f'{key} = {value!r} in {self.settings()!r}',
                   look_every=0.02)

    def environment(self, clock=None):
        """Variables that the program needs in addition to the machine's environment."""
        libraries = [preload.sanitizer_of(self._program), preload.library('libumockdev-preload.so.0'),
                     clock.preloaded if clock else None]
        return {**self._testbed.environment(), **SANITIZERS, **(clock.environment() if clock else {}),
                'LD_PRELOAD': ' '.join(filter(None, libraries))}

    @staticmethod
    def with_small_quarantine():
        """Makes the sanitizer release freed memory soon, for measuring memory."""
        return {'ASAN_OPTIONS': SANITIZERS['ASAN_OPTIONS'] + ':quarantine_size_mb=1:'
                                                             'thread_local_quarantine_size_kb=64'}

    def spawn(self, clock=None, environment=None, arguments=()):
        """Starts the program and does not wait."""
        self._clock = clock
        return self._machine.start('vorlane', [*self._wrapper, self._program, *arguments],
                                   {**self.environment(clock), **(environment or {})})

    def spawn_in_shell(self, command):
        """Runs a shell command in which "$0" is the program."""
        return self._machine.start('vorlane', ['/bin/sh', '-c', command, self._program], self.environment(None))

    def start(self, clock=None, environment=None, arguments=()):
        """Starts the program and waits until it has launched."""
        self.process = self.spawn(clock, environment, arguments)
        self._bus.wait_for(OWNER, self.process)
        self.round_trip()
        return self

    def round_trip(self):
        """Returns once the program has handled every message that reached it before."""
        self._bus.round_trip()

    def advance(self, seconds):
        """Moves the program's clock, wakes the program and lets its due timers run.

        First waits for pending replies, which would otherwise time out in the moved time. The second,
        short step lets debounced work run.
        """
        for step in (seconds, 0.5):
            self.settle()
            self._clock.move(step)
            self.round_trip()
            self.round_trip()

    def settle(self):
        """Returns once the program has no call pending."""
        self.round_trip()
        while any([calls.wait_until_answered(self.process.pid) for calls in self._open_calls]):
            self.round_trip()

    def activate(self, token=None, startup_id=None):
        """Activates the program as a desktop does when it is started again; KDE sends the startup id as bytes."""
        data = {'activation-token': dbus.String(token)} if token else {}
        if startup_id:
            data['desktop-startup-id'] = dbus.ByteArray(startup_id.encode())
        self._bus.call(OWNER, '/org/vorlane/Vorlane', APPLICATION, 'Activate', 'a{sv}',
                       dbus.Dictionary(data, signature='sv'))

    def windows_process(self):
        """The id of the process that shows the windows, dead or alive; None when there is none."""
        return next((child.pid for child in children(self.process.pid) if child.name == WINDOWS_NAME), None)

    def wait_for_windows_process(self):
        return wait_until(self.windows_process, 'the windows process', look_every=0.02)

    def wait_until_windows_process_is_gone(self):
        wait_until(lambda: not self.windows_process(), 'the windows process to be reaped', look_every=0.02)

    def kill_windows(self):
        """Kills the process, as in a crash; returns once it has been reaped."""
        os.kill(self.windows_process(), signal.SIGKILL)
        self.wait_until_windows_process_is_gone()

    def descriptors(self):
        """The open file descriptors, sorted."""
        return sorted(int(name) for name in os.listdir(f'/proc/{self.process.pid}/fd'))

    @contextlib.contextmanager
    def without_descriptors(self, spare=0):
        """Within the block the program can open only `spare` more descriptors."""
        open_now = set(self.descriptors())
        unused = (number for number in itertools.count() if number not in open_now)
        limit = next(itertools.islice(unused, spare, None))
        _, hard = resource.prlimit(self.process.pid, resource.RLIMIT_NOFILE)
        resource.prlimit(self.process.pid, resource.RLIMIT_NOFILE, (limit, hard))
        yield
        resource.prlimit(self.process.pid, resource.RLIMIT_NOFILE, (hard, hard))

    @contextlib.contextmanager
    def without_room(self):
        """Within the block every write to a file fails, as on a full disk."""
        _, hard = resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE)
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (0, hard))
        yield
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (hard, hard))

    def restart_in_place(self):
        """Restarts the program as after an upgrade; returns once it has restarted."""
        self.ask_to_restart()
        self.wait_until_restarted()

    def ask_to_restart(self):
        """Requests a restart; the program may first wait for its readings to settle."""
        self._before_restart = self._bus.owner(OWNER)
        self.process.signal(signal.SIGUSR1)
        self.process.signal(signal.SIGCONT)

    def wait_until_restarted(self):
        wait_until(lambda: self._bus.owner(OWNER) not in (None, self._before_restart), 'the restart')
        self.round_trip()

    def kill(self):
        """Kills the program, without a chance to save or print."""
        self.process.kill()
        self._bus.wait_until_free(OWNER)
        self.process = None

    def quit(self, number=signal.SIGTERM):
        """Asks the program to quit, which it must do cleanly."""
        if self.process.running:
            self.process.signal(number)
        self.expect_clean_end()

    def expect_clean_end(self):
        process, self.process = self.process, None
        code = process.wait_for_end()
        assert (code, process.stdout, process.stderr) == (0, '', '')

    def wait_for_saved_percent(self, percent):
        """Waits until the newest sample in the history file has this percentage."""
        def saved():
            samples = self.history()
            return samples and samples[-1]['p'] == percent
        wait_until(saved, lambda: f'{percent}% in {os.path.basename(self.history_path)}', look_every=0.02)
