#include "platform/linux/tray/icon/SymbolMask.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <numeric>

#include "platform/linux/base/Installation.h"
#include "platform/linux/tray/icon/SymbolPixmaps.h"

namespace vorlane::platform {
namespace {

const std::vector<std::string> symbols{
    "battery.0", "battery.25",         "battery.50",       "battery.75", "battery.100",
    "powerplug", "battery.100percent", "battery.100.bolt", "bolt.fill",  "powerplug.fill"};

double mean(const std::vector<std::uint8_t>& mask)
{
    return std::accumulate(mask.begin(), mask.end(), 0.0) / static_cast<double>(mask.size());
}

TEST(SymbolMaskTest, HasEverySymbolAtEverySize)
{
    for (const auto& symbol : symbols) {
        EXPECT_TRUE(hasSymbolMask(symbol)) << symbol;
        for (const auto size : pixmapSizes) {
            const auto mask = symbolMask(symbol, size);
            ASSERT_EQ(mask.size(), pixelsOf(size)) << symbol;
            EXPECT_GT(mean(mask), 255 / 20.0) << symbol << " at " << size;
        }
    }
}

TEST(SymbolMaskTest, HasNoOtherSymbol)
{
    for (const auto* const name : {"", "battery", "battery.42", "BATTERY.0", "../battery.0"}) {
        EXPECT_FALSE(hasSymbolMask(name)) << name;
        EXPECT_TRUE(symbolMask(name, 22).empty()) << name;
    }
}

TEST(SymbolMaskTest, IsEmptyForASizeOutOfRange)
{
    for (const int size : {-1, 0, 513}) EXPECT_TRUE(symbolMask("battery.0", size).empty()) << size;
}

TEST(SymbolMaskTest, FillsTheBatteryMoreTheFullerItIs)
{
    const std::vector<std::string> levels{"battery.0", "battery.25", "battery.50", "battery.75",
                                          "battery.100"};

    for (const auto size : pixmapSizes) {
        for (std::size_t i = 1; i < levels.size(); ++i) {
            EXPECT_GT(mean(symbolMask(levels[i], size)), mean(symbolMask(levels[i - 1], size)));
        }
    }
}

TEST(SymbolMaskTest, LeavesTheMiddleOfAnEmptyBatteryEmpty)
{
    for (const auto size : pixmapSizes) {
        const auto side = static_cast<std::size_t>(size);
        const auto middle = side / 2 * side + side / 2;
        EXPECT_EQ(symbolMask("battery.0", size)[middle], 0) << size;
        EXPECT_EQ(symbolMask("battery.100", size)[middle], 255) << size;
    }
}

TEST(SymbolMaskTest, ScalesToAnyOtherSize)
{
    const auto drawn = mean(symbolMask("battery.75", 96));

    for (const int size : {1, 8, 17, 20, 28, 95, 97, 192, 512}) {
        const auto mask = symbolMask("battery.75", size);
        ASSERT_EQ(mask.size(), pixelsOf(size));
        EXPECT_NEAR(mean(mask), drawn, 1.0) << size;
    }
}

TEST(SymbolMaskTest, KeepsEachPartInPlaceWhenScaled)
{
    const auto mask = symbolMask("battery.0", 20);

    EXPECT_EQ(mask[10 * 20 + 10], 0);    // the empty middle
    EXPECT_EQ(mask[0], 0);               // outside
    EXPECT_GT(mask[4 * 20 + 10], 150);   // the upper edge of the body
    EXPECT_GT(mask[15 * 20 + 10], 150);  // the lower edge of the body
}

TEST(SymbolMaskTest, NamesTheThemeIconAfterTheSymbol)
{
    EXPECT_EQ(symbolIconName("battery.100.bolt"), "vorlane-battery-100-bolt-symbolic");
}

// The tests are laid out like the program: bin/ and share/ side by side.
TEST(SymbolMaskTest, NamesAnInstalledThemeIconForEverySymbol)
{
    const auto theme = installedPath("share/icons/hicolor/scalable/status");

    for (const auto& symbol : symbols) {
        const auto file = symbolIconName(symbol) + ".svg";
        EXPECT_TRUE(exists(theme / file)) << file;
    }
}

}  // namespace
}  // namespace vorlane::platform
