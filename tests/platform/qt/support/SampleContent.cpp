#include "tests/platform/qt/support/SampleContent.h"

#include <algorithm>
#include <cmath>

namespace vorlane::platform {

namespace {

constexpr std::int64_t pointsAtMost = 600;

// How the laptop is used on one day, in hours after midnight in Berlin.
struct Day {
    double wakes;
    double plugged;
    double unplugged;
    double pluggedAgain;
    double unpluggedAgain;
    double sleeps;
    double drain;  // percent an hour
};
constexpr std::array week{
    Day{7.2, 9.0, 11.5, 16.4, 18.6, 23.2, 9.5}, Day{7.8, 8.6, 12.1, 18.0, 20.1, 22.8, 8.1},
    Day{9.4, 10.2, 11.9, 17.1, 19.0, 23.6, 11.0}, Day{7.0, 9.1, 10.7, 15.2, 17.0, 22.5, 8.8},
    Day{7.4, 8.9, 12.4, 16.9, 18.1, 23.4, 10.2}};

struct Laptop {
    double charge = 62;

    // Advances by one minute; false while the laptop is asleep.
    bool live(double hour, const Day& day)
    {
        const auto within = [hour](double begin, double end) {
            return hour >= begin && hour < end;
        };
        const bool power =
            within(day.plugged, day.unplugged) || within(day.pluggedAgain, day.unpluggedAgain);
        const bool awake = within(day.wakes, day.sleeps);
        if (power) {
            charge = std::min(97.0, charge + (charge < 80 ? 0.62 : 0.62 * (100 - charge) / 20));
        } else {
            const double busy = 1 + 0.5 * std::sin(hour * 2.1) + 0.3 * std::sin(hour * 7.7);
            charge = std::max(8.0, charge - (awake ? day.drain * busy : 0.3) / 60);
        }
        return awake;
    }
};

std::vector<ChartPoint> lived(const Recorded& recorded)
{
    const double begin = recorded.until.secondsSince1970 - 9 * 86400;
    const double from = recorded.until.secondsSince1970 - recorded.days * 86400;
    const auto stride =
        std::max<std::int64_t>(1, std::int64_t{recorded.days} * 1000 / (pointsAtMost / 2));
    const double gap = 900 + 60 * static_cast<double>(stride);
    std::vector<ChartPoint> points;
    Laptop laptop;
    for (std::int64_t minute = 0; minute <= std::int64_t{9} * 1440; ++minute) {
        const double t = begin + 60 * static_cast<double>(minute);
        const double local = t + 3600;  // Berlin's winter time
        const auto& day = week[static_cast<std::size_t>(local / 86400) % week.size()];
        const bool awake = laptop.live(std::fmod(local, 86400) / 3600, day);
        if (!awake || t < from || minute % stride != 0) continue;
        const auto seg =
            points.empty()
                ? 0
                : points.back().seg + (t - points.back().date.secondsSince1970 > gap ? 1 : 0);
        points.push_back(
            {.id = minute, .date = {t}, .pct = std::lround(laptop.charge), .seg = seg});
    }
    return points;
}

// The chart, with its last segment shifted gradually to end at `percent`.
ChartContent endingAt(std::int64_t percent, ChartContent chart)
{
    auto& points = chart.points;
    const auto seg = points.back().seg;
    const auto begin = std::find_if(points.begin(), points.end(),
                                    [seg](const auto& point) { return point.seg == seg; });
    const auto count = static_cast<double>(points.end() - begin);
    const auto off = static_cast<double>(percent - points.back().pct);
    for (auto at = begin; at != points.end(); ++at) {
        const double share = static_cast<double>(at - begin + 1) / count;
        at->pct = std::clamp<std::int64_t>(at->pct + std::lround(off * share), 0, 100);
    }
    return chart;
}

// The content for a laptop whose current charge is the chart's last value.
BatteryBlocks battery(const ChartContent& chart, Color color)
{
    const auto percent = chart.points.back().pct;
    return {.gauge = {.ring = {.percent = percent,
                               .color = color,
                               .text = std::to_string(percent) + "%"},
                      .stateText = "Charging, 42 min to full",
                      .pluggedFor = "Plugged in for 36 min",
                      .snooze = std::nullopt},
            .cycles =
                CycleBlock{
                    .row = {.label = "Cycle count", .value = "212 of 1000", .color = std::nullopt},
                    .value = 212,
                    .total = 1000,
                    .tint = Color::accent},
            .details = {{.label = "Battery health", .value = "95% · Good", .color = Color::green},
                        {.label = "Temperature", .value = "31.4 °C", .color = std::nullopt},
                        {.label = "Power in", .value = "38.2 W", .color = std::nullopt},
                        {.label = "Adapter", .value = "65 W", .color = std::nullopt}},
            .range = {.choices = {"24 hours", "7 days"}, .selected = 0},
            .chart = chart};
}

ChartContent today(Date now)
{
    return usedLaptop({.days = 1, .until = now});
}

PopoverContent around(std::variant<NoBatteryBlock, BatteryBlocks> blocks)
{
    return {.blocks = std::move(blocks),
            .footnote = "Vorlane can only remind you. It cannot stop the charger.",
            .settings = "Settings",
            .quit = "Quit"};
}

}  // namespace

ChartContent usedLaptop(const Recorded& recorded)
{
    return {.notice = std::nullopt,
            .from = recorded.until - Seconds{86400.0 * recorded.days},
            .until = recorded.until,
            .lowest = 0,
            .highest = 100,
            .timeLabel = "Time",
            .valueLabel = "Charge",
            .marks = {{.value = 0, .label = "0%"},
                      {.value = 50, .label = "50%"},
                      {.value = 100, .label = "100%"}},
            .points = lived(recorded)};
}

const BatteryBlocks& blocks(const PopoverContent& content)
{
    return std::get<BatteryBlocks>(content.blocks);
}

PopoverContent charging()
{
    return around(battery(today(sampleEvening), Color::green));
}

PopoverContent onBattery()
{
    auto shown = battery(today(sampleNoon), Color::accent);
    shown.gauge.stateText = "On battery, 3 h 20 min left";
    shown.gauge.pluggedFor.reset();
    shown.details[2] = {.label = "Power out", .value = "11.8 W", .color = std::nullopt};
    shown.details.pop_back();
    return around(shown);
}

PopoverContent snoozed()
{
    auto shown = battery(endingAt(100, today(sampleEvening)), Color::green);
    shown.gauge.stateText = "Fully charged";
    shown.gauge.snooze = SnoozeLine{.text = "Alerts snoozed until 19:36", .cancel = "Cancel"};
    return around(shown);
}

PopoverContent wornBattery()
{
    auto shown = battery(endingAt(14, today(sampleNoon)), Color::red);
    shown.gauge.stateText = "On battery, 31 min left";
    shown.gauge.pluggedFor.reset();
    shown.cycles->row.value = "934 of 1000";
    shown.cycles->value = 934;
    shown.cycles->tint = Color::red;
    shown.details = {{.label = "Battery health", .value = "71% · Worn", .color = Color::red},
                     {.label = "Temperature", .value = "38.9 °C", .color = std::nullopt},
                     {.label = "Power out", .value = "17.3 W", .color = std::nullopt}};
    return around(shown);
}

PopoverContent sevenDays()
{
    auto shown = battery(today(sampleEvening), Color::green);
    shown.range.selected = 1;
    shown.chart = usedLaptop({.days = 7, .until = sampleEvening});
    return around(shown);
}

PopoverContent collecting()
{
    auto shown = battery(today(sampleEvening), Color::green);
    shown.chart.points.clear();
    shown.chart.notice = "Collecting history… a graph appears after a few minutes.";
    return around(shown);
}

PopoverContent noBattery()
{
    return around(
        NoBatteryBlock{.symbol = "battery.0",
                       .title = "No battery found",
                       .text = "This laptop does not report a battery, so Vorlane stays quiet."});
}

}  // namespace vorlane::platform
