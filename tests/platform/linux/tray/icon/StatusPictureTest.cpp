#include "platform/linux/tray/icon/StatusPicture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <vector>

#include "platform/linux/tray/icon/NumberDrawing.h"
#include "platform/linux/tray/icon/SymbolMask.h"

namespace vorlane::platform {
namespace {

constexpr Rgb ink{10, 20, 30};
constexpr Rgb tile{200, 210, 220};

using Pixel = std::array<int, 4>;

Pixel pixel(const TrayPicture& pixmap, int x, int y)
{
    const int offset = (y * pixmap.size + x) * 4;
    const auto* const argb = pixmap.argb.data() + offset;
    return {argb[0], argb[1], argb[2], argb[3]};
}

TEST(StatusPictureTest, DrawsOnlyTheSymbolWithoutLines)
{
    const auto pixmap =
        StatusPicture{.symbol = "battery.75", .lines = {}, .ink = ink, .tile = {}}.draw(22);

    const auto mask = symbolMask("battery.75", 22);
    ASSERT_EQ(pixmap.size, 22);
    ASSERT_EQ(pixmap.argb.size(), mask.size() * 4);
    for (int y = 0; y < 22; ++y) {
        for (int x = 0; x < 22; ++x) {
            EXPECT_EQ(pixel(pixmap, x, y),
                      (Pixel{mask[static_cast<std::size_t>(y * 22 + x)], 10, 20, 30}));
        }
    }
}

TEST(StatusPictureTest, DrawsTheNumberInTheInk)
{
    const StatusPicture picture{.symbol = "battery.75", .lines = {"80"}, .ink = ink, .tile = {}};

    for (const int size : {16, 18, 22, 24, 30, 48}) {
        const auto bits =
            NumberDrawing{.symbol = "battery.75", .lines = picture.lines, .size = size}.draw();
        const auto pixmap = picture.draw(size);
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                EXPECT_EQ(pixel(pixmap, x, y), (Pixel{bits.at(x, y) ? 255 : 0, 10, 20, 30}));
            }
        }
    }
}

TEST(StatusPictureTest, DrawsTheTileBehindIt)
{
    const auto pixmap =
        StatusPicture{.symbol = "battery.0", .lines = {"80"}, .ink = ink, .tile = tile}.draw(22);

    EXPECT_EQ(pixel(pixmap, 0, 0)[0], 0);                          // outside the round corner
    EXPECT_EQ(pixel(pixmap, 1, 0), (Pixel{255, 200, 210, 220}));   // the edge of the tile
    EXPECT_EQ(pixel(pixmap, 10, 4), (Pixel{255, 200, 210, 220}));  // inside the empty battery
    EXPECT_EQ(pixel(pixmap, 10, 1), (Pixel{255, 10, 20, 30}));     // the upper edge of the battery
}

TEST(StatusPictureTest, KeepsTheNumberOffTheEdgesOfTheTile)
{
    for (const std::vector<std::string>& lines :
         {std::vector<std::string>{"100"}, {"20:08"}, {"100", "20:08"}}) {
        const auto pixmap =
            StatusPicture{.symbol = "battery.100", .lines = lines, .ink = ink, .tile = tile}.draw(
                22);
        for (int i = 1; i < 21; ++i) {
            for (const auto& [x, y] : {std::array{i, 0}, {i, 21}, {0, i}, {21, i}}) {
                EXPECT_EQ(pixel(pixmap, x, y), (Pixel{255, 200, 210, 220})) << lines.front();
            }
        }
    }
}

TEST(StatusPictureTest, IsEmptyWhenThereIsNothingToDraw)
{
    const StatusPicture nothing{.symbol = "", .lines = {}, .ink = ink, .tile = {}};
    const StatusPicture number{.symbol = "", .lines = {"80"}, .ink = ink, .tile = {}};

    EXPECT_TRUE(nothing.draw(22).argb.empty());
    for (const int size : {-5, 0, 513}) EXPECT_TRUE(number.draw(size).argb.empty()) << size;
    for (const int size : {1, 2, 3, 512}) EXPECT_FALSE(number.draw(size).argb.empty()) << size;
}

}  // namespace
}  // namespace vorlane::platform
