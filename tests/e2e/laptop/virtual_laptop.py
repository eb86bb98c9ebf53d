"""The laptop used by the tests, with its session bus recorded."""
from .laptop import Laptop
from .notifications import Notifications
from .status_item import StatusItem
from .vorlane import Vorlane


class VirtualLaptop(Laptop):
    def _switch_on(self, program):
        super()._switch_on(program)
        self.notifications = Notifications(self.session_bus)
        self.item = StatusItem(self.session_bus)
        self.vorlane = Vorlane(program, self.machine, self.session_bus, self.system_bus, self.testbed)
