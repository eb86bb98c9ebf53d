#include "fuzz/ReminderRules.h"

#include <algorithm>
#include <cmath>

namespace vorlane::fuzz {

namespace {

double secondsOnPower(const ReminderRules::Look& look)
{
    return look.now.secondsSince1970 - look.since->secondsSince1970;
}

bool reachedLimit(const ReminderRules::Look& look)
{
    return look.state.hasBattery && look.state.pluggedIn && look.state.percent >= look.prefs.limit;
}

PendingAlert worded(AlertKind kind, const ReminderRules::Look& look)
{
    const auto percent = std::to_string(look.state.percent) + "%";
    if (kind == AlertKind::chargeLimit) {
        return {kind, "Charge limit reached",
                "Battery is at " + percent + ". Unplug to keep it healthy."};
    }
    if (kind == AlertKind::low) {
        return {kind, "Low battery", "Battery is at " + percent + ". Plug in soon."};
    }
    const auto hours = static_cast<long long>(secondsOnPower(look) / 3600.0);
    return {kind, "Plugged in for a long time",
            "Plugged in for over " + std::to_string(hours) + " h at " + percent +
                ". Unplug it to let the battery rest."};
}

}  // namespace

bool ReminderRules::holds(AlertKind kind, const Look& look)
{
    if (kind == AlertKind::chargeLimit) return look.prefs.limitEnabled && reachedLimit(look);
    if (kind == AlertKind::low) {
        return look.state.hasBattery && look.prefs.lowEnabled && !look.state.pluggedIn &&
               look.state.percent <= look.prefs.low;
    }
    if (kind != AlertKind::tooLong || !look.prefs.longEnabled || !look.since) return false;
    return reachedLimit(look) &&
           secondsOnPower(look) > static_cast<double>(look.prefs.longHours) * 3600.0;
}

int ReminderRules::sentInSpell(AlertKind kind) const
{
    int times = 0;
    for (auto before = past.rbegin(); before != past.rend(); ++before) {
        if (!holds(kind, before->look)) return times;
        times += static_cast<int>(std::ranges::count(before->sent, kind));
    }
    return times;
}

bool ReminderRules::primedInSpell(AlertKind kind) const
{
    for (auto before = past.rbegin(); before != past.rend(); ++before) {
        if (!holds(kind, before->look)) return false;
        if (before->look.prime) return true;
    }
    return false;
}

bool ReminderRules::limitMayRepeat(const Look& look) const
{
    if (sentInSpell(AlertKind::chargeLimit) >= (look.prefs.repeatReminder ? 4 : 1)) return false;
    for (auto before = past.rbegin(); before != past.rend(); ++before) {
        if (!std::ranges::count(before->sent, AlertKind::chargeLimit)) continue;
        return look.now.secondsSince1970 - before->look.now.secondsSince1970 >= 290;
    }
    return true;
}

bool ReminderRules::isDue(AlertKind kind, const Look& look) const
{
    if (!holds(kind, look) || primedInSpell(kind)) return false;
    if (sentInSpell(kind) == 0) return true;
    return kind == AlertKind::chargeLimit && limitMayRepeat(look);
}

std::optional<PendingAlert> ReminderRules::health(const Look& look)
{
    const auto& state = look.state;
    if (!state.hasBattery || !state.fullCapacity || state.designCapacity.value_or(0) < 1) return {};

    const double ratio =
        static_cast<double>(*state.fullCapacity) / static_cast<double>(*state.designCapacity) * 100;
    if (ratio >= 82) healthSent = false;
    if (ratio >= 80 || healthSent) return {};

    const bool sends = look.prefs.healthEnabled && look.canDeliver && !look.prime;
    healthSent = sends || look.prime;
    if (!sends) return {};
    return PendingAlert{AlertKind::health, "Battery health is low",
                        "Battery health has fallen to " + std::to_string(std::llround(ratio)) +
                            "% of its original capacity."};
}

void ReminderRules::clockWasSet(double by)
{
    for (auto& before : past) {
        before.look.now = {before.look.now.secondsSince1970 + by};
        if (before.look.since) before.look.since = {before.look.since->secondsSince1970 + by};
    }
}

std::vector<PendingAlert> ReminderRules::due(const Look& look)
{
    std::vector<PendingAlert> alerts;
    for (const auto kind : {AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong}) {
        const bool allowed = look.canDeliver && !look.prime;
        if (allowed && isDue(kind, look)) alerts.push_back(worded(kind, look));
    }
    if (const auto alert = health(look)) alerts.push_back(*alert);

    past.push_back({.look = look, .sent = {}});
    for (const auto& alert : alerts) past.back().sent.push_back(alert.kind);
    return alerts;
}

}  // namespace vorlane::fuzz
