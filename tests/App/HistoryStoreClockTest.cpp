#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/EncodedSamples.h"
#include "tests/App/HistoryStoreFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;
using namespace std::chrono_literals;

using HistoryStoreClockTest = HistoryStoreFixture;

TEST_F(HistoryStoreClockTest, SetsAsideSamplesLaterThanTheClock)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 1h, 2), at(start + 1h + 1ms, 3), at(start + 2h, 4)};

    store.clockWasSet(-1h, start + 1h);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 1h, 2)));
}

TEST_F(HistoryStoreClockTest, SetsAsideSamplesOlderThanThirtyDays)
{
    auto store = open();
    store.samples = {at(start - 1ms, 1), at(start, 2), at(start + 1h, 3)};

    store.clockWasSet(29 * 24h, start + 30 * 24h);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 2), at(start + 1h, 3)));
}

TEST_F(HistoryStoreClockTest, SetsAsideSamplesLaterThanAReading)
{
    auto store = open();
    store.record(onBattery(50), {.at = start + 1h});

    store.record(onBattery(49), {.at = start});
    EXPECT_THAT(store.samples, ElementsAre(at(start, 49)));

    store.clockWasSet(1h, start + 1h);
    EXPECT_THAT(store.samples, ElementsAre(at(start, 49), at(start + 1h, 50)));
}

TEST_F(HistoryStoreClockTest, RestoresSamplesInOrder)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 2h, 3), at(start + 4h, 5)};
    store.clockWasSet(-4h, start);
    store.record(onBattery(2), {.at = start + 1h});

    store.clockWasSet(2h, start + 3h);
    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 1h, 2), at(start + 2h, 3)));

    store.clockWasSet(2h, start + 5h);
    EXPECT_THAT(store.samples,
                ElementsAre(at(start, 1), at(start + 1h, 2), at(start + 2h, 3), at(start + 4h, 5)));
}

TEST_F(HistoryStoreClockTest, DoesNotRestoreSamplesOfAClockThatWasAhead)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 3h, 9)};
    store.clockWasSet(-3h, start);
    store.record(onBattery(2), {.at = start + 4h});

    store.clockWasSet(1s, start + 4h + 1s);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 4h, 2)));
}

TEST_F(HistoryStoreClockTest, DiscardsAfterADayEvenIfTheClockIsSetAgain)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 48h, 9)};
    store.clockWasSet(-48h, start);

    store.clockWasSet(1s, start + 23h);
    store.record(onBattery(2), {.at = start + 25h});
    store.clockWasSet(48h, start + 73h);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 25h, 2)));
}

TEST_F(HistoryStoreClockTest, MeasuresTheDayInElapsedTime)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 48h, 9)};
    store.clockWasSet(-48h, start);

    store.clockWasSet(20h, start + 20h);
    store.record(onBattery(2), {.at = start + 30h});
    store.clockWasSet(28h, start + 58h);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 30h, 2), at(start + 48h, 9)));
}

TEST_F(HistoryStoreClockTest, LeavesAFileThatMostlyLiesInTheFuture)
{
    const std::vector all{at(start, 1), at(start + 1h, 2), at(start + 2h, 3)};
    auto store = openOn(encode(all), start - 48h);
    store.record(onBattery(4), {.at = start - 48h});
    store.record(charging(4), {.at = start - 47h});
    store.save(start - 46h);
    EXPECT_EQ(saved(), all);

    store.clockWasSet(51h, start + 5h);
    store.save(start + 5h);
    EXPECT_THAT(saved(), SizeIs(5));
    EXPECT_THAT(saved(), IsSupersetOf(all));
}

TEST_F(HistoryStoreClockTest, OverwritesAFileInTheFutureAfterADay)
{
    auto store = openOn(encode({at(start, 1), at(start + 1h, 2)}), start - 48h);
    store.record(onBattery(4), {.at = start - 48h});

    store.record(onBattery(5), {.at = start - 23h});

    EXPECT_THAT(saved(), ElementsAre(at(start - 48h, 4), at(start - 23h, 5)));
}

TEST_F(HistoryStoreClockTest, OverwritesAFileThatHalfLiesInTheFuture)
{
    auto store = openOn(encode({at(start, 1), at(start + 1h, 2)}));

    store.record(onBattery(4), {.at = start + 30min});

    EXPECT_THAT(saved(), ElementsAre(at(start, 1), at(start + 30min, 4)));
}

TEST_F(HistoryStoreClockTest, DiscardsSamplesSetAsideAfterADay)
{
    const auto afterLookingAt = [&](Date date) {
        auto store = open();
        store.samples = {at(start, 1), at(start + 48h, 3)};
        store.clockWasSet(-48h, start);
        store.record(onBattery(2), {.at = date});
        store.clockWasSet(48h, date + 48h);
        return store.samples;
    };

    const Date day = start + 24h;
    EXPECT_THAT(afterLookingAt(day), ElementsAre(at(start, 1), at(day, 2), at(start + 48h, 3)));
    EXPECT_THAT(afterLookingAt(day + 1ms), ElementsAre(at(start, 1), at(day + 1ms, 2)));
}

TEST_F(HistoryStoreClockTest, DoesNotExtendTheDayForReadingsInBetween)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 48h, 9)};
    store.clockWasSet(-48h, start);

    store.record(onBattery(2), {.at = start + 20h});
    store.record(onBattery(3), {.at = start + 20h});
    store.record(onBattery(4), {.at = start + 25h});
    store.clockWasSet(48h, start + 73h);

    EXPECT_THAT(store.samples, ElementsAre(at(start, 1), at(start + 20h, 2), at(start + 20h, 3),
                                           at(start + 25h, 4)));
}

TEST_F(HistoryStoreClockTest, DiscardsSamplesSetAsideWhenCleared)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 2h, 2)};
    store.clockWasSet(-2h, start);

    store.clear();
    store.clockWasSet(2h, start + 2h);

    EXPECT_THAT(store.samples, IsEmpty());
}

TEST_F(HistoryStoreClockTest, SavesAfterFiveElapsedMinutesWhenTheClockIsSet)
{
    for (const Seconds set : {Seconds{1h}, Seconds{-1h}}) {
        files.contents.clear();
        auto store = open();
        store.record(onBattery(50), {.at = start});
        files.replacements = 0;

        store.clockWasSet(set, start + set);
        store.record(onBattery(49), {.at = start + set + 300s});
        EXPECT_EQ(files.replacements, 0);

        store.record(onBattery(48), {.at = start + set + 301s});
        EXPECT_EQ(files.replacements, 1);
    }
}

}  // namespace
}  // namespace vorlane
