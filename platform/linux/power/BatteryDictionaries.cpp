#include "platform/linux/power/BatteryDictionaries.h"

#include <cstdint>

namespace vorlane::platform {

namespace {

void setIfKnown(PropertyDictionary& dictionary, const char* key, std::optional<std::int64_t> value)
{
    if (value) dictionary.set(key, *value);
}

// Charging to the firmware's threshold counts as charging to full.
std::optional<std::int64_t> minutesUntilChargingStops(const MachineBattery& battery)
{
    const auto threshold = battery.chargeThreshold.value_or(100);
    const auto percent = battery.percent.value_or(100);
    if (!battery.minutesToFull || percent >= threshold) return battery.minutesToFull;
    return *battery.minutesToFull * (threshold - percent) / (100 - percent);
}

}  // namespace

PowerSituation situationOf(const MachineBattery& battery)
{
    return {.pluggedIn = battery.pluggedIn,
            .isCharging = battery.status == ChargeStatus::charging,
            .isCharged = battery.status == ChargeStatus::full};
}

PropertyDictionary powerSourceDescription(const MachineBattery& battery,
                                          const PowerSituation& situation)
{
    PropertyDictionary description{
        {.key = "Type", .value = std::string("InternalBattery")},
        {.key = "Is Present", .value = true},
        {.key = "Name", .value = battery.name},
        {.key = "Max Capacity", .value = std::int64_t{100}},
        {.key = "Is Charging", .value = situation.isCharging},
        {.key = "Is Charged", .value = situation.isCharged},
        {.key = "Power Source State",
         .value = std::string(situation.pluggedIn ? "AC Power" : "Battery Power")}};
    setIfKnown(description, "Current Capacity", battery.percent);
    setIfKnown(description, "Time to Full Charge", minutesUntilChargingStops(battery));
    setIfKnown(description, "Time to Empty", battery.minutesToEmpty);
    return description;
}

PropertyDictionary registryProperties(const MachineBattery& battery)
{
    PropertyDictionary registry;
    setIfKnown(registry, "CycleCount", battery.cycleCount);
    setIfKnown(registry, "DesignCapacity", battery.designCapacity);
    setIfKnown(registry, "MaxCapacity", battery.fullCapacity);
    setIfKnown(registry, "Temperature", battery.temperature);
    setIfKnown(registry, "Voltage", battery.voltage);
    setIfKnown(registry, "Amperage", battery.current);
    setIfKnown(registry, "ChargeThreshold", battery.chargeThreshold);
    if (battery.keepsBelowFull) registry.set("KeepsBelowFull", true);
    if (battery.adapterWatts) {
        registry.set("AdapterDetails",
                     PropertyDictionary{{.key = "Watts", .value = *battery.adapterWatts}});
    }
    return registry;
}

}  // namespace vorlane::platform
