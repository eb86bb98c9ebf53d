#include "App/HistoryStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/HistoryStoreFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

using HistoryStoreTest = HistoryStoreFixture;

// What becomes a sample

TEST_F(HistoryStoreTest, RecordsTheReadingAndItsTime)
{
    auto store = open();

    store.record(charging(80), {.at = start + 250ms});
    store.record(onBattery(79), {.at = start + 1min});

    EXPECT_THAT(store.samples, ElementsAre(Sample{start.secondsSince1970 + 0.25, 80, true, true},
                                           Sample{start.secondsSince1970 + 60, 79, false, false}));
}

TEST_F(HistoryStoreTest, RecordsNothingWithoutABattery)
{
    auto store = open();
    auto gone = charging(80);
    gone.hasBattery = false;

    store.record(gone, {.at = start, .force = true});

    EXPECT_THAT(store.samples, IsEmpty());
    EXPECT_EQ(files.replacements, 0);
    EXPECT_EQ(store.lastSave, distantPast);
}

TEST_F(HistoryStoreTest, RecordsTheFirstReadingUnforced)
{
    auto store = open();

    store.record(BatteryState{onBattery(0)}, {.at = start});

    EXPECT_THAT(store.samples, ElementsAre(at(start, 0)));
}

TEST_F(HistoryStoreTest, RecordsAnEqualReadingOnlyWhenForced)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});

    store.record(onBattery(50), {.at = start + 1min});
    EXPECT_EQ(store.samples.size(), 1U);

    store.record(onBattery(50), {.at = start + 2min, .force = true});
    EXPECT_THAT(store.samples, ElementsAre(at(start, 50), at(start + 2min, 50)));
}

TEST_F(HistoryStoreTest, RecordsEachChangeThatTheChartShows)
{
    for (const auto& changed : {charging(51), charging(49), onPower(50), onBattery(50)}) {
        files.contents.clear();
        auto store = open();
        store.record(charging(50), {.at = start});

        store.record(changed, {.at = start + 1s});

        EXPECT_EQ(store.samples.size(), 2U);
    }
}

TEST_F(HistoryStoreTest, IgnoresAChangeThatTheChartDoesNotShow)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});
    auto other = onBattery(50);
    other.temperatureC = 40;
    other.minutesToEmpty = 90;
    other.isCharged = true;

    store.record(other, {.at = start + 1s});

    EXPECT_EQ(store.samples.size(), 1U);
}

TEST_F(HistoryStoreTest, NeitherPrunesNorSavesWithoutANewSample)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});
    files.replacements = 0;

    store.record(onBattery(50), {.at = start + 31 * 24h});

    EXPECT_THAT(store.samples, ElementsAre(at(start, 50)));
    EXPECT_EQ(files.replacements, 0);
}

TEST_F(HistoryStoreTest, KeepsExactlyThirtyDays)
{
    auto store = open();
    const Date old = start - 30 * 24h;
    store.samples = {at(old - 2ms, 1), at(old - 1ms, 2), at(old, 3), at(old + 1ms, 4)};

    store.record(onBattery(50), {.at = start});

    EXPECT_THAT(store.samples, ElementsAre(at(old, 3), at(old + 1ms, 4), at(start, 50)));
}

TEST_F(HistoryStoreTest, DropsAllSamplesThatAreTooOld)
{
    auto store = open();
    store.samples = {at(start - 32 * 24h, 1), at(start - 31 * 24h, 2)};

    store.record(onBattery(50), {.at = start});

    EXPECT_THAT(store.samples, ElementsAre(at(start, 50)));
}

// When it saves

TEST_F(HistoryStoreTest, SavesTheFirstSampleAtOnce)
{
    auto store = open();

    store.record(onBattery(50), {.at = start});

    EXPECT_EQ(file(), R"([{"t":1767603600,"p":50,"c":false,"a":false}])");
    EXPECT_EQ(store.lastSave, start);
}

