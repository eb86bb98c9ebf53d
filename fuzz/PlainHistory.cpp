#include "fuzz/PlainHistory.h"

#include <algorithm>
#include <cstddef>

namespace vorlane::fuzz {

namespace {

constexpr double month = 30 * 24 * 3600;

bool isOfMonth(const Sample& sample, double now)
{
    return sample.t <= now && sample.t >= now - month;
}

}  // namespace

void PlainHistory::record(const BatteryState& state, Date now, bool force)
{
    if (!state.hasBattery) return;

    const Sample fresh{
        .t = now.secondsSince1970, .p = state.percent, .c = state.isCharging, .a = state.pluggedIn};
    if (!samples.empty() && samples.back().t > fresh.t) setAside(now);
    const auto last = samples.empty() ? std::nullopt : std::optional(samples.back());
    const bool power = last && (last->a != fresh.a || last->c != fresh.c);
    if (!force && last && !power && last->p == fresh.p) return;

    samples.push_back(fresh);
    dropOld(now);
    if (asideSince && now.secondsSince1970 - asideSince->secondsSince1970 > 86400) aside.clear();
    const bool isTime = !lastSave || now.secondsSince1970 - lastSave->secondsSince1970 > 300;
    if (power || isTime) save(now);
}

void PlainHistory::save(Date now)
{
    lastSave = now;
    std::size_t ahead = 0;
    for (const auto& one : aside) ahead += one.sample.t > one.at ? 1 : 0;
    if (ahead <= samples.size()) file = samples;
}

void PlainHistory::clear(Date now)
{
    samples.clear();
    aside.clear();
    save(now);
}

void PlainHistory::clockWasSet(double by, Date now)
{
    if (lastSave) lastSave = Date{lastSave->secondsSince1970 + by};
    if (asideSince) asideSince = Date{asideSince->secondsSince1970 + by};
    std::vector<SetAside> still;
    for (auto one : aside) {
        one.at += by;
        if (isOfMonth(one.sample, one.at)) {
            samples.push_back(one.sample);
        } else {
            still.push_back(one);
        }
    }
    aside = still;
    std::ranges::stable_sort(samples, {}, &Sample::t);
    setAside(now);
}

// Moves samples outside the last 30 days to `aside`, because the clock may be wrong.
void PlainHistory::setAside(Date now)
{
    const auto all = samples;
    samples.clear();
    for (const auto& sample : all) {
        if (isOfMonth(sample, now.secondsSince1970)) {
            samples.push_back(sample);
        } else {
            aside.push_back({.sample = sample, .at = now.secondsSince1970});
            asideSince = now;
        }
    }
}

void PlainHistory::restart(Date now)
{
    samples = file;
    aside.clear();
    lastSave.reset();
    asideSince.reset();
    std::ranges::stable_sort(samples, {}, &Sample::t);
    dropOld(now);
}

void PlainHistory::dropOld(Date now)
{
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
    return Date{std::min(start, now.secondsSince1970)};
}

}  // namespace vorlane::fuzz
