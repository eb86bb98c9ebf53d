#include "App/AlertEngine.h"

#include <cmath>
#include <string>
#include <utility>

#include "App/AlertConditions.h"
#include "App/FatalError.h"

namespace vorlane {

namespace {

// The first reminder and three repeats.
constexpr std::int64_t mostChargeAlerts = 4;

// Ten seconds short of the 5 minutes promised, so that an early refresh still counts.
constexpr Seconds repeatSpacing{290};

constexpr double healthFloor = 80.0;
// Above the floor, so that a capacity that wavers around the floor causes only one alert.
constexpr double healthRearm = 82.0;
constexpr const char* healthSentKey = "healthAlertSent";

std::string whole(double value)
{
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(value >= -limit && value < limit)) fatalError("An alert's number is out of range");
    return std::to_string(static_cast<std::int64_t>(value));
}

std::optional<PendingAlert> healthAlert(const BatteryState& state, const Prefs& prefs,
                                        const AlertEngine::Moment& moment, DefaultsStore& defaults)
{
    const auto health = state.healthPercent();
    if (!health) return std::nullopt;

    const bool sent = defaults.boolForKey(healthSentKey);
    if (*health >= healthFloor) {
        if (*health >= healthRearm && sent) defaults.set(healthSentKey, false);
        return std::nullopt;
    }
    if (sent) return std::nullopt;
    if (!moment.prime && (!prefs.healthEnabled || !moment.canDeliver)) return std::nullopt;

    defaults.set(healthSentKey, true);
    if (moment.prime) return std::nullopt;
    return PendingAlert{.kind = AlertKind::health,
                        .title = "Battery health is low",
                        .body = "Battery health has fallen to " + whole(std::round(*health)) +
                                "% of its original capacity."};
}

}  // namespace

std::vector<PendingAlert> AlertEngine::run(const BatteryState& state, const Prefs& prefs,
                                           const Moment& moment, DefaultsStore& defaults)
{
    const auto conditions = AlertConditions::of(state, prefs, moment.since, moment.now);
    for (const auto kind : AlertConditions::kinds) {
        if (!conditions[kind]) rearm(kind);
        if (conditions[kind] && moment.prime) suppressed.insert(kind);
    }
    if (!state.hasBattery) return {};

    std::vector<PendingAlert> due;
    const auto add = [&](std::optional<PendingAlert> alert) {
        if (alert) due.push_back(std::move(*alert));
    };
    if (!moment.prime && moment.canDeliver) {
        if (conditions.chargeLimit) add(chargeLimitAlert(state, prefs, moment.now));
        if (conditions.low) add(lowAlert(state));
        if (conditions.tooLong) add(tooLongAlert(state, moment.now - *moment.since));
    }
    add(healthAlert(state, prefs, moment, defaults));
    return due;
}

void AlertEngine::rearm(AlertKind kind)
{
    suppressed.erase(kind);
    if (kind == AlertKind::chargeLimit) chargeSent = 0;
    if (kind == AlertKind::low) lowSent = false;
    if (kind == AlertKind::tooLong) longSent = false;
}

std::optional<PendingAlert> AlertEngine::chargeLimitAlert(const BatteryState& state,
                                                          const Prefs& prefs, Date now)
{
    if (suppressed.contains(AlertKind::chargeLimit)) return std::nullopt;
    if (chargeSent >= (prefs.repeatReminder ? mostChargeAlerts : 1)) return std::nullopt;
    if (chargeSent != 0 && now - chargeLast < repeatSpacing) return std::nullopt;

    ++chargeSent;
    chargeLast = now;
    return PendingAlert{
        .kind = AlertKind::chargeLimit,
        .title = "Charge limit reached",
        .body = "Battery is at " + std::to_string(state.percent) + "%. Unplug to keep it healthy."};
}

std::optional<PendingAlert> AlertEngine::lowAlert(const BatteryState& state)
{
    if (suppressed.contains(AlertKind::low) || lowSent) return std::nullopt;

    lowSent = true;
    return PendingAlert{
        .kind = AlertKind::low,
        .title = "Low battery",
        .body = "Battery is at " + std::to_string(state.percent) + "%. Plug in soon."};
}

std::optional<PendingAlert> AlertEngine::tooLongAlert(const BatteryState& state, Seconds plugged)
{
    if (suppressed.contains(AlertKind::tooLong) || longSent) return std::nullopt;

    longSent = true;
    return PendingAlert{.kind = AlertKind::tooLong,
                        .title = "Plugged in for a long time",
                        .body = "Plugged in for over " + whole(plugged.count() / 3600.0) +
                                " h at " + std::to_string(state.percent) +
                                "%. Unplug it to let the battery rest."};
}

}  // namespace vorlane
