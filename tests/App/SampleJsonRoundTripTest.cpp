#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "tests/App/EncodedSamples.h"
#include "tests/support/Printing.h"

namespace vorlane {
namespace {

using testing::Optional;

TEST(SampleJsonRoundTripTest, ReadsBackExtremeValues)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    std::vector<Sample> samples;
    for (const double t : {0.0,
                           0.1,
                           1767603600.123456,
                           4503599627370496.5,
                           1e15,
                           1e16,
                           1e17,
                           0x1p63,
                           -0x1p63,
                           0x1p64,
                           1e19,
                           1e20,
                           1.2345678901234567e20,
                           1e21,
                           1e22,
                           1e23,
                           -1e20,
                           1e300,
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::lowest(),
                           5e-324,
                           1e-7}) {
        samples.push_back({.t = t, .p = least, .c = true, .a = false});
        samples.push_back({.t = -t, .p = most, .c = false, .a = true});
    }

    EXPECT_THAT(decodeSamples(encode(samples)), Optional(samples)) << encode(samples);
}

// -0.0 equals 0.0, but losing the sign would make a second save write a different file.
TEST(SampleJsonRoundTripTest, KeepsTheSignOfZero)
{
    const std::vector<Sample> samples{{.t = -0.0, .p = 50, .c = false, .a = false}};

    const auto decoded = decodeSamples(encode(samples));

    ASSERT_THAT(decoded, Optional(samples));
    EXPECT_TRUE(std::signbit(decoded->front().t));
    EXPECT_EQ(encode(*decoded), encode(samples));
}

TEST(SampleJsonRoundTripTest, ReadsBackEverySample)
{
    std::mt19937_64 random(20260105);
    for (int round = 0; round < 200; ++round) {
        std::vector<Sample> samples(random() % 100);
        for (auto& sample : samples) {
            const auto bits = std::bit_cast<double>(random());
            const bool anyDouble = random() % 2 == 0 && std::isfinite(bits);
            sample = {
                .t = anyDouble ? bits : static_cast<double>(random() % 4'000'000'000) / 1000.0,
                .p = anyDouble ? static_cast<std::int64_t>(random())
                               : static_cast<std::int64_t>(random() % 101),
                .c = random() % 2 == 0,
                .a = random() % 2 == 0};
        }
        ASSERT_TRUE(canEncode(samples));
        ASSERT_THAT(decodeSamples(encode(samples)), Optional(samples)) << "round " << round;
    }
}

TEST(SampleJsonRoundTripTest, SurvivesDamagedText)
{
    std::mt19937 random(20260105);
    const auto text =
        encode(std::vector<Sample>(20, Sample{.t = 1.5, .p = 50, .c = true, .a = false}));
    for (int round = 0; round < 2000; ++round) {
        auto damaged = text;
        for (auto hits = random() % 4 + 1; hits > 0; --hits) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        const auto samples = decodeSamples(damaged);
        if (!samples) continue;
        EXPECT_THAT(decodeSamples(encode(*samples)), Optional(*samples)) << damaged;
    }
}

}  // namespace
}  // namespace vorlane
