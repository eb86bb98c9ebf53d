#include "platform/linux/report/ReportJson.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "App/BatteryReader.h"
#include "platform/linux/power/BatteryDictionaries.h"
#include "platform/linux/power/MachineBattery.h"
#include "platform/linux/power/PowerNotes.h"

namespace vorlane::platform {

namespace {

using nlohmann::ordered_json;

class FixedBattery : public PowerSources, public BatteryRegistry {
public:
    explicit FixedBattery(const std::optional<MachineBattery>& battery) : battery_(battery) {}

    std::vector<PropertyDictionary> descriptions() override
    {
        if (!battery_) return {};
        return {powerSourceDescription(*battery_, situationOf(*battery_))};
    }

    std::optional<PropertyDictionary> properties() override
    {
        if (!battery_) return std::nullopt;
        return registryProperties(*battery_);
    }

    Subscription observe(std::function<void()> /*changed*/) override { return {}; }

private:
    const std::optional<MachineBattery>& battery_;
};

template <typename T>
ordered_json orNull(const std::optional<T>& value)
{
    return value ? ordered_json(*value) : ordered_json(nullptr);
}

ordered_json jsonOf(const PowerSupply& supply)
{
    ordered_json json = ordered_json::object();
    for (const auto& [key, value] : supply.values) {
        if (key.find("SERIAL") == std::string::npos) json[key] = value;
    }
    return json;
}

ordered_json jsonOf(const BatteryState& state)
{
    return {{"hasBattery", state.hasBattery},
            {"percent", state.percent},
            {"isCharging", state.isCharging},
            {"pluggedIn", state.pluggedIn},
            {"isCharged", state.isCharged},
            {"minutesToFull", orNull(state.minutesToFull)},
            {"minutesToEmpty", orNull(state.minutesToEmpty)},
            {"sourceName", orNull(state.sourceName)},
            {"cycleCount", orNull(state.cycleCount)},
            {"designCapacity", orNull(state.designCapacity)},
            {"fullCapacity", orNull(state.fullCapacity)},
            {"temperatureC", orNull(state.temperatureC)},
            {"voltage", orNull(state.voltage)},
            {"amperage", orNull(state.amperage)},
            {"adapterWatts", orNull(state.adapterWatts)},
            {"stateText", state.stateText()},
            {"shortTime", orNull(state.shortTime())},
            {"healthLabel", orNull(state.healthLabel())},
            {"symbolNames", state.symbolNames()}};
}

}  // namespace

std::string reportJson(const std::vector<PowerSupply>& supplies)
{
    const auto battery = machineBattery(supplies);
    FixedBattery fixed(battery);
    ordered_json listed = ordered_json::object();
    for (const auto& supply : supplies) listed[supply.name] = jsonOf(supply);
    const ordered_json report{{"supplies", listed},
                              {"state", jsonOf(BatteryReader(fixed, fixed).read())},
                              {"notes", powerNotes(supplies, battery)}};
    return report.dump(4, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace vorlane::platform
