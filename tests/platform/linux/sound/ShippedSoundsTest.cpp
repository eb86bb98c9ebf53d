// Checks the generated sounds for what a listener would notice.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numbers>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace vorlane::platform {
namespace {

constexpr std::array names{"glass",  "ping", "hero",  "submarine", "funk", "basso",  "blow",
                           "bottle", "frog", "morse", "pop",       "purr", "sosumi", "tink"};
constexpr double rate = 44'100;

// Empty unless the file is mono with 16 bits.
std::vector<double> samples(const std::string& name)
{
    std::ifstream file(VORLANE_SOUNDS "/stereo/vorlane-" + name + ".wav", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::string format("fmt \x10\0\0\0\1\0\1\0\x44\xAC\0\0\x88\x58\1\0\2\0\x10\0data", 28);
    if (bytes.size() < 44 || bytes.substr(8, 4) != "WAVE" || bytes.substr(12, 28) != format)
        return {};

    std::vector<std::int16_t> raw((bytes.size() - 44) / 2);
    std::memcpy(raw.data(), bytes.data() + 44, raw.size() * 2);
    std::vector<double> found(raw.size());
    std::ranges::transform(raw, found.begin(), [](std::int16_t value) { return value / 32'768.0; });
    return found;
}

double loudest(const std::vector<double>& sound)
{
    return std::accumulate(sound.begin(), sound.end(), 0.0,
                           [](double most, double x) { return std::max(most, std::abs(x)); });
}

// The part of the sound in a third of an octave around the pitch.
std::vector<double> resonance(std::vector<double> sound, double pitch)
{
    const double radius = std::exp(-std::numbers::pi * 0.18 * pitch / rate);
    const double angle = 2 * std::numbers::pi * pitch / rate;
    const double turn = 2 * radius * std::cos(angle);
    const double gain = 2 * (1 - radius) * std::sin(angle);  // gives the pitch a gain of 1
    double one = 0;
    double two = 0;
    for (double& x : sound) {
        x += turn * one - radius * radius * two;
        two = std::exchange(one, x);
        x *= gain;
    }
    return sound;
}

// Filtered twice, for a narrow band.
double levelAt(const std::vector<double>& sound, double pitch)
{
    const auto heard = resonance(resonance(sound, pitch), pitch);
    return std::sqrt(std::inner_product(heard.begin(), heard.end(), heard.begin(), 0.0));
}

// The levels at each third of an octave from 50 Hz, normalised.
std::array<double, 24> spectrum(const std::vector<double>& sound)
{
    std::array<double, 24> levels{};
    double whole = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = levelAt(sound, 50 * std::pow(2.0, static_cast<double>(i) / 3));
        whole += levels[i] * levels[i];
    }
    for (auto& level : levels) level /= std::sqrt(whole);
    return levels;
}

TEST(ShippedSoundsTest, AreShortAndEquallyLoud)
{
    for (const auto* name : names) {
        const auto sound = samples(name);
        ASSERT_FALSE(sound.empty()) << name;

        EXPECT_LT(static_cast<double>(sound.size()), rate) << name;
        EXPECT_NEAR(loudest(sound), 0.5, 0.001) << name;
    }
}

TEST(ShippedSoundsTest, AreCentredAndAudible)
{
    for (const auto* name : names) {
        const auto sound = samples(name);
        ASSERT_FALSE(sound.empty()) << name;
        const auto count = static_cast<double>(sound.size());
        const double middle = std::accumulate(sound.begin(), sound.end(), 0.0) / count;
        const double power =
            std::inner_product(sound.begin(), sound.end(), sound.begin(), 0.0) / count;

        EXPECT_LT(std::abs(middle), 0.002) << name;
        EXPECT_GT(std::sqrt(power), 0.03) << name;
    }
}

TEST(ShippedSoundsTest, BeginAndEndWithoutAClick)
{
    for (const auto* name : names) {
        const auto sound = samples(name);
        ASSERT_FALSE(sound.empty()) << name;
        EXPECT_LT(std::abs(sound.front()), 0.01) << name;
        EXPECT_LT(std::abs(sound.back()), 0.01) << name;
    }
}

TEST(ShippedSoundsTest, HaveDistinctSpectra)
{
    std::vector<std::array<double, 24>> spectra;
    spectra.reserve(names.size());
    for (const auto* name : names) spectra.push_back(spectrum(samples(name)));

    for (std::size_t one = 0; one < names.size(); ++one) {
        for (std::size_t other = one + 1; other < names.size(); ++other) {
            const double alike = std::inner_product(spectra[one].begin(), spectra[one].end(),
                                                    spectra[other].begin(), 0.0);
            EXPECT_LT(alike, 0.9) << names[one] << " and " << names[other];
        }
    }
}

}  // namespace
}  // namespace vorlane::platform
