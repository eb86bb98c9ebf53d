#include "platform/linux/power/UPowerDevice.h"

#include <optional>
#include <string_view>

#include "platform/linux/power/BatteryCharge.h"

namespace vorlane::platform {

namespace {

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

// Only the two that have a time to go with them.
ChargeStatus readStatus(sd_bus_message* message)
{
    const auto state = readVariant<std::uint32_t>(message, "u");
    if (state == 1U) return ChargeStatus::charging;
    if (state == 2U) return ChargeStatus::discharging;
    return ChargeStatus::unknown;
}

}  // namespace

bool UPowerDevice::update(sd_bus_message* message)
{
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) return false;

    int entered = 0;
    while ((entered = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv")) > 0) {
        if (!updateOne(message) || sd_bus_message_exit_container(message) < 0) return false;
    }
    return entered == 0 && sd_bus_message_exit_container(message) >= 0;
}

bool UPowerDevice::updateOne(sd_bus_message* message)
{
    const char* key = nullptr;
    if (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, static_cast<void*>(&key)) <= 0)
        return false;

    const std::string_view property(key);
    if (property == "TimeToFull") {
        minutes.toFull = readMinutes(message);
    } else if (property == "TimeToEmpty") {
        minutes.toEmpty = readMinutes(message);
    } else if (property == "State") {
        status = readStatus(message);
    } else {
        return sd_bus_message_skip(message, "v") >= 0;
    }
    return true;
}

}  // namespace vorlane::platform
