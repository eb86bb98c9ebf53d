#include "App/HistoryStore.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "App/FatalError.h"
#include "App/SampleJson.h"

namespace vorlane {

namespace {

constexpr Seconds retention = std::chrono::hours{30 * 24};
constexpr Seconds saveSpacing{300};
constexpr Seconds trustedAge{600};  // how old the last sample may be for an estimate
constexpr Seconds longestGap{900};
constexpr Seconds asideRetention = std::chrono::hours{24};

auto firstAtOrAfter(const std::vector<Sample>& samples, Date date)
{
    return std::ranges::find_if(samples,
                                [&](const Sample& s) { return s.t >= date.secondsSince1970; });
}

bool isOfLastDays(const Sample& sample, Date now)
{
    return Date{sample.t} >= now - retention && Date{sample.t} <= now;
}

}  // namespace

HistoryStore::HistoryStore(FileManager& files, Date now) : files_(files)
{
    const auto folders = files_.applicationSupportFolders();
    if (folders.empty()) fatalError("No application-support folder");

    const auto folder = folders.front() + "/Vorlane";
    files_.createFolder(folder);
    url = folder + "/history.json";
    load(now);
}

void HistoryStore::load(Date now)
{
    auto content = files_.read(url);
    auto decoded = content ? decodeSamples(std::move(*content)) : std::nullopt;
    loadFailed = !decoded;
    if (!decoded) return;
    decoded->insert(decoded->end(), samples.begin(), samples.end());

    // The file is usually sorted, and sorting a month of samples takes as long as reading them.
    if (!std::ranges::is_sorted(*decoded, {}, &Sample::t)) {
        std::ranges::stable_sort(*decoded, {}, &Sample::t);
    }
    samples = std::move(*decoded);
    prune(now);
}

void HistoryStore::record(const BatteryState& state, Offer offer)
{
    if (!state.hasBattery) return;

    const Sample candidate{.t = offer.at.secondsSince1970,
                           .p = state.percent,
                           .c = state.isCharging,
                           .a = state.pluggedIn};
    if (!samples.empty() && samples.back().t > candidate.t) setAside(offer.at);
    const bool powerChanged =
        !samples.empty() && (samples.back().a != candidate.a || samples.back().c != candidate.c);
    const bool percentChanged = samples.empty() || samples.back().p != candidate.p;
    if (!offer.force && !powerChanged && !percentChanged) return;

    samples.push_back(candidate);
    prune(offer.at);
    if (offer.at - asideSince > asideRetention) aside = {};
    if (powerChanged || offer.at - lastSave > saveSpacing) save(offer.at);
}

void HistoryStore::save(Date now)
{
    lastSave = now;
    if (!canEncode(samples) || mostIsAhead()) return;

    if (loadFailed && !cleared) load(now);  // the failure may have been temporary
    if (loadFailed && !files_.keepAside(url)) return;
    loadFailed = false;
    SampleEncoder encoder(samples);
    (void)files_.replace(url, [&] { return encoder.next(); });
}

void HistoryStore::clockWasSet(Seconds by, Date now)
{
    lastSave = lastSave + by;
    asideSince = asideSince + by;
    for (auto& one : aside) one.at = one.at + by;

    const auto back = std::stable_partition(aside.begin(), aside.end(), [](const SetAside& one) {
        return !isOfLastDays(one.sample, one.at);
    });
    std::transform(back, aside.end(), std::back_inserter(samples),
                   [](const SetAside& one) { return one.sample; });
    aside.erase(back, aside.end());
    aside.shrink_to_fit();
    std::ranges::stable_sort(samples, {}, &Sample::t);
    setAside(now);
}

void HistoryStore::clear()
{
    samples.clear();
    aside = {};
    cleared = true;
}

std::span<const Sample> HistoryStore::samplesSince(Date since) const
{
    return {firstAtOrAfter(samples, since), samples.end()};
}

std::optional<Date> HistoryStore::pluggedSinceEstimate(Date now) const
{
    if (samples.empty() || !samples.back().a) return std::nullopt;
    Date start{samples.back().t};
    if (now - start >= trustedAge) return std::nullopt;

    for (auto earlier = std::next(samples.rbegin()); earlier != samples.rend(); ++earlier) {
        const Date date{earlier->t};
        if (!earlier->a || start - date > longestGap) break;
        start = date;
    }
    return std::min(start, now);  // the samples may lie in the future
}

void HistoryStore::prune(Date now)
{
    samples.erase(samples.begin(), firstAtOrAfter(samples, now - retention));
}

void HistoryStore::setAside(Date now)
{
    const auto outside =
        std::stable_partition(samples.begin(), samples.end(),
                              [&](const Sample& sample) { return isOfLastDays(sample, now); });
    if (outside == samples.end()) return;

    std::transform(outside, samples.end(), std::back_inserter(aside),
                   [&](const Sample& sample) { return SetAside{.sample = sample, .at = now}; });
    samples.erase(outside, samples.end());
    asideSince = now;
}

bool HistoryStore::mostIsAhead() const
{
    const auto ahead = std::ranges::count_if(
        aside, [](const SetAside& one) { return Date{one.sample.t} > one.at; });
    return static_cast<std::size_t>(ahead) > samples.size();
}

}  // namespace vorlane
