#include "platform/linux/power/UPowerEstimates.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/linux/power/MachineBattery.h"

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.UPower";
constexpr const char* path = "/org/freedesktop/UPower/devices/DisplayDevice";
constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";
constexpr const char* properties = "org.freedesktop.DBus.Properties";

// UPower sends changes every 30 s, in some versions every 120 s. A silent UPower is asked before
// its estimate expires.
constexpr Seconds askAfter{240};
constexpr Seconds expiresAfter{300};

bool isChange(std::optional<std::int64_t> before, std::optional<std::int64_t> now)
{
    if (!before || !now) return before.has_value() != now.has_value();
    return std::abs(*before - *now) > 1;
}

template <typename T>
std::optional<T> readVariant(sd_bus_message* message, const char* type)
{
    T value{};
    if (sd_bus_message_verify_type(message, SD_BUS_TYPE_VARIANT, type) <= 0) {
        (void)sd_bus_message_skip(message, "v");
        return std::nullopt;
    }
    if (sd_bus_message_read(message, "v", type, &value) < 0) return std::nullopt;
    return value;
}

std::optional<std::int64_t> readMinutes(sd_bus_message* message)
{
    const auto seconds = readVariant<std::int64_t>(message, "x");
    if (!seconds || *seconds == 0) return std::nullopt;  // 0 is "unknown"
    return plausibleMinutes(static_cast<double>(*seconds));
}

// Unknown for all states except the two that have a remaining time.
ChargeStatus readStatus(sd_bus_message* message)
{
    const auto state = readVariant<std::uint32_t>(message, "u");
    if (state == 1U) return ChargeStatus::charging;
    if (state == 2U) return ChargeStatus::discharging;
    return ChargeStatus::unknown;
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

std::optional<std::int64_t> UPowerEstimates::estimate(ChargeStatus status)
{
    const bool hasTime = status == ChargeStatus::charging || status == ChargeStatus::discharging;
    if (hasTime && !owner.empty() && isLongAgo(heard) && isLongAgo(asked)) ask();

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
    reportChange();
}

// Calls the unique name: this must not start a UPower that has just exited.
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
    Device fresh;
    if (!fresh.update(reply)) return;
    device = fresh;
    heard = uptime_();
    reportChange();
}

void UPowerEstimates::propertiesChanged(sd_bus_message* signal)
{
    const char* interface = nullptr;
    if (!isFrom(signal, owner)) return;
    if (sd_bus_message_read(signal, "s", &interface) < 0) return;
    if (std::string_view(interface) != deviceInterface) return;

    if (!heard) {  // a change of properties that are not known yet
        if (!request) ask();
        return;
    }
    auto fresh = device;
    if (!fresh.update(signal)) return;
    device = fresh;
    heard = uptime_();
    reportChange();
}

bool UPowerEstimates::isLongAgo(std::optional<Seconds> moment) const
{
    return !moment || *moment + askAfter <= uptime_();
}

std::optional<std::int64_t> UPowerEstimates::current(ChargeStatus status) const
{
    if (!heard || *heard + expiresAfter <= uptime_() || device.status != status) return {};
    if (status == ChargeStatus::charging) return device.minutesToFull;
    if (status == ChargeStatus::discharging) return device.minutesToEmpty;
    return {};
}

void UPowerEstimates::reportChange()
{
    if (isChange(lastGiven, current(lastStatus))) listeners.call();
}

bool UPowerEstimates::Device::update(sd_bus_message* message)
{
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) return false;

    int entered = 0;
    while ((entered = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv")) > 0) {
        if (!updateOne(message) || sd_bus_message_exit_container(message) < 0) return false;
    }
    return entered == 0 && sd_bus_message_exit_container(message) >= 0;
}

bool UPowerEstimates::Device::updateOne(sd_bus_message* message)
{
    const char* key = nullptr;
    if (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, static_cast<void*>(&key)) <= 0)
        return false;

    const std::string_view property(key);
    if (property == "TimeToFull") {
        minutesToFull = readMinutes(message);
    } else if (property == "TimeToEmpty") {
        minutesToEmpty = readMinutes(message);
    } else if (property == "State") {
        status = readStatus(message);
    } else {
        return sd_bus_message_skip(message, "v") >= 0;
    }
    return true;
}

}  // namespace vorlane::platform
