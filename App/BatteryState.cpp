#include "App/BatteryState.h"

#include <algorithm>
#include <array>

namespace vorlane {

namespace {

struct Band {
    std::int64_t from;
    const char* symbol;
};

// Each band is centred on the level that its symbol shows, so the limits are not quarters.
constexpr std::array bands{Band{88, "battery.100"}, Band{63, "battery.75"}, Band{38, "battery.50"},
                           Band{13, "battery.25"}};

const std::vector<std::string> fullSymbols{"battery.100percent", "battery.100"};

}  // namespace

std::string BatteryState::stateText() const
{
    if (!hasBattery) return "No battery found";
    if (isCharged) return "Fully charged";
    if (pluggedIn && !isCharging) {
        return percent < 100 ? "Plugged in, not charging" : "Fully charged";
    }
    if (isCharging) {
        if (!minutesToFull) return "Charging, estimating time to full…";
        return "Charging, " + formatMinutes(*minutesToFull) + " to full";
    }
    if (!minutesToEmpty) return "On battery, estimating time left…";
    return "On battery, " + formatMinutes(*minutesToEmpty) + " left";
}

std::optional<std::string> BatteryState::shortTime() const
{
    if (!hasBattery || isCharged || (pluggedIn && !isCharging)) return std::nullopt;

    const auto minutes = isCharging ? minutesToFull : minutesToEmpty;
    if (!minutes) return std::nullopt;

    const auto rest = std::to_string(*minutes % 60);
    return std::to_string(*minutes / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::optional<std::string> BatteryState::healthLabel() const
{
    const auto health = healthPercent();
    if (!health) return std::nullopt;
    if (*health > 90.0) return "Good";
    return *health >= 80.0 ? "Fair" : "Worn";
}

std::vector<std::string> BatteryState::symbolNames() const
{
    if (!hasBattery) return {"battery.0"};
    if (isCharged) return fullSymbols;
    if (isCharging) return {"battery.100.bolt", "bolt.fill"};
    if (pluggedIn && percent < 100) return {"powerplug.fill", "powerplug"};
    if (pluggedIn) return fullSymbols;

    const auto band = std::ranges::find_if(bands, [&](Band b) { return percent >= b.from; });
    return {band == bands.end() ? "battery.0" : band->symbol};
}

std::optional<double> BatteryState::healthPercent() const
{
    if (!designCapacity || !fullCapacity || *designCapacity < 1) return std::nullopt;
    return static_cast<double>(*fullCapacity) / static_cast<double>(*designCapacity) * 100.0;
}

std::string formatMinutes(std::int64_t minutes)
{
    if (minutes <= 59) return std::to_string(std::max<std::int64_t>(minutes, 1)) + " min";

    const auto hours = std::to_string(minutes / 60) + " h";
    const auto rest = minutes % 60;
    return rest == 0 ? hours : hours + " " + std::to_string(rest) + " min";
}

}  // namespace vorlane
