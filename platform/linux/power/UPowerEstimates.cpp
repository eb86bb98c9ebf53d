#include "platform/linux/power/UPowerEstimates.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.UPower";
constexpr const char* path = "/org/freedesktop/UPower/devices/DisplayDevice";
constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";
constexpr const char* properties = "org.freedesktop.DBus.Properties";

// UPower speaks up every 30 s, every 120 s in some versions. One that has nothing to say is asked
// in time, so that only one that does not answer is forgotten.
constexpr Seconds longSilence{240};
constexpr Seconds tooLongSilence{300};

bool isChange(std::optional<std::int64_t> before, std::optional<std::int64_t> now)
{
    if (!before || !now) return before.has_value() != now.has_value();
    return std::abs(*before - *now) > 1;
}

}  // namespace

UPowerEstimates::UPowerEstimates(sd_bus* system, std::function<Seconds()> uptime)
    : uptime_(std::move(uptime))
{
    connect(system);
}

void UPowerEstimates::connect(sd_bus* system)
{
    names.reset();
    propertiesSignal.reset();
    setOwner("");
    system_ = system;
    if (!system_) return;

    names.emplace(system_, service, [this](const char* name) { setOwner(name); });
    propertiesSignal = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_match_signal_async(
            system_, slot, service, path, properties, "PropertiesChanged",
            onMessage<UPowerEstimates, &UPowerEstimates::propertiesChanged>, matchInstalled, this);
    });
    names->ask();
}

TimeEstimates::Minutes UPowerEstimates::estimate(ChargeStatus status)
{
    const bool isOfUse = status == ChargeStatus::charging || status == ChargeStatus::discharging;
    if (isOfUse && !owner.empty() && isLongAgo(heard) && isLongAgo(asked)) ask();

    lastStatus = status;
    lastGiven = current(status);
    return lastGiven;
}

Subscription UPowerEstimates::observe(std::function<void()> changed)
{
    return listeners.add(std::move(changed));
}

void UPowerEstimates::setOwner(const char* name)
{
    if (owner == name) return;
    owner = name;
    device = {};
    heard.reset();
    asked.reset();
    request.reset();
    if (!owner.empty()) ask();
    tellOfChange();
}

// To the unique name: a UPower that has just gone must not be started by this.
void UPowerEstimates::ask()
{
    asked = uptime_();
    request = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_call_method_async(system_, slot, owner.c_str(), path, properties, "GetAll",
                                        onMessage<UPowerEstimates, &UPowerEstimates::answered>,
                                        this, "s", deviceInterface);
    });
}

void UPowerEstimates::answered(sd_bus_message* reply)
{
    request.reset();
    if (sd_bus_message_is_method_error(reply, nullptr)) return;
    UPowerDevice fresh;
    if (!fresh.update(reply)) return;
    device = fresh;
    heard = uptime_();
    tellOfChange();
}

void UPowerEstimates::propertiesChanged(sd_bus_message* signal)
{
    const char* interface = nullptr;
    if (!isFrom(signal, owner)) return;
    if (sd_bus_message_read(signal, "s", &interface) < 0) return;
    if (std::string_view(interface) != deviceInterface) return;

    if (!heard) {  // a change of something that is not known yet
        if (!request) ask();
        return;
    }
    auto fresh = device;
    if (!fresh.update(signal)) return;
    device = fresh;
    heard = uptime_();
    tellOfChange();
}

bool UPowerEstimates::isLongAgo(std::optional<Seconds> moment) const
{
    return !moment || *moment + longSilence <= uptime_();
}

TimeEstimates::Minutes UPowerEstimates::current(ChargeStatus status) const
{
    if (!heard || *heard + tooLongSilence <= uptime_() || device.status != status) return {};
    if (status == ChargeStatus::charging) return {.toFull = device.minutes.toFull, .toEmpty = {}};
    if (status == ChargeStatus::discharging) {
        return {.toFull = {}, .toEmpty = device.minutes.toEmpty};
    }
    return {};
}

void UPowerEstimates::tellOfChange()
{
    const auto now = current(lastStatus);
    if (isChange(lastGiven.toFull, now.toFull) || isChange(lastGiven.toEmpty, now.toEmpty)) {
        listeners.call();
    }
}

}  // namespace vorlane::platform
