#include "fuzz/PlainHistory.h"

#include <algorithm>

namespace vorlane::fuzz {

void PlainHistory::record(const BatteryState& state, Date now, bool force)
{
    if (!state.hasBattery) return;

    const Sample fresh{
        .t = now.secondsSince1970, .p = state.percent, .c = state.isCharging, .a = state.pluggedIn};
    const auto last = samples.empty() ? std::nullopt : std::optional(samples.back());
    const bool power = last && (last->a != fresh.a || last->c != fresh.c);
    if (!force && last && !power && last->p == fresh.p) return;

    samples.push_back(fresh);
    dropOld(now);
    const bool isTime = !lastSave || now.secondsSince1970 - lastSave->secondsSince1970 > 300;
    if (power || isTime) save(now);
}

void PlainHistory::save(Date now)
{
    lastSave = now;
    file = samples;
}

void PlainHistory::clear(Date now)
{
    samples.clear();
    save(now);
}

void PlainHistory::restart(Date now)
{
    samples = file;
    lastSave.reset();
    std::ranges::stable_sort(samples, {}, &Sample::t);
    dropOld(now);
}

void PlainHistory::dropOld(Date now)
{
    constexpr double month = 30 * 24 * 3600;
    while (!samples.empty() && samples.front().t < now.secondsSince1970 - month) {
        samples.erase(samples.begin());
    }
}

std::optional<Date> PlainHistory::pluggedSince(Date now) const
{
    if (samples.empty() || !samples.back().a) return std::nullopt;
    double start = samples.back().t;
    if (!(now.secondsSince1970 - start < 600)) return std::nullopt;
    for (auto i = samples.size() - 1; i > 0; --i) {
        const auto& earlier = samples[i - 1];
        if (!earlier.a || start - earlier.t > 900) break;
        start = earlier.t;
    }
    return Date{start};
}

}  // namespace vorlane::fuzz
