#include "platform/xembed/PixelLayout.h"

#include <gmock/gmock.h>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PixelLayoutTest, KeepsTheByteOrderForABigEndianServer)
{
    EXPECT_THAT(serverPixels({255, 1, 2, 3}, true), ElementsAre(255, 1, 2, 3));
}

TEST(PixelLayoutTest, ReversesTheBytesForALittleEndianServer)
{
    EXPECT_THAT(serverPixels({255, 1, 2, 3, 255, 4, 5, 6}, false),
                ElementsAre(3, 2, 1, 255, 6, 5, 4, 255));
}

TEST(PixelLayoutTest, PremultipliesTheColours)
{
    EXPECT_THAT(serverPixels({128, 255, 100, 0}, true), ElementsAre(128, 128, 50, 0));
    EXPECT_THAT(serverPixels({0, 255, 255, 255}, true), ElementsAre(0, 0, 0, 0));
}

TEST(PixelLayoutTest, GivesNoPixelsForAnEmptyPicture)
{
    EXPECT_THAT(serverPixels({}, false), IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
