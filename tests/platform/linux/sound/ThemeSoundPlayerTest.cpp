#include "platform/linux/sound/ThemeSoundPlayer.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <cerrno>
#include <sstream>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A script replaces the program that plays sounds.
class ThemeSoundPlayerTest : public testing::Test {
protected:
    ThemeSoundPlayerTest() { folder.write("sounds/vorlane-glass.wav", "RIFF"); }

    ThemeSoundPlayer player(const std::string& script)
    {
        const auto program = folder.path() / "play";
        folder.write("play", "#!/bin/sh\ncd '" + folder.path().string() + "'\n" + script);
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        return {loop.event(), program, SoundFiles((folder.path() / "sounds").string())};
    }

    std::vector<std::string> lines(const char* file) const
    {
        std::ifstream stream(folder.path() / file);
        std::vector<std::string> found;
        for (std::string line; std::getline(stream, line);) found.push_back(line);
        return found;
    }

    static bool hasChildren()
    {
        siginfo_t status{};
        return waitid(P_ALL, 0, &status, WEXITED | WNOHANG | WNOWAIT) == 0;
    }

    bool untilAllEnded()
    {
        return runUntil(loop, [] { return !hasChildren(); });
    }

    SdEventRunLoop loop;
    TemporaryFolder folder;
};

TEST_F(ThemeSoundPlayerTest, PlaysAShippedSoundFromItsFile)
{
    auto sounds = player("echo \"$@\" >> calls");

    sounds.play("Glass");
    ASSERT_TRUE(untilAllEnded());

    EXPECT_THAT(lines("calls"),
                ElementsAre("file " + (folder.path() / "sounds/vorlane-glass.wav").string()));
}

TEST_F(ThemeSoundPlayerTest, PlaysTheDefaultByItsNameInTheTheme)
{
    auto sounds = player("echo \"$@\" >> calls");

    sounds.play("default");
    ASSERT_TRUE(untilAllEnded());

    EXPECT_THAT(lines("calls"), ElementsAre("theme message-new-instant"));
}

TEST_F(ThemeSoundPlayerTest, DoesNotWaitForTheSound)
{
    // The script waits for a line that is written after `play` has returned.
    auto sounds = player("read line < pipe; echo \"$line\" > calls");
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), S_IRWXU), 0);

    sounds.play("Glass");
    EXPECT_TRUE(hasChildren());
    std::ofstream(folder.path() / "pipe") << "done\n";
    ASSERT_TRUE(untilAllEnded());

    EXPECT_THAT(lines("calls"), ElementsAre("done"));
}

TEST_F(ThemeSoundPlayerTest, StopsASoundThatIsStillPlaying)
{
    auto sounds = player("[ \"$1\" = theme ] && exit; read line < pipe; echo late > calls");
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), S_IRWXU), 0);

    sounds.play("Glass");
    sounds.play("default");

    EXPECT_TRUE(untilAllEnded());
    EXPECT_THAT(lines("calls"), IsEmpty());
}

TEST_F(ThemeSoundPlayerTest, LeavesNoPlayerBehind)
{
    {
        auto sounds = player("read line < pipe");
        ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), S_IRWXU), 0);
        sounds.play("Glass");
        EXPECT_TRUE(hasChildren());
    }

    EXPECT_FALSE(hasChildren());
}

TEST_F(ThemeSoundPlayerTest, UnblocksSignalsForThePlayer)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    auto sounds = player("grep SigBlk /proc/self/status > calls");

    sounds.play("Glass");
    ASSERT_TRUE(untilAllEnded());

    EXPECT_THAT(lines("calls"), ElementsAre("SigBlk:\t0000000000000000"));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(ThemeSoundPlayerTest, DiscardsThePlayersOutput)
{
    auto sounds = player("readlink /proc/self/fd/1 /proc/$$/fd/2 > calls; echo noise >&2");

    testing::internal::CaptureStderr();
    sounds.play("Glass");
    ASSERT_TRUE(untilAllEnded());

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(lines("calls").back(), "/dev/null");
}

TEST_F(ThemeSoundPlayerTest, IsSilentWithoutTheProgram)
{
    ThemeSoundPlayer sounds(loop.event(), (folder.path() / "nothing").string(),
                            SoundFiles("/nowhere"));

    sounds.play("Glass");

    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace vorlane::platform
