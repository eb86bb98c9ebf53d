#include "platform/linux/tray/icon/SymbolIcons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/tray/icon/StatusPicture.h"
#include "platform/linux/tray/icon/SymbolPixmaps.h"

namespace vorlane::platform {
namespace {

const std::vector<std::string> symbols{
    "battery.0", "battery.25",         "battery.50",       "battery.75", "battery.100",
    "powerplug", "battery.100percent", "battery.100.bolt", "bolt.fill",  "powerplug.fill"};

std::vector<std::uint8_t> pixmap(const std::string& symbol, int size)
{
    return StatusPicture{.symbol = symbol, .lines = {}, .ink = {}, .plate = {}}.draw(size).argb;
}

// The sum of all alpha values: how much is drawn.
std::size_t opacity(const std::vector<std::uint8_t>& argb)
{
    std::size_t sum = 0;
    for (std::size_t i = 0; i < argb.size(); i += 4) sum += argb[i];
    return sum;
}

TEST(SymbolIconsTest, HasEverySymbolThatABatteryCanShow)
{
    const SymbolIcons icons;

    for (const auto& symbol : symbols) EXPECT_TRUE(icons.hasSymbol(symbol)) << symbol;
}

TEST(SymbolIconsTest, HasNoOtherSymbol)
{
    const SymbolIcons icons;

    for (const auto* const name : {"", "battery", "battery.42", "BATTERY.0", "../battery.0"}) {
        EXPECT_FALSE(icons.hasSymbol(name)) << name;
        EXPECT_TRUE(pixmap(name, 16).empty()) << name;
    }
}

TEST(SymbolIconsTest, NamesTheIconAfterTheSymbol)
{
    const SymbolIcons icons;

    EXPECT_EQ(icons.iconName("battery.100.bolt"), "vorlane-battery-100-bolt-symbolic");
}

TEST(SymbolIconsTest, DrawsEverySymbolAtEverySize)
{
    for (const auto& symbol : symbols) {
        for (const auto size : pixmapSizes) {
            const auto argb = pixmap(symbol, size);
            ASSERT_EQ(argb.size(), pixelsOf(size) * 4) << symbol;
            EXPECT_GT(opacity(argb), argb.size() / 4 * 255 / 20) << symbol << " at " << size;
        }
    }
}

TEST(SymbolIconsTest, FillsTheBatteryMoreTheFullerItIs)
{
    const std::vector<std::string> levels{"battery.0", "battery.25", "battery.50", "battery.75",
                                          "battery.100"};

    for (const auto size : pixmapSizes) {
        for (std::size_t i = 1; i < levels.size(); ++i) {
            EXPECT_GT(opacity(pixmap(levels[i], size)), opacity(pixmap(levels[i - 1], size)));
        }
    }
}

TEST(SymbolIconsTest, LeavesTheMiddleOfAnEmptyBatteryEmpty)
{
    for (const auto size : pixmapSizes) {
        const auto side = static_cast<std::size_t>(size);
        const auto middle = (side / 2 * side + side / 2) * 4;
        EXPECT_EQ(pixmap("battery.0", size)[middle], 0) << size;
        EXPECT_EQ(pixmap("battery.100", size)[middle], 255) << size;
    }
}

TEST(SymbolIconsTest, ColoursEveryPixelAlike)
{
    const auto argb = pixmap("powerplug.fill", 22);

    std::set<std::uint8_t> channels;
    for (std::size_t i = 0; i < argb.size(); ++i) {
        if (i % 4 != 0) channels.insert(argb[i]);
    }
    EXPECT_EQ(channels.size(), 1U);
}

// The tests are laid out like the program: bin/ and share/ side by side.
TEST(SymbolIconsTest, FindsAThemeWithAFileForEverySymbol)
{
    const SymbolIcons icons;
    const std::filesystem::path theme = icons.themePath();

    ASSERT_EQ(theme.filename(), "icons");
    for (const auto& symbol : symbols) {
        const auto file = icons.iconName(symbol) + ".svg";
        EXPECT_TRUE(exists(theme / "hicolor" / "scalable" / "status" / file)) << file;
    }
}

}  // namespace
}  // namespace vorlane::platform
