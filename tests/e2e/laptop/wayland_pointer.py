"""A mouse for a headless compositor: a client of the virtual-pointer protocol (wlr, unstable v1)."""
import itertools
import socket
import struct
import time

BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}  # X button numbers to <linux/input-event-codes.h>
MANAGER = 'zwlr_virtual_pointer_manager_v1'
DISPLAY, REGISTRY, NULL = 1, 2, 0  # object ids of the connection; 0 is null
SYNC, GET_REGISTRY, BIND, CREATE_POINTER = 0, 1, 0, 0  # request numbers
MOTION_ABSOLUTE, BUTTON, FRAME = 1, 2, 4
ERROR, GLOBAL = 0, 0  # event numbers
HEADER = struct.Struct('=IHH')  # object, request or event, size including this header


class WaylandPointer:
    """Adds a pointer to the seat for as long as this object exists."""

    def __init__(self, path, size):
        """`path` is the compositor's socket, `size` that of its only screen."""
        self._size, self._ids = size, itertools.count(REGISTRY)
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(20)
        self._socket.connect(path)
        self._stream = self._socket.makefile('rb')
        self._globals = {}
        self._send(DISPLAY, GET_REGISTRY, next(self._ids))
        self._round_trip()
        manager = next(self._ids)
        name = MANAGER.encode() + b'\0'
        padded = name + b'\0' * (-len(name) % 4)
        self._send(REGISTRY, BIND, self._globals[MANAGER], len(name), padded, 1, manager)
        self._pointer = next(self._ids)
        self._send(manager, CREATE_POINTER, NULL, self._pointer)
        self._round_trip()

    def move(self, x, y):
        self._send(self._pointer, MOTION_ABSOLUTE, self._now(), x, y, *self._size)
        self._send(self._pointer, FRAME)
        self._round_trip()

    def press(self, button, down):
        self._send(self._pointer, BUTTON, self._now(), BUTTONS[button], int(down))
        self._send(self._pointer, FRAME)
        self._round_trip()

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xffffffff

    def _send(self, target, request, *arguments):
        body = b''.join(one if isinstance(one, bytes) else struct.pack('=I', one) for one in arguments)
        self._socket.sendall(HEADER.pack(target, request, HEADER.size + len(body)) + body)

    def _round_trip(self):
        """Returns once the compositor has handled all requests so far."""
        done = next(self._ids)
        self._send(DISPLAY, SYNC, done)
        source = None
        while source != done:
            source, event, size = HEADER.unpack(self._stream.read(HEADER.size))
            body = self._stream.read(size - HEADER.size)
            if (source, event) == (DISPLAY, ERROR):
                raise RuntimeError(f'the compositor reports an error: {body!r}')
            if (source, event) == (REGISTRY, GLOBAL):
                number, length = struct.unpack_from('=II', body)
                self._globals[body[8:8 + length - 1].decode()] = number
