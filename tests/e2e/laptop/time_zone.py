"""A system time zone for one program, which can change while the program runs.

Run as a script, it runs a command with a private /etc: the machine's, but with another /etc/localtime.
"""
import ctypes
import os
import pathlib
import subprocess
import sys

ZONES = '/usr/share/zoneinfo'
MS_BIND, MS_REC, MS_PRIVATE = 0x1000, 0x4000, 0x40000  # <sys/mount.h>
CLONE_NEWNS, CLONE_NEWUSER = 0x20000, 0x10000000  # <linux/sched.h>


class TimeZone:
    def __init__(self, machine, name):
        self._etc = pathlib.Path(machine.folder('etc'))
        self._machines = pathlib.Path(machine.folder('etc-of-machine'))
        for folder in (self._etc, self._machines):
            folder.mkdir()
        for entry in os.listdir('/etc'):
            if entry != 'localtime':
                (self._etc / entry).symlink_to(self._machines / entry)
        self.change_to(name)

    @property
    def wrapper(self):
        """The command prefix that runs a program in this zone."""
        return [sys.executable, __file__, str(self._etc), str(self._machines)]

    @property
    def environment(self):
        return {'TZ': None}

    def unavailable_reason(self):
        """Why this does not work here; empty if it does."""
        return subprocess.run([*self.wrapper, '/bin/true'], stderr=subprocess.PIPE, text=True).stderr

    def change_to(self, name):
        """Replaces the link atomically, as desktop settings do."""
        link = self._etc / 'localtime.next'
        link.symlink_to(f'{ZONES}/{name}')
        link.rename(self._etc / 'localtime')


def run(etc, machines, *command):
    user, group = os.getuid(), os.getgid()
    if user == 0:
        call('unshare', CLONE_NEWNS)
    else:
        call('unshare', CLONE_NEWUSER | CLONE_NEWNS)
        for name, text in (('setgroups', 'deny'), ('uid_map', f'{user} {user} 1'), ('gid_map', f'{group} {group} 1')):
            pathlib.Path('/proc/self', name).write_text(text)
    call('mount', b'none', b'/', None, MS_REC | MS_PRIVATE, None)
    for source, target in (('/etc', machines), (etc, '/etc')):
        call('mount', source.encode(), target.encode(), None, MS_BIND | MS_REC, None)
    os.execv(command[0], command)


def call(name, *arguments):
    libc = ctypes.CDLL(None, use_errno=True)
    if getattr(libc, name)(*arguments) != 0:
        sys.exit(f'{name}: {os.strerror(ctypes.get_errno())}')


if __name__ == '__main__':
    run(*sys.argv[1:])
