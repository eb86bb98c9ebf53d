// Redraws the chart with the maximum number of points.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>

#include "platform/qt/chart/ChartWidget.h"

namespace vorlane::platform {
namespace {

constexpr int mostPoints = 600;
constexpr QSize usualSize(308, 110);  // in the popover

using Shape = std::int64_t (*)(int);

std::int64_t chargedAndUsed(int index)
{
    const int phase = index % 120;
    return phase < 40 ? 20 + 2 * phase : 140 - phase;
}

// Jumps at every point, for the longest possible line.
std::int64_t zigzag(int index)
{
    return index % 2 == 0 ? 0 : 100;
}

// Seven days, each a separate segment.
ChartContent week(Shape shape, int shift)
{
    constexpr double day = 86400;
    constexpr double until = 1.8e9;
    ChartContent content{.notice = std::nullopt,
                         .from = {until - 7 * day},
                         .until = {until},
                         .timeLabel = "Time",
                         .valueLabel = "Charge",
                         .marks = {{0, "0%"}, {50, "50%"}, {100, "100%"}},
                         .points = {}};
    for (int i = 0; i < mostPoints; ++i) {
        content.points.push_back({.id = i,
                                  .date = {until - 7 * day + i * 7 * day / mostPoints},
                                  .pct = shape(i + shift),
                                  .seg = i * 7 / mostPoints});
    }
    return content;
}

// Each redraw has new content, so that no cached drawing helps.
void redrawOfTheChart(benchmark::State& state, Shape shape)
{
    const auto scale = static_cast<double>(state.range(0));
    QImage picture((QSizeF(usualSize) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    ChartWidget chart;
    chart.setTheme(Theme::of(QApplication::palette(), QApplication::font(), std::nullopt));
    chart.resize(usualSize);

    int shift = 0;
    for ([[maybe_unused]] const auto _ : state) {
        state.PauseTiming();
        const auto content = week(shape, shift++);
        state.ResumeTiming();
        chart.setContent(content);
        chart.render(&picture);
    }
}
BENCHMARK_CAPTURE(redrawOfTheChart, week, chargedAndUsed)
    ->Arg(1)
    ->Arg(2)
    ->ArgName("scale")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(redrawOfTheChart, zigzag, zigzag)
    ->Arg(1)
    ->Arg(2)
    ->ArgName("scale")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorlane::platform

int main(int argc, char** argv)
{
    (void)qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
