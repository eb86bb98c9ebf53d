"""Counts the events in a folder, straight from inotify as they happen."""
import ctypes
import os
import struct

from gi.repository import GLib

IN_CREATE, IN_MODIFY, IN_CLOSE_WRITE, IN_MOVE = 0x100, 0x2, 0x8, 0xC0  # <sys/inotify.h>
HEADER = struct.Struct('iIII')
libc = ctypes.CDLL(None, use_errno=True)


class FolderEvents:
    def __init__(self, folder):
        self._fd = libc.inotify_init1(os.O_NONBLOCK | os.O_CLOEXEC)
        watch = libc.inotify_add_watch(self._fd, os.fsencode(folder),
                                       IN_CREATE | IN_MODIFY | IN_CLOSE_WRITE | IN_MOVE)
        if watch < 0:
            raise OSError(ctypes.get_errno(), 'inotify_add_watch', folder)
        self._count = 0
        self._source = GLib.unix_fd_add_full(GLib.PRIORITY_HIGH, self._fd, GLib.IOCondition.IN, self._read)

    def count(self):
        """The number of events so far."""
        self._read()
        return self._count

    def close(self):
        GLib.source_remove(self._source)
        os.close(self._fd)

    def _read(self, *_):
        try:
            data = os.read(self._fd, 65536)
        except BlockingIOError:
            return GLib.SOURCE_CONTINUE
        while data:
            _, _, _, length = HEADER.unpack_from(data)
            self._count += 1
            data = data[HEADER.size + length:]
        return GLib.SOURCE_CONTINUE