TEST_F(HistoryStoreTest, DoesNotSaveAFirstSampleSoonAfterASave)
{
    auto store = open();
    store.save(start);

    store.record(onBattery(50), {.at = start + 300s});
    EXPECT_EQ(file(), "[]");

    store.samples.clear();
    store.record(onBattery(50), {.at = start + 301s});
    EXPECT_NE(file(), "[]");
}

TEST_F(HistoryStoreTest, SavesAPercentChangeAfterMoreThanFiveMinutes)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});
    const auto first = file();

    store.record(onBattery(49), {.at = start + 1min});
    store.record(onBattery(48), {.at = start + 300s});
    EXPECT_EQ(file(), first);
    EXPECT_EQ(store.lastSave, start);

    store.record(onBattery(47), {.at = start + 300s + 1ms});
    EXPECT_EQ(store.lastSave, start + 300s + 1ms);
    EXPECT_THAT(saved(), ElementsAre(at(start, 50), at(start + 1min, 49), at(start + 300s, 48),
                                     at(start + 300s + 1ms, 47)));
}

TEST_F(HistoryStoreTest, DoesNotSaveSoonerForAForcedSample)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});
    files.replacements = 0;

    store.record(onBattery(50), {.at = start + 1min, .force = true});
    store.record(onBattery(49), {.at = start + 2min, .force = true});

    EXPECT_EQ(store.samples.size(), 3U);
    EXPECT_EQ(files.replacements, 0);
}

TEST_F(HistoryStoreTest, SavesAPowerChangeAtOnce)
{
    auto store = open();
    store.record(onBattery(50), {.at = start});

    store.record(onPower(50), {.at = start + 1s});
    EXPECT_EQ(saved().size(), 2U);
    store.record(charging(50), {.at = start + 2s});
    EXPECT_EQ(saved().size(), 3U);
    store.record(onPower(50), {.at = start + 3s});
    EXPECT_EQ(saved().size(), 4U);
    store.record(onBattery(50), {.at = start + 4s});
    EXPECT_EQ(saved().size(), 5U);
    EXPECT_EQ(store.lastSave, start + 4s);
}

TEST_F(HistoryStoreTest, DoesNotRetryAFailedSaveBeforeTheNextIsDue)
{
    auto store = open();
    files.full = true;
    store.record(onBattery(50), {.at = start});
    EXPECT_EQ(file(), std::nullopt);
    EXPECT_EQ(store.lastSave, start);
    files.full = false;

    store.record(onBattery(49), {.at = start + 300s});
    EXPECT_EQ(file(), std::nullopt);

    store.record(onBattery(48), {.at = start + 301s});
    EXPECT_EQ(saved().size(), 3U);
}

// Queries

TEST_F(HistoryStoreTest, ReturnsTheSamplesSinceADate)
{
    auto store = open();
    store.samples = {at(start, 1), at(start + 1s, 2), at(start + 1s, 3), at(start + 2s, 4)};
    const auto since = [&](Date date) {
        const auto found = store.samplesSince(date);
        return std::vector(found.begin(), found.end());
    };

    EXPECT_EQ(since(distantPast), store.samples);
    EXPECT_EQ(since(start), store.samples);
    EXPECT_THAT(since(start + 1ms),
                ElementsAre(at(start + 1s, 2), at(start + 1s, 3), at(start + 2s, 4)));
    EXPECT_THAT(since(start + 1s),
                ElementsAre(at(start + 1s, 2), at(start + 1s, 3), at(start + 2s, 4)));
    EXPECT_THAT(since(start + 2s), ElementsAre(at(start + 2s, 4)));
    EXPECT_THAT(since(start + 3s), IsEmpty());
}

TEST_F(HistoryStoreTest, ReturnsNoSamplesOfAnEmptyHistory)
{
    EXPECT_THAT(open().samplesSince(distantPast), IsEmpty());
}

}  // namespace
}  // namespace vorlane
