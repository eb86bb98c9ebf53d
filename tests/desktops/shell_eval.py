"""Runs JavaScript inside gnome-shell or Cinnamon, which evaluate it for whoever asks on the session bus."""
import json

from laptop.waiting import wait_until


class ShellEval:
    def __init__(self, bus, name):
        """`name` is the shell's bus name and interface, for example "org.gnome.Shell"."""
        self._bus, self._name, self._path = bus, name, '/' + name.replace('.', '/')

    def __call__(self, script):
        """The value of the script's last expression."""
        done, text = self._bus.call(self._name, self._path, self._name, 'Eval', 's', script)
        if not done:
            raise RuntimeError(f'{script}: {text}')
        return json.loads(text) if text else None

    def wait_for(self, script, description):
        return wait_until(lambda: self(script), description, look_every=0.1)
