#include "platform/linux/tray/icon/SymbolMask.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>

namespace vorlane::platform {
namespace {

double mean(const std::vector<std::uint8_t>& mask)
{
    return std::accumulate(mask.begin(), mask.end(), 0.0) / static_cast<double>(mask.size());
}

TEST(SymbolMaskTest, HasAnySizeThatAScreenNeeds)
{
    const auto drawn = mean(symbolMask("battery.75", 96));

    for (const int size : {1, 8, 17, 20, 28, 95, 97, 192, 512}) {
        const auto mask = symbolMask("battery.75", size);
        ASSERT_EQ(mask.size(), static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
        EXPECT_NEAR(mean(mask), drawn, 1.0) << size;
    }
}

TEST(SymbolMaskTest, KeepsThePlaceOfThingsWhenItScales)
{
    const auto mask = symbolMask("battery.0", 20);

    EXPECT_EQ(mask[10 * 20 + 10], 0);    // the empty middle
    EXPECT_EQ(mask[0], 0);               // outside
    EXPECT_GT(mask[4 * 20 + 10], 150);   // the upper edge of the body
    EXPECT_GT(mask[15 * 20 + 10], 150);  // the lower one
}

TEST(SymbolMaskTest, IsEmptyForWhatItDoesNotHave)
{
    EXPECT_TRUE(symbolMask("battery.42", 22).empty());
    EXPECT_TRUE(symbolMask("", 22).empty());
    for (const int size : {-1, 0, 513}) EXPECT_TRUE(symbolMask("battery.0", size).empty()) << size;
}

}  // namespace
}  // namespace vorlane::platform
