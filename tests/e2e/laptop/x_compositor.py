"""A compositing manager for an X screen: it blends translucent windows with what is behind them."""
import ctypes

from .waiting import wait_until


class XCompositor:
    def __init__(self, machine):
        self._machine, self._process = machine, None

    def start(self):
        self._process = self._machine.start('compositor', ['/usr/bin/xcompmgr'])
        wait_until(self._owns_selection, 'a compositing manager', look_every=0.02)
        return self

    def stop(self):
        self._process.kill()
        wait_until(lambda: not self._owns_selection(), 'the compositing manager to go', look_every=0.02)

    def _owns_selection(self):
        """Whether a compositing manager owns the selection by which programs detect it."""
        x = ctypes.CDLL('libX11.so.6')
        x.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(x.XOpenDisplay(self._machine.environment['DISPLAY'].encode()))
        selection = x.XInternAtom(display, b'_NET_WM_CM_S0', False)
        x.XGetSelectionOwner.restype = ctypes.c_ulong
        owner = x.XGetSelectionOwner(display, ctypes.c_ulong(selection))
        x.XCloseDisplay(display)
        return owner != 0
