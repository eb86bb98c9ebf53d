#include "platform/linux/sound/SoundFiles.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

TEST(SoundFilesTest, FindsASoundByTheNameInTheSettings)
{
    const TemporaryFolder folder;
    folder.write("vorlane-glass.wav", "RIFF");
    const SoundFiles sounds(folder.path().string());

    EXPECT_EQ(sounds.path("Glass"), folder.path() / "vorlane-glass.wav");
    EXPECT_EQ(sounds.path("Ping"), std::nullopt);
    EXPECT_EQ(sounds.path("default"), std::nullopt);
    EXPECT_EQ(sounds.path(""), std::nullopt);
}

TEST(SoundFilesTest, NeverLeavesItsFolder)
{
    const TemporaryFolder folder;
    folder.write("vorlane-x/y", "");
    folder.write("secret.wav", "RIFF");
    const SoundFiles sounds(folder.path().string());

    EXPECT_EQ(sounds.path("x/../secret"), std::nullopt);
    EXPECT_EQ(sounds.path(std::string("x\0y", 3)), std::nullopt);
}

TEST(SoundFilesTest, GivesThemeNames)
{
    EXPECT_EQ(soundThemeName("default"), "message-new-instant");
    EXPECT_EQ(soundThemeName("bell"), "bell");
}

// The sound player would use the name as part of a file path.
TEST(SoundFilesTest, PlaysTheDefaultInsteadOfAPath)
{
    EXPECT_EQ(soundThemeName("../../secret"), "message-new-instant");
    EXPECT_EQ(soundThemeName("/secret"), "message-new-instant");
}

}  // namespace
}  // namespace vorlane::platform
