#include <gtest/gtest.h>

#include "tests/App/HistoryStoreFixture.h"

namespace vorlane {
namespace {

using namespace std::chrono_literals;

using PluggedSinceEstimateTest = HistoryStoreFixture;

TEST_F(PluggedSinceEstimateTest, EstimatesNothingFromAnEmptyHistory)
{
    EXPECT_EQ(open().pluggedSinceEstimate(start), std::nullopt);
}

TEST_F(PluggedSinceEstimateTest, EstimatesNothingWhenItWasLastOnBattery)
{
    auto store = open();
    store.samples = {plugged(start - 2min), at(start - 1min, 50)};

    EXPECT_EQ(store.pluggedSinceEstimate(start), std::nullopt);
}

TEST_F(PluggedSinceEstimateTest, TrustsALastSampleLessThanTenMinutesOld)
{
    auto store = open();
    store.samples = {plugged(start - 60s), plugged(start)};

    EXPECT_EQ(store.pluggedSinceEstimate(start + 599s), start - 60s);
    EXPECT_EQ(store.pluggedSinceEstimate(start + 600s), std::nullopt);
    EXPECT_EQ(store.pluggedSinceEstimate(start + 24h), std::nullopt);
    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 60s);
}

TEST_F(PluggedSinceEstimateTest, WalksBackOverGapsOfUpTo15Minutes)
{
    auto store = open();
    store.samples = {plugged(start - 2701s), plugged(start - 1800s), plugged(start - 900s),
                     plugged(start)};

    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 1800s);
}

TEST_F(PluggedSinceEstimateTest, WalksBackToTheLastSampleOnBattery)
{
    auto store = open();
    store.samples = {plugged(start - 4min), at(start - 3min, 50), plugged(start - 2min),
                     plugged(start - 1min)};

    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 2min);
}

TEST_F(PluggedSinceEstimateTest, WalksBackToTheFirstSample)
{
    auto store = open();
    store.samples = {plugged(start - 1min)};
    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 1min);

    store.samples = {plugged(start - 2min), plugged(start - 1min)};
    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 2min);
}

TEST_F(PluggedSinceEstimateTest, FollowsTheAdapterAndNotCharging)
{
    auto store = open();
    auto full = plugged(start - 1min);
    full.c = false;
    store.samples = {plugged(start - 2min), full};

    EXPECT_EQ(store.pluggedSinceEstimate(start), start - 2min);
}

}  // namespace
}  // namespace vorlane
