"""A virtual laptop with a whole desktop in it. Runs inside the folder of that desktop, as an ordinary user."""
import glob
import os
import shutil

from laptop.accessibility import Accessibility
from laptop.pictures import still_picture
from laptop.virtual_laptop import VirtualLaptop
from laptop.waiting import wait_until

SERVICES = '/usr/share/dbus-1/services/*.service'
LEFT_OUT = {'org.freedesktop.portal.Documents.service',  # mounts a file system
            'org.vorlane.Vorlane.service'}  # the scenario starts the program


class Lab:
    def __init__(self, kind, out, program):
        """`kind` is the desktop's class; pictures are kept in the folder `out`."""
        self._out, self._kind = out, kind
        os.makedirs(out, exist_ok=True)
        self.laptop = VirtualLaptop(program)
        try:
            self._log_in(kind)
        except BaseException:
            self.close()
            raise

    def _log_in(self, kind):
        machine, bus = self.laptop.machine, self.laptop.session_bus
        machine.environment.update(GSETTINGS_BACKEND='dconf', USER='laptop', LOGNAME='laptop', SHELL='/bin/bash',
                                   XDG_CURRENT_DESKTOP=kind.current_desktop, XDG_SESSION_TYPE=kind.session_type,
                                   XDG_SESSION_ID='c1')
        machine.environment.pop('NO_AT_BRIDGE')
        os.makedirs(bus.services, exist_ok=True)
        for service in glob.glob(SERVICES):
            if os.path.basename(service) not in LEFT_OUT:
                shutil.copy(service, bus.services)
        bus.set_environment(machine.environment)
        self.laptop.upower.start()
        self.accessibility = Accessibility(machine, bus)
        self.desktop = kind(self.laptop, self.accessibility).start()
        bus.set_environment(machine.environment)
        still_picture(self.desktop)

    def photograph(self, step):
        path = os.path.join(self._out, f'{self._kind.name}-{step}.png')
        self.desktop.picture().save(path)
        return path

    def tidy(self):
        """Restores the initial state after a failed step, as far as possible."""
        vorlane = self.laptop.vorlane
        if vorlane.process:
            vorlane.kill()
        self.laptop.restore_battery()
        vorlane.start()
        wait_until(self.desktop.item_box, 'the item in the panel', look_every=0.2)

    def close(self):
        logs = self.laptop.machine.folder('log')
        shutil.copytree(logs, os.path.join(self._out, self._kind.name + '-log'), dirs_exist_ok=True)
        self.laptop.close()
