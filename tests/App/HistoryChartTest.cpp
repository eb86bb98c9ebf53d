#include "App/HistoryChart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

class HistoryChartTest : public AppModelFixture {
protected:
    static constexpr Seconds wholeDay{86400};

    // Records samples at these seconds after the left edge of a one-day chart.
    void record(const std::vector<double>& seconds)
    {
        model->history.samples.clear();
        for (const auto second : seconds) {
            const auto date = edge + Seconds{second};
            model->history.samples.push_back(
                {.t = date.secondsSince1970, .p = 50, .c = false, .a = false});
        }
    }

    void recordEach(Seconds step, std::size_t count)
    {
        std::vector<double> seconds;
        for (std::size_t i = 0; i < count; ++i) {
            seconds.push_back(step.count() * static_cast<double>(i));
        }
        record(seconds);
    }

    std::vector<std::int64_t> segments() const
    {
        std::vector<std::int64_t> segments;
        for (const auto& point : chart().points(edge)) segments.push_back(point.seg);
        return segments;
    }

    std::vector<std::int64_t> ids() const
    {
        std::vector<std::int64_t> ids;
        for (const auto& point : chart().points(edge)) ids.push_back(point.id);
        return ids;
    }

    HistoryChart chart() const { return {.model = model, .days = 1}; }

    const Date edge = start - wholeDay;
    std::shared_ptr<AppModel> model = makeModel();
};

TEST_F(HistoryChartTest, ShowsOnlyTheNoticeWithoutSamples)
{
    const auto content = chart().content(start);

    EXPECT_EQ(content.notice, "Collecting history\u2026 a graph appears after a few minutes.");
    EXPECT_THAT(content.points, IsEmpty());
    EXPECT_THAT(content.marks, IsEmpty());
}

TEST_F(HistoryChartTest, ShowsOnlyTheNoticeForOneSample)
{
    record({60});

    const auto content = chart().content(start);

    EXPECT_TRUE(content.notice);
    EXPECT_THAT(content.points, IsEmpty());
}

TEST_F(HistoryChartTest, ShowsOnlyTheNoticeWhenOneSampleLiesInTheSpan)
{
    record({-60, 60});

    EXPECT_TRUE(chart().content(start).notice);
}

TEST_F(HistoryChartTest, JoinsTwoSamplesFiveMinutesApart)
{
    record({0, 300});
    model->history.samples[1].p = 51;

    const auto content = chart().content(start);

    EXPECT_EQ(content.notice, std::nullopt);
    EXPECT_THAT(content.points,
                ElementsAre(ChartPoint{.id = 0, .date = edge, .pct = 50, .seg = 0},
                            ChartPoint{.id = 1, .date = edge + 300s, .pct = 51, .seg = 0}));
}

TEST_F(HistoryChartTest, SpansItsDaysUpToNow)
{
    record({0, 300});

    const auto day = chart().content(start);
    EXPECT_EQ(day.from, edge);
    EXPECT_EQ(day.until, start);

    const auto week = HistoryChart{.model = model, .days = 7}.content(start);
    EXPECT_EQ(week.from, start - 7 * wholeDay);
    EXPECT_EQ(week.until, start);
}

TEST_F(HistoryChartTest, SetsItsSpanEvenWithTheNotice)
{
    const auto content = chart().content(start);

    EXPECT_EQ(content.from, edge);
    EXPECT_EQ(content.until, start);
}

TEST_F(HistoryChartTest, NumbersPointsFromTheFirstSampleInTheSpan)
{
    record({-120, -60, 0, 60});

    EXPECT_THAT(ids(), ElementsAre(0, 1));
    EXPECT_EQ(chart().points(edge).front().date, edge);
}

