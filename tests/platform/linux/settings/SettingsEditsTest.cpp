#include <gtest/gtest.h>

#include "tests/platform/linux/settings/FileDefaultsStoreFixture.h"
#include "tests/platform/linux/support/NoMoreFiles.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

// Changes to the file by the user and other programs.
class SettingsEditsTest : public FileDefaultsStoreFixture {};

TEST_F(SettingsEditsTest, NoticesAnEditorsWriteInPlace)
{
    const auto store = open("limit = 70\n");

    write("limit = 60\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(SettingsEditsTest, NoticesAnEditorsReplacement)
{
    const auto store = open("limit = 70\n");

    folder.write("vorlane/sedXYZ", "limit = 60\n");
    fs::rename(file.parent_path() / "sedXYZ", file);

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(SettingsEditsTest, NoticesThatTheFileAppearsAndDisappears)
{
    const auto store = open();
    write("limit = 60\n");
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);

    fs::remove(file);

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 0);
}

TEST_F(SettingsEditsTest, NoticesThatItsFolderIsDeletedAndRecreated)
{
    const auto store = open("limit = 60\n");
    fs::remove_all(file.parent_path());
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 0);

    write("limit = 50\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 50);
}

TEST_F(SettingsEditsTest, RecreatesItsFolderForTheNextWrite)
{
    const auto store = open("limit = 60\n");
    fs::remove_all(file.parent_path());

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    write("low = 15\n");
    EXPECT_GT(changesNow(), 0);
    EXPECT_EQ(store->integerForKey("low"), 15);
}

TEST_F(SettingsEditsTest, CallsObserversOnlyWhenValuesDiffer)
{
    const auto store = open("limit = 70\n");

    write("# a comment\nlimit   = 70\n");
    EXPECT_EQ(changesNow(), 0);

    store->set("low", std::int64_t{10});
    EXPECT_EQ(text(), "# a comment\nlimit   = 70\nlow = 10\n");
}

TEST_F(SettingsEditsTest, KeepsAnEditThatItHasNotNoticedYet)
{
    const auto store = open("limit = 70\n");
    write("limit = 60 # mine\n");

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "limit = 60 # mine\nlow = 10\n");
    EXPECT_EQ(store->integerForKey("limit"), 60);
    EXPECT_EQ(changesNow(), 1);
}

TEST_F(SettingsEditsTest, NoticesAnEditAfterTheSystemRanOutOfWatches)
{
    write("limit = 70\n");
    FileDefaultsStore store(loop.event(), file, Seconds{0.05});
    EXPECT_EQ(store.integerForKey("limit"), 70);
    const auto folderPath = file.parent_path();
    fs::rename(folderPath, folderPath.string() + ".away");
    fs::rename(folderPath.string() + ".away", folderPath);  // so that the watch must be renewed
    {
        const NoMoreFiles fault;
        (void)changesNow();
    }

    write("limit = 60\n");
    while (store.integerForKey("limit") != 60) (void)sd_event_run(loop.event(), UINT64_MAX);
    write("limit = 50\n");
    (void)changesNow();

    EXPECT_EQ(store.integerForKey("limit"), 50);
}

}  // namespace
}  // namespace vorlane::platform
