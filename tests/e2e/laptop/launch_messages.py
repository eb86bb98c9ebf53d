"""Reads the startup notification messages, by which programs end the launch feedback on X11."""
import ctypes

PROPERTY_CHANGE_MASK, CLIENT_MESSAGE = 1 << 22, 33


class ClientMessage(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('sent', ctypes.c_int),
                ('display', ctypes.c_void_p), ('window', ctypes.c_ulong), ('kind', ctypes.c_ulong),
                ('format', ctypes.c_int), ('data', ctypes.c_long * 5), ('rest', ctypes.c_long * 24)]


class LaunchMessages:
    """The messages sent to the root window since this object was created."""

    def __init__(self, machine):
        self._x = x = ctypes.CDLL('libX11.so.6')
        x.XOpenDisplay.restype = ctypes.c_void_p
        x.XDefaultRootWindow.restype = x.XInternAtom.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(x.XOpenDisplay(machine.environment['DISPLAY'].encode()))
        root = ctypes.c_ulong(x.XDefaultRootWindow(self._display))
        self._begin = x.XInternAtom(self._display, b'_NET_STARTUP_INFO_BEGIN', False)
        self._next = x.XInternAtom(self._display, b'_NET_STARTUP_INFO', False)
        x.XSelectInput(self._display, root, ctypes.c_long(PROPERTY_CHANGE_MASK))
        x.XSync(self._display, False)
        self._texts = {}  # by window

    def texts(self):
        event = ClientMessage()
        while self._x.XPending(self._display):
            self._x.XNextEvent(self._display, ctypes.byref(event))
            if event.type != CLIENT_MESSAGE or event.kind not in (self._begin, self._next):
                continue
            if event.kind == self._begin:
                self._texts.setdefault(event.window, []).append(b'')
            self._texts[event.window][-1] += bytes(event.data)[:20]
        return [text.split(b'\0')[0].decode() for texts in self._texts.values() for text in texts]
