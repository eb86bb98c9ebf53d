#include "platform/linux/tray/icon/NumberDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace vorlane::platform {
namespace {

using Lines = std::vector<std::string>;

const Lines eighty{"80"};

std::string drawn(const NumberDrawing& drawing)
{
    const auto picture = drawing.draw();
    EXPECT_EQ(picture.width(), std::max(0, drawing.size));
    EXPECT_EQ(picture.height(), std::max(0, drawing.size));
    std::string text;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) text += picture.at(x, y) ? '#' : '.';
        text += '\n';
    }
    return text;
}

int drawnPixels(const std::string& drawing)
{
    int count = 0;
    for (const char pixel : drawing) count += pixel == '#';
    return count;
}

TEST(NumberDrawingTest, PutsTheSymbolAboveTheNumber)
{
    EXPECT_EQ(drawn({.symbol = "battery.50", .lines = eighty, .size = 22}),
              "..#################...\n"
              ".#.................#..\n"
              ".#.#######.........##.\n"
              ".#.#######.........##.\n"
              ".#.#######.........##.\n"
              ".#.#######.........##.\n"
              ".#.................#..\n"
              "..#################...\n"
              "......................\n"
              "..#######...#######...\n"
              ".#########.#########..\n"
              ".##.....##.##.....##..\n"
              ".##.....##.##.....##..\n"
              ".##.....##.##.....##..\n"
              "..#######..##.....##..\n"
              "..#######..##.....##..\n"
              ".##.....##.##.....##..\n"
              ".##.....##.##.....##..\n"
              ".##.....##.##.....##..\n"
              ".##.....##.##.....##..\n"
              ".#########.#########..\n"
              "..#######...#######...\n");
}

TEST(NumberDrawingTest, KeepsOnlyThePercentageBelow18Pixels)
{
    const Lines both{"80", "3:00"};
    for (int size = 16; size < 18; ++size) {
        EXPECT_EQ(drawn({.symbol = "battery.50", .lines = both, .size = size}),
                  drawn({.symbol = "battery.50", .lines = eighty, .size = size}));
    }
    EXPECT_NE(drawn({.symbol = "battery.50", .lines = both, .size = 18}),
              drawn({.symbol = "battery.50", .lines = eighty, .size = 18}));
}

TEST(NumberDrawingTest, DrawsPercentageAndTimeInTwoLines)
{
    const auto both = drawn({.symbol = "battery.50", .lines = Lines{"80", "1:23"}, .size = 22});
    const auto other = drawn({.symbol = "battery.50", .lines = Lines{"80", "1:24"}, .size = 22});

    constexpr std::size_t fifteenRows = 345;  // with line ends
    EXPECT_EQ(both.substr(0, fifteenRows), other.substr(0, fifteenRows));
    EXPECT_NE(both.substr(fifteenRows), other.substr(fifteenRows));
}

TEST(NumberDrawingTest, CutsATimeThatIsTooWideToItsHours)
{
    EXPECT_EQ(drawn({.symbol = "battery.50", .lines = Lines{"23:48"}, .size = 16}),
              drawn({.symbol = "battery.50", .lines = Lines{"23h"}, .size = 16}));
    EXPECT_NE(drawn({.symbol = "battery.50", .lines = Lines{"12:48"}, .size = 16}),
              drawn({.symbol = "battery.50", .lines = Lines{"12h"}, .size = 16}));
}

TEST(NumberDrawingTest, FillsTheBatteryMoreTheFullerItIs)
{
    const std::vector<std::string> levels{"battery.0", "battery.25", "battery.50", "battery.75",
                                          "battery.100"};

    for (const int size : {16, 18, 20, 22, 24, 32, 48}) {
        for (const auto& lines : {Lines{"80"}, Lines{"80", "1:23"}}) {
            int last = 0;
            for (const auto& level : levels) {
                const int now = drawnPixels(drawn({.symbol = level, .lines = lines, .size = size}));
                EXPECT_GT(now, last) << level << " at " << size;
                last = now;
            }
        }
    }
}

TEST(NumberDrawingTest, DrawsEveryKindOfSymbolDifferently)
{
    const std::vector<std::string> symbols{"",          "battery.0",        "battery.50",
                                           "bolt.fill", "battery.100.bolt", "powerplug.fill"};

    for (std::size_t i = 0; i < symbols.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_NE(drawn({.symbol = symbols[i], .lines = eighty, .size = 22}),
                      drawn({.symbol = symbols[j], .lines = eighty, .size = 22}))
                << symbols[i] << " and " << symbols[j];
        }
    }
}

// Some trays take the largest picture and halve it.
TEST(NumberDrawingTest, DoublesEveryPixelOfTheHalfSize)
{
    const auto small = NumberDrawing{.symbol = "battery.50", .lines = eighty, .size = 22}.draw();
    const auto large = NumberDrawing{.symbol = "battery.50", .lines = eighty, .size = 44}.draw();

    for (int y = 0; y < 44; ++y) {
        for (int x = 0; x < 44; ++x) EXPECT_EQ(large.at(x, y), small.at(x / 2, y / 2));
    }
}

TEST(NumberDrawingTest, DrawsSomethingAtEverySize)
{
    for (int size = -1; size < 130; ++size) {
        for (const auto& lines :
             {Lines{"7"}, Lines{"100"}, Lines{"0:07"}, Lines{"99:59"}, Lines{"100", "99:59"}}) {
            for (const auto* const symbol : {"battery.75", "battery.100.bolt", "powerplug.fill"}) {
                const auto picture = drawn({.symbol = symbol, .lines = lines, .size = size});
                EXPECT_TRUE(size < 16 || drawnPixels(picture) > size)
                    << lines.front() << " at " << size;
            }
        }
    }
}

}  // namespace
}  // namespace vorlane::platform
