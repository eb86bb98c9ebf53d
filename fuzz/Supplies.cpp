// The kernel's power supplies: for any file contents, the battery reading is plausible or absent. A
// case is a text with one paragraph per supply: its name, then the lines of its uevent file. A line
// that begins with "@" is a separate attribute file, as in "@capacity=80".
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "App/BatteryReader.h"
#include "fuzz/Require.h"
#include "fuzz/Scratch.h"
#include "fuzz/Targets.h"
#include "platform/linux/power/KernelBattery.h"
#include "platform/linux/power/MachineBattery.h"
#include "platform/linux/power/PowerSupplyFolder.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::fuzz {

namespace {

using platform::PowerSupply;

constexpr std::int64_t longestTime = 14400;  // ten days, in minutes

std::string_view takeUntil(std::string_view& text, std::string_view end)
{
    const auto at = std::min(text.find(end), text.size());
    const auto taken = text.substr(0, at);
    text.remove_prefix(std::min(at + end.size(), text.size()));
    return taken;
}

// Makes a valid folder name.
std::string safe(std::string_view name)
{
    std::string kept;
    for (const char c : name.substr(0, 24)) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
        if (isPlain) kept += c;
    }
    return kept;
}

void writeSupply(const Scratch& folder, std::string_view paragraph)
{
    const auto name = safe(takeUntil(paragraph, "\n"));
    if (name.empty()) return;
    std::string uevent;
    while (!paragraph.empty()) {
        auto line = takeUntil(paragraph, "\n");
        if (!line.starts_with('@')) {
            uevent.append(line).append("\n");
            continue;
        }
        line.remove_prefix(1);
        const auto attribute = safe(takeUntil(line, "="));
        if (!attribute.empty()) folder.write(std::string(name).append("/").append(attribute), line);
    }
    folder.write(name + "/uevent", uevent);
}

struct NoEstimates : platform::TimeEstimates {
    std::optional<std::int64_t> estimate(platform::ChargeStatus /*status*/) override { return {}; }
    Subscription observe(std::function<void()> /*changed*/) override { return {}; }
};

BatteryState readBattery(const Scratch& folder)
{
    FakeClock clock;
    FakeRunLoop loop(clock);
    NoEstimates estimates;
    const auto nothing = [](const std::function<void()>&) { return Subscription(); };
    const auto uptime = [&clock] { return Seconds{clock.time.secondsSince1970}; };
    platform::KernelBattery battery(
        {.runLoop = loop, .estimates = estimates, .watchSupplies = nothing, .uptime = uptime},
        folder.path(""));
    require(battery.descriptions().size() <= 1, "the machine has one battery at most");
    BatteryReader reader(battery, battery);
    auto state = reader.read();
    require(state == reader.read(), "the same files give the same reading");
    return state;
}

template <typename Number>
bool isWithin(const std::optional<Number>& value, Number least, Number most)
{
    return !value || (*value >= least && *value <= most);
}

void checkPlausible(const BatteryState& state)
{
    require(state.percent >= 0 && state.percent <= 100, "the percentage is between 0 and 100");
    require(isWithin<std::int64_t>(state.minutesToFull, 0, longestTime),
            "the time to full is plausible");
    require(isWithin<std::int64_t>(state.minutesToEmpty, 0, longestTime),
            "the time to empty is plausible");
    require(isWithin<std::int64_t>(state.cycleCount, 1, 65534),
            "the cycle count is not a sentinel");
    require(isWithin<std::int64_t>(state.adapterWatts, 1, 240), "the adapter power is plausible");
    require(isWithin(state.temperatureC, -20.0, 100.0), "the temperature is plausible");
    require(isWithin(state.voltage, 0.001, 100.0), "the voltage is plausible");
    require(isWithin(state.amperage, -1000.0, 1000.0), "the current is plausible");
    require(!(state.isCharging && !state.pluggedIn), "a charging battery is plugged in");
    require(!(state.isCharging && state.isCharged), "a full battery does not charge");
    const auto health = state.healthPercent();
    require(isWithin(health, 30.0, 130.0) && !(health && std::isnan(*health)),
            "the health is plausible");
    require(state.designCapacity || !state.fullCapacity,
            "a full capacity comes with a design capacity");
    if (state.hasBattery) return;
    require(state == BatteryState(), "without a battery all fields are absent");
}

std::optional<std::int64_t> wholeNumber(std::string_view text)
{
    while (text.ends_with(' ')) text.remove_suffix(1);
    if (text.empty() || text.size() > 9) return std::nullopt;
    if (!std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; })) return {};
    return std::stoll(std::string(text));
}

// A single battery is shown with the percentage of its own gauge.
void checkGauge(const std::vector<PowerSupply>& supplies, const BatteryState& state)
{
    const auto count = std::ranges::count_if(supplies, &PowerSupply::isMachineBattery);
    require(count > 0 || !state.hasBattery, "no battery is reported if none is listed");
    if (count != 1) return;
    const auto battery = std::ranges::find_if(supplies, &PowerSupply::isMachineBattery);
    const auto capacity = battery->values.find("CAPACITY");
    const auto gauge =
        capacity == battery->values.end() ? std::nullopt : wholeNumber(capacity->second);
    if (!gauge || *gauge > 100) return;
    require(state.hasBattery && state.percent == *gauge, "the percentage is that of the gauge");
}

// A mouse and an empty bay must not affect the machine's battery.
void checkUnrelatedSupplies(const std::vector<PowerSupply>& supplies)
{
    const PowerSupply mouse{.name = "hid_mouse",
                            .values = {{"TYPE", "Battery"},
                                       {"SCOPE", "Device"},
                                       {"STATUS", "Discharging"},
                                       {"ONLINE", "1"},
                                       {"CAPACITY", "3"}}};
    const PowerSupply bay{.name = "BAT9",
                          .values = {{"TYPE", "Battery"}, {"PRESENT", "0"}, {"CAPACITY", "7"}}};
    auto more = supplies;
    more.push_back(mouse);
    more.push_back(bay);
    const auto without = platform::machineBattery(supplies);
    const auto with = platform::machineBattery(more);
    require(without.has_value() == with.has_value(),
            "a mouse does not count as the laptop's battery");
    if (!without) return;
    require(without->name == with->name && without->percent == with->percent &&
                without->status == with->status && without->pluggedIn == with->pluggedIn &&
                without->minutesToFull == with->minutesToFull &&
                without->minutesToEmpty == with->minutesToEmpty && without->flow == with->flow &&
                without->chargeThreshold == with->chargeThreshold &&
                without->keepsBelowFull == with->keepsBelowFull &&
                without->isForcedToDischarge == with->isForcedToDischarge &&
                without->designCapacity == with->designCapacity &&
                without->fullCapacity == with->fullCapacity &&
                without->cycleCount == with->cycleCount &&
                without->temperature == with->temperature && without->voltage == with->voltage &&
                without->current == with->current && without->adapterWatts == with->adapterWatts,
            "a mouse and an empty bay change nothing");
}

}  // namespace

void supplies(Input input)
{
    const Scratch folder;
    const auto text = input.rest();
    std::string_view left = text;
    for (int count = 0; count < 8 && !left.empty(); ++count) {
        writeSupply(folder, takeUntil(left, "\n\n"));
    }

    const auto found = platform::readPowerSupplies(folder.path(""));
    require(static_cast<bool>(found), "the folder can be read");
    const auto state = readBattery(folder);

    checkPlausible(state);
    checkGauge(*found, state);
    checkUnrelatedSupplies(*found);
}

}  // namespace vorlane::fuzz
