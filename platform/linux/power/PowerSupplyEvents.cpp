#include "platform/linux/power/PowerSupplyEvents.h"

#include <memory>
#include <string_view>
#include <utility>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

namespace {

struct Watch {
    std::function<void()> changed;
    DeviceMonitorPointer monitor;
};

// The same test as PowerSupply::isPeripheral, for the device of an event.
bool isPeripheral(sd_device* device)
{
    const char* scope = nullptr;
    const int found = sd_device_get_property_value(device, "POWER_SUPPLY_SCOPE", &scope);
    return found >= 0 && std::string_view(scope) == "Device";
}

int onDevice(sd_device_monitor* /*monitor*/, sd_device* device, void* watch)
{
    if (!isPeripheral(device)) static_cast<Watch*>(watch)->changed();
    return 0;
}

}  // namespace

Subscription watchPowerSupplies(sd_event* event, std::function<void()> changed)
{
    const auto watch = std::make_shared<Watch>(Watch{.changed = std::move(changed), .monitor = {}});
    watch->monitor = owned<DeviceMonitorPointer>(sd_device_monitor_new);
    auto* const monitor = watch->monitor.get();
    if (!monitor ||
        sd_device_monitor_filter_add_match_subsystem_devtype(monitor, "power_supply", nullptr) <
            0 ||
        sd_device_monitor_attach_event(monitor, event) < 0 ||
        sd_device_monitor_start(monitor, onDevice, watch.get()) < 0) {
        return {};
    }
    return Subscription([watch] { watch->monitor.reset(); });
}

}  // namespace vorlane::platform
