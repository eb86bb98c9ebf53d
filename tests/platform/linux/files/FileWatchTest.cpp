#include "platform/linux/files/FileWatch.h"

#include <gtest/gtest.h>

#include "platform/linux/base/SdEventRunLoop.h"
#include "tests/platform/linux/support/NoMoreFiles.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class FileWatchTest : public testing::Test {
protected:
    TemporaryFolder folder;
    SdEventRunLoop loop;
    int calls = 0;
    fs::path parent = folder.path() / "config" / "app";
    fs::path file = parent / "file";

    FileWatchTest() { fs::create_directories(parent); }

    // Returns the number of calls after handling all events so far.
    int callsNow()
    {
        calls = 0;
        int turns = 0;
        while (turns < 10'000 && sd_event_run(loop.event(), 0) > 0) ++turns;
        EXPECT_LT(turns, 10'000) << "the watch never becomes idle";
        return calls;
    }

    void write(const fs::path& path, std::string_view text) const
    {
        std::ofstream(path, std::ios::binary) << text;
    }
};

TEST_F(FileWatchTest, ReportsAWriteInPlace)
{
    write(file, "old");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write(file, "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsAReplacement)
{
    const FileWatch watch(loop.event(), file, [this] { ++calls; });
    write(parent / "other", "new");
    EXPECT_EQ(callsNow(), 0);

    fs::rename(parent / "other", file);

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsARemovalAndARename)
{
    write(file, "old");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::rename(file, parent / "other");
    EXPECT_EQ(callsNow(), 1);
    fs::rename(parent / "other", file);
    EXPECT_EQ(callsNow(), 1);
    fs::remove(file);
    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsAWriteToTheTargetOfALink)
{
    const auto elsewhere = parent / "elsewhere";
    fs::create_directory(elsewhere);
    write(elsewhere / "target", "old");
    fs::create_symlink(elsewhere / "target", file);
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write(elsewhere / "target", "new");
    EXPECT_EQ(callsNow(), 1);
    fs::remove(file);
    EXPECT_EQ(callsNow(), 1);
    write(elsewhere / "target", "no longer watched");
    EXPECT_EQ(callsNow(), 0);
}

TEST_F(FileWatchTest, ReportsAWriteThroughALinkToTheSameFolderOnce)
{
    write(parent / "other", "old");
    fs::create_symlink("other", file);
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write(parent / "other", "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsWhenTheTargetOfALinkAppears)
{
    fs::create_symlink("other", parent / "link");
    fs::create_symlink("link", file);
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write(parent / "other", "new");

    EXPECT_EQ(callsNow(), 1);
}

// Other processes write to devices like /dev/null all the time.
TEST_F(FileWatchTest, DoesNotWatchADeviceBehindALink)
{
    fs::create_symlink("/dev/null", file);
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write("/dev/null", "nothing");

    EXPECT_EQ(callsNow(), 0);
}

TEST_F(FileWatchTest, CopesWithCircularLinks)
{
    fs::create_symlink("other", file);
    fs::create_symlink(file, parent / "other");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::remove(file);
    write(file, "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, WatchesOnceARenewalSucceeds)
{
    auto fault = std::make_unique<NoMoreFiles>();
    FileWatch watch(loop.event(), file, [this] { ++calls; });
    fault.reset();
    EXPECT_FALSE(watch.isWatching());

    watch.renew();

    EXPECT_TRUE(watch.isWatching());
    write(file, "new");
    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsAChangeOfPermissions)
{
    write(file, "old");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::permissions(file, fs::perms::none);

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, ReportsABurstOfWritesOnce)
{
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    for (int i = 0; i < 100; ++i) write(file, "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, IgnoresOtherFilesAndReading)
{
    write(file, "old");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    write(parent / "other", "new");
    write(parent / "file2", "new");
    std::string text;
    std::ifstream(file) >> text;

    EXPECT_EQ(text, "old");
    EXPECT_EQ(callsNow(), 0);
}

TEST_F(FileWatchTest, WaitsForAFolderThatIsMissing)
{
    fs::remove_all(folder.path() / "config");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::create_directories(parent);
    EXPECT_GT(callsNow(), 0);
    write(file, "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, FollowsAFolderThatIsDeletedAndRecreated)
{
    write(file, "old");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::remove_all(folder.path() / "config");
    EXPECT_GT(callsNow(), 0);
    fs::create_directory(folder.path() / "config");
    (void)callsNow();
    fs::create_directory(parent);
    (void)callsNow();
    write(file, "new");

    EXPECT_EQ(callsNow(), 1);
}

TEST_F(FileWatchTest, FollowsAFolderThatIsReplaced)
{
    write(file, "old");
    fs::create_directory(folder.path() / "config" / "next");
    const FileWatch watch(loop.event(), file, [this] { ++calls; });

    fs::rename(parent, folder.path() / "config" / "before");
    fs::rename(folder.path() / "config" / "next", parent);
    EXPECT_GT(callsNow(), 0);
    write(file, "new");
    EXPECT_EQ(callsNow(), 1);
    write(folder.path() / "config" / "before" / "file", "old one");

    EXPECT_EQ(callsNow(), 0);
}

TEST_F(FileWatchTest, ReportsNothingAfterItsEnd)
{
    {
        const FileWatch watch(loop.event(), file, [this] { ++calls; });
        write(file, "new");
    }

    EXPECT_EQ(callsNow(), 0);
}

TEST_F(FileWatchTest, ReportsNothingForAnImpossiblePath)
{
    const FileWatch none(loop.event(), "", [this] { ++calls; });
    write(file, "plain");
    const FileWatch below(loop.event(), file / "inner" / "file", [this] { ++calls; });

    EXPECT_EQ(callsNow(), 0);
}

}  // namespace
}  // namespace vorlane::platform
