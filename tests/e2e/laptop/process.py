"""A child process whose output is kept in files."""
import ctypes
import os
import signal
import subprocess

from gi.repository import GLib

from .waiting import NeverHappened, wait_until


PR_SET_PDEATHSIG = 1  # <sys/prctl.h>
libc = ctypes.CDLL(None)


class Process:
    def __init__(self, name, argv, environment, folder, **options):
        self.name = name
        self._out = os.path.join(folder, name + '.out')
        self._err = os.path.join(folder, name + '.err')
        with open(self._out, 'ab') as out, open(self._err, 'ab') as err:
            self._child = subprocess.Popen(argv, env=environment, stdin=subprocess.DEVNULL, stdout=out,
                                           stderr=err, start_new_session=True,
                                           preexec_fn=_end_with_parent, **options)
        self._end_fd = os.pidfd_open(self._child.pid)
        self._watch = GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, self._end_fd, GLib.IOCondition.IN,
                                            self._ended)

    @property
    def pid(self):
        return self._child.pid

    @property
    def code(self):
        """The exit code, negative for a signal; None while the process runs."""
        return self._child.poll()

    @property
    def running(self):
        return self.code is None

    @property
    def output_path(self):
        return self._out

    @property
    def stdout(self):
        return _text(self._out)

    @property
    def stderr(self):
        return _text(self._err)

    def signal(self, number):
        self._child.send_signal(number)

    def wait_for_end(self):
        wait_until(lambda: not self.running, f'{self.name} to end')
        return self.code

    def kill(self):
        """Kills the process and its whole session, and reaps it."""
        self._signal_session(signal.SIGKILL)
        self._child.wait()
        self._forget()

    def end(self):
        """Terminates the process; kills it if it does not end."""
        if self.running:
            self._signal_session(signal.SIGCONT)
            self._child.terminate()
            try:
                wait_until(lambda: not self.running, self.name, patience=5)
            except NeverHappened:
                pass
        self.kill()

    def _signal_session(self, number):
        try:
            os.killpg(self._child.pid, number)
        except ProcessLookupError:
            pass

    def _ended(self, *_):
        self._watch = None
        return GLib.SOURCE_REMOVE

    def _forget(self):
        if self._watch is not None:
            GLib.source_remove(self._watch)
            self._watch = None
        if self._end_fd is not None:
            os.close(self._end_fd)
            self._end_fd = None


def _end_with_parent():
    """Makes the kernel terminate the child when the tests end."""
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


def _text(path):
    with open(path, errors='replace') as file:
        return file.read()