TEST_F(HistoryChartTest, HasAPercentScaleWithThreeMarks)
{
    record({0, 300});

    const auto content = chart().content(start);

    EXPECT_EQ(content.lowest, 0);
    EXPECT_EQ(content.highest, 100);
    EXPECT_THAT(content.marks, ElementsAre(ChartMark{.value = 0, .label = "0%"},
                                           ChartMark{.value = 50, .label = "50%"},
                                           ChartMark{.value = 100, .label = "100%"}));
    EXPECT_EQ(content.timeLabel, "Time");
    EXPECT_EQ(content.valueLabel, "Charge");
}

TEST_F(HistoryChartTest, BreaksTheLineWhereSamplesAreMissing)
{
    record({0, 60, 2000});

    EXPECT_THAT(segments(), ElementsAre(0, 0, 1));
}

TEST_F(HistoryChartTest, NumbersTheSegments)
{
    record({0, 1000, 1060, 3000, 5000});

    EXPECT_THAT(segments(), ElementsAre(0, 1, 1, 2, 3));
}

TEST_F(HistoryChartTest, BreaksTheLineOnlyAboveTheLongestGap)
{
    record({0, 960});
    EXPECT_THAT(segments(), ElementsAre(0, 0));

    record({0, 961});
    EXPECT_THAT(segments(), ElementsAre(0, 1));
}

TEST_F(HistoryChartTest, AllowsThinnedSamplesALongerGap)
{
    std::vector<double> seconds(599);
    std::iota(seconds.begin(), seconds.end(), 0.0);
    seconds.push_back(598 + 1020);
    record(seconds);
    EXPECT_EQ(segments().back(), 0);

    ++model->history.samples.back().t;
    EXPECT_EQ(segments().back(), 1);
}

TEST_F(HistoryChartTest, MeasuresTheGapBetweenPlottedSamples)
{
    // Every other sample is plotted: 598 and 600, 1021 s apart, but not 599 between them.
    std::vector<double> seconds(599);
    std::iota(seconds.begin(), seconds.end(), 0.0);
    seconds.push_back(598 + 1000);
    seconds.push_back(598 + 1021);
    record(seconds);

    EXPECT_EQ(ids().back(), 600);
    EXPECT_EQ(segments().back(), 1);
}

TEST_F(HistoryChartTest, PlotsEachOf299Samples)
{
    recordEach(60s, 299);

    EXPECT_THAT(ids(), SizeIs(299));
    EXPECT_THAT(segments(), Each(0));
}

TEST_F(HistoryChartTest, PlotsEachOf599Samples)
{
    recordEach(60s, 599);

    EXPECT_THAT(ids(), SizeIs(599));
}

TEST_F(HistoryChartTest, PlotsEveryOtherOf600SamplesAndTheLast)
{
    recordEach(60s, 600);
    std::vector<std::int64_t> expected;
    for (std::int64_t id = 0; id <= 598; id += 2) expected.push_back(id);
    expected.push_back(599);

    EXPECT_EQ(ids(), expected);
    EXPECT_THAT(segments(), Each(0));
}

TEST_F(HistoryChartTest, DoesNotRepeatALastSampleOnTheStride)
{
    recordEach(60s, 601);

    EXPECT_THAT(ids(), SizeIs(301));
    EXPECT_EQ(ids().back(), 600);
}

TEST_F(HistoryChartTest, PlotsAtMost600PointsOfAnyHistory)
{
    for (const std::size_t count : {899U, 1439U, 10079U, 43199U}) {
        recordEach(1s, count);
        EXPECT_LE(ids().size(), 600U) << count;
        EXPECT_GE(ids().size(), 300U) << count;
    }
}

TEST_F(HistoryChartTest, ShowsOnlyTheNoticeForZeroDays)
{
    record({0, 300});

    EXPECT_TRUE((HistoryChart{.model = model, .days = 0}.content(start).notice));
}

using HistoryChartDeathTest = HistoryChartTest;

TEST_F(HistoryChartDeathTest, StopsForNegativeDays)
{
    const HistoryChart backwards{.model = model, .days = -1};

    EXPECT_DEATH((void)backwards.content(start), "chart");
}

}  // namespace
}  // namespace vorlane
