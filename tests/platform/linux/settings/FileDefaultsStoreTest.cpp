#include "platform/linux/settings/FileDefaultsStore.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <memory>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/files/Files.h"
#include "tests/platform/linux/support/FullDisk.h"
#include "tests/platform/linux/support/NoMoreFiles.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

class FileDefaultsStoreTest : public testing::Test {
protected:
    TemporaryFolder folder;
    SdEventRunLoop loop;
    fs::path file = folder.path() / "vorlane" / "settings.toml";
    int changes = 0;

    struct Opened {
        std::unique_ptr<FileDefaultsStore> store;
        Subscription observation;

        FileDefaultsStore* operator->() const { return store.get(); }
    };

    Opened open()
    {
        auto store = std::make_unique<FileDefaultsStore>(loop.event(), file);
        auto observation = store->observe([this] { ++changes; });
        return {std::move(store), std::move(observation)};
    }

    Opened open(std::string_view text)
    {
        write(text);
        return open();
    }

    void write(std::string_view text) const { folder.write("vorlane/settings.toml", text); }

    std::string text(std::string_view ending = "") const
    {
        return readFile(file.string() + std::string(ending), 10'000'000).value_or("none");
    }

    // Returns how often observers were called after handling all events so far.
    int changesNow()
    {
        while (sd_event_run(loop.event(), 0) > 0) {
        }
        return std::exchange(changes, 0);
    }
};

TEST_F(FileDefaultsStoreTest, CreatesAPrivateFolder)
{
    const auto store = open();

    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms::owner_all);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(FileDefaultsStoreTest, ReadsRegisteredDefaultsForKeysThatWereNeverWritten)
{
    const auto store = open("limit = 70\n");
    store->registerDefaults({{"limit", std::int64_t{80}}, {"low", std::int64_t{20}}});

    EXPECT_EQ(store->integerForKey("limit"), 70);
    EXPECT_EQ(store->integerForKey("low"), 20);

    store->registerDefaults({{"flag", true}});
    EXPECT_EQ(store->integerForKey("low"), 0);
    EXPECT_TRUE(store->boolForKey("flag"));
}

TEST_F(FileDefaultsStoreTest, ReadsNeutralValuesForMissingKeys)
{
    const auto store = open();

    EXPECT_FALSE(store->boolForKey("missing"));
    EXPECT_EQ(store->integerForKey("missing"), 0);
    EXPECT_EQ(store->doubleForKey("missing"), 0.0);
    EXPECT_EQ(store->stringForKey("missing"), std::nullopt);
}

TEST_F(FileDefaultsStoreTest, ReadsNeutralValuesForTheWrongKindEvenWithARegisteredDefault)
{
    const auto store = open(
        "flag = 1\nwhole = true\nreal = 'a'\ntext = 5\ntable = { a = 1 }\nlist = [1]\n"
        "nothing = nan\nendless = inf\nday = 2026-01-01\n");
    store->registerDefaults({{"flag", true},
                             {"whole", std::int64_t{80}},
                             {"real", 0.5},
                             {"text", "default"},
                             {"table", std::int64_t{3}},
                             {"list", std::int64_t{3}},
                             {"nothing", 1.0},
                             {"endless", 1.0},
                             {"day", "default"}});

    EXPECT_FALSE(store->boolForKey("flag"));
    EXPECT_EQ(store->integerForKey("whole"), 0);
    EXPECT_EQ(store->doubleForKey("real"), 0.0);
    EXPECT_EQ(store->stringForKey("text"), std::nullopt);
    EXPECT_EQ(store->integerForKey("table"), 0);
    EXPECT_EQ(store->integerForKey("list"), 0);
    EXPECT_EQ(store->doubleForKey("nothing"), 0.0);
    EXPECT_EQ(store->doubleForKey("endless"), 0.0);
    EXPECT_EQ(store->stringForKey("day"), std::nullopt);
}

TEST_F(FileDefaultsStoreTest, ConvertsBetweenWholeAndRealNumbers)
{
    const auto store = open("real = -2.9\nwhole = 5\nhuge = 1e300\n");

    EXPECT_EQ(store->integerForKey("real"), -2);
    EXPECT_EQ(store->doubleForKey("whole"), 5.0);
    EXPECT_EQ(store->integerForKey("huge"), 0);
    EXPECT_EQ(store->doubleForKey("huge"), 1e300);
}

TEST_F(FileDefaultsStoreTest, WritesAtOnceAndCallsObservers)
{
    const auto store = open();

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(store->integerForKey("limit"), 85);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(text(), "limit = 85\n");
}

TEST_F(FileDefaultsStoreTest, CallsObserversOnceForItsOwnWrite)
{
    const auto store = open();

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(changesNow(), 1);
}

TEST_F(FileDefaultsStoreTest, IgnoresAValueThatIsAlreadySet)
{
    const auto store = open("limit=85");

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(changesNow(), 0);
    EXPECT_EQ(text(), "limit=85");
}

TEST_F(FileDefaultsStoreTest, WritesAValueThatEqualsItsRegisteredDefault)
{
    const auto store = open();
    store->registerDefaults({{"limit", std::int64_t{80}}});

    store->set("limit", std::int64_t{80});

    EXPECT_EQ(text(), "limit = 80\n");
}

TEST_F(FileDefaultsStoreTest, ReadsItsValuesBackInTheNextRun)
{
    {
        const auto store = open();
        store->set("snoozeUntil", 1783003600.125);
        store->set("limitSound", "Glass");
        store->set("lowEnabled", false);
    }

    const auto store = open();

    EXPECT_EQ(store->doubleForKey("snoozeUntil"), 1783003600.125);
    EXPECT_EQ(store->stringForKey("limitSound"), "Glass");
    EXPECT_FALSE(store->boolForKey("lowEnabled"));
}

TEST_F(FileDefaultsStoreTest, KeepsCommentsAndUnknownKeys)
{
    const auto store = open("# mine\nlimit = 70 # less\nother = [1]\n\n[table]\na = 1\n");

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(text(), "# mine\nlimit = 85 # less\nother = [1]\n\n[table]\na = 1\n");
}

TEST_F(FileDefaultsStoreTest, IgnoresNumbersThatAreNotFinite)
{
    const auto store = open("snoozeUntil = 1.0\n");

    store->set("snoozeUntil", std::nan(""));
    store->set("snoozeUntil", HUGE_VAL);

    EXPECT_EQ(store->doubleForKey("snoozeUntil"), 1.0);
    EXPECT_EQ(text(), "snoozeUntil = 1.0\n");
}

TEST_F(FileDefaultsStoreTest, NoticesAnEditorsWriteInPlace)
{
    const auto store = open("limit = 70\n");

    write("limit = 60\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(FileDefaultsStoreTest, NoticesAnEditorsReplacement)
{
    const auto store = open("limit = 70\n");

    folder.write("vorlane/sedXYZ", "limit = 60\n");
    fs::rename(file.parent_path() / "sedXYZ", file);

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(FileDefaultsStoreTest, NoticesThatTheFileAppearsAndDisappears)
{
    const auto store = open();
    write("limit = 60\n");
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);

    fs::remove(file);

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 0);
}

TEST_F(FileDefaultsStoreTest, NoticesThatItsFolderIsDeletedAndRecreated)
{
    const auto store = open("limit = 60\n");
    fs::remove_all(file.parent_path());
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 0);

    write("limit = 50\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 50);
}

TEST_F(FileDefaultsStoreTest, RecreatesItsFolderForTheNextWrite)
{
    const auto store = open("limit = 60\n");
    fs::remove_all(file.parent_path());

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    write("low = 15\n");
    EXPECT_GT(changesNow(), 0);
    EXPECT_EQ(store->integerForKey("low"), 15);
}

TEST_F(FileDefaultsStoreTest, CallsObserversOnlyWhenValuesDiffer)
{
    const auto store = open("limit = 70\n");

    write("# a comment\nlimit   = 70\n");
    EXPECT_EQ(changesNow(), 0);

    store->set("low", std::int64_t{10});
    EXPECT_EQ(text(), "# a comment\nlimit   = 70\nlow = 10\n");
}

TEST_F(FileDefaultsStoreTest, KeepsAnEditThatItHasNotNoticedYet)
{
    const auto store = open("limit = 70\n");
    write("limit = 60 # mine\n");

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "limit = 60 # mine\nlow = 10\n");
    EXPECT_EQ(store->integerForKey("limit"), 60);
    EXPECT_EQ(changesNow(), 1);
}

TEST_F(FileDefaultsStoreTest, ReadsAMalformedFileAsDefaultsAndLeavesIt)
{
    const auto store = open("limit = 70\nlow = \n");
    store->registerDefaults({{"limit", std::int64_t{80}}});

    EXPECT_EQ(store->integerForKey("limit"), 80);
    EXPECT_EQ(changesNow(), 0);
    EXPECT_EQ(text(), "limit = 70\nlow = \n");
    EXPECT_EQ(text(".bad"), "none");
}

TEST_F(FileDefaultsStoreTest, KeepsAMalformedFileAsideBeforeTheFirstWrite)
{
    for (const std::string bad : {"limit = \n", "\xFF\xFE", "limit = 9223372036854775808\n"}) {
        fs::remove_all(file.parent_path());
        const auto store = open(bad);

        store->set("low", std::int64_t{10});
        store->set("low", std::int64_t{15});

        EXPECT_EQ(text(), "low = 15\n");
        EXPECT_EQ(text(".bad"), bad);
        EXPECT_EQ(text(".bad.1"), "none");
    }
}

TEST_F(FileDefaultsStoreTest, KeepsAsideAFileWithATableInPlaceOfAValue)
{
    const std::string mine = "limit = 70 # mine\nother = [1]\n\n[low]\na = 1\n";
    const auto store = open(mine);
    store->set("limit", std::int64_t{60});
    const auto edited = text();

    store->set("low", std::int64_t{10});
    store->set("low", std::int64_t{15});

    EXPECT_EQ(text(), "limit = 60\nlow = 15\n");
    EXPECT_EQ(text(".bad"), edited);
    EXPECT_EQ(text(".bad.1"), "none");
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(FileDefaultsStoreTest, KeepsNoFileAsideForAValueThatTomlCannotHold)
{
    const auto store = open("[sound]\na = 1\n");

    store->set("sound", "\xFF");

    EXPECT_EQ(text(), "[sound]\na = 1\n");
    EXPECT_EQ(text(".bad"), "none");
}

TEST_F(FileDefaultsStoreTest, KeepsAsideAFileThatAnEditorBroke)
{
    const auto store = open("limit = 70\n");
    write("limit = \n");
    EXPECT_EQ(changesNow(), 1);

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    EXPECT_EQ(text(".bad"), "limit = \n");
}

TEST_F(FileDefaultsStoreTest, ReadsAMalformedFileOnceItIsRepaired)
{
    const auto store = open("limit = \n");

    write("limit = 60\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(FileDefaultsStoreTest, TreatsAHugeFileAsMalformed)
{
    const auto store = open("limit = 60\n");
    std::string comment;
    comment.resize(100'000'000, '#');
    write(comment);
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 0);

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    EXPECT_EQ(fs::file_size(file.string() + ".bad"), 100'000'000U);
}

TEST_F(FileDefaultsStoreTest, KeepsAFolderOrAPipeAsideBeforeTheFirstWrite)
{
    fs::create_directories(file / "inner");
    {
        const auto store = open();
        EXPECT_EQ(store->integerForKey("limit"), 0);
        store->set("low", std::int64_t{10});
    }
    EXPECT_EQ(text(), "low = 10\n");
    EXPECT_TRUE(fs::is_directory(file.string() + ".bad/inner"));

    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    const auto store = open();
    store->set("low", std::int64_t{15});

    EXPECT_EQ(text(), "low = 15\n");
    EXPECT_TRUE(fs::is_fifo(file.string() + ".bad.1"));
}

TEST_F(FileDefaultsStoreTest, ReplacesALinkAndNotItsTarget)
{
    folder.write("target", "limit = 70 # mine\n");
    fs::create_directory(file.parent_path());
    fs::create_symlink("../target", file);
    const auto store = open();
    EXPECT_EQ(store->integerForKey("limit"), 70);

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(text(), "limit = 85 # mine\n");
    EXPECT_FALSE(fs::is_symlink(file));
    EXPECT_EQ(readFile(folder.path() / "target", 100).value_or("none"), "limit = 70 # mine\n");
}

TEST_F(FileDefaultsStoreTest, KeepsAValueInMemoryUntilItCanBeWritten)
{
    folder.write("vorlane", "a file where the folder should be");
    const auto store = open();

    store->set("limit", std::int64_t{85});
    EXPECT_EQ(store->integerForKey("limit"), 85);
    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(text(), "none");

    fs::remove(file.parent_path());
    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "limit = 85\nlow = 10\n");
}

TEST_F(FileDefaultsStoreTest, WritesAnUnsavedValueWhenItIsSetAgain)
{
    folder.write("vorlane", "a file where the folder should be");
    const auto store = open();
    store->set("limit", std::int64_t{85});
    fs::remove(file.parent_path());

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(text(), "limit = 85\n");
    EXPECT_EQ(changesNow(), 1);
}

TEST_F(FileDefaultsStoreTest, DiscardsAPendingValueThatTheFileHolds)
{
    const auto store = open("limit = 80\n");
    {
        const FullDisk fault(0);
        store->set("limit", std::int64_t{81});
        store->set("limit", std::int64_t{80});
    }

    write("limit = 60\n");
    (void)changesNow();

    EXPECT_EQ(store->integerForKey("limit"), 60);
    EXPECT_EQ(text(), "limit = 60\n");
}

TEST_F(FileDefaultsStoreTest, DiscardsAPendingValueThatTheUserHasWritten)
{
    const auto store = open("limit = 80\n");
    {
        const NoMoreFiles fault;
        store->set("limit", std::int64_t{85});
    }
    write("limit = 85\n");
    (void)changesNow();

    write("limit = 60\n");
    (void)changesNow();

    EXPECT_EQ(store->integerForKey("limit"), 60);
    EXPECT_EQ(text(), "limit = 60\n");
}

TEST_F(FileDefaultsStoreTest, RetriesAFailedWrite)
{
    folder.write("vorlane", "a file where the folder should be");
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    store.set("limit", std::int64_t{85});
    fs::remove(file.parent_path());

    while (text() == "none") (void)sd_event_run(loop.event(), UINT64_MAX);

    EXPECT_EQ(text(), "limit = 85\n");
}

TEST_F(FileDefaultsStoreTest, WritesPendingValuesAtItsEnd)
{
    folder.write("vorlane", "a file where the folder should be");
    {
        const auto store = open();
        store->set("limit", std::int64_t{85});
        fs::remove(file.parent_path());
    }

    EXPECT_EQ(text(), "limit = 85\n");
}

TEST_F(FileDefaultsStoreTest, NoticesAnEditAfterTheSystemRanOutOfWatches)
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

TEST_F(FileDefaultsStoreTest, IsIdleWithoutPendingValues)
{
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    store.set("limit", std::int64_t{85});
    (void)changesNow();

    EXPECT_EQ(sd_event_run(loop.event(), 50'000), 0);
}

TEST_F(FileDefaultsStoreTest, IgnoresAnotherUsersFile)
{
    if (getuid() != 0) GTEST_SKIP() << "only root can give a file to another user";
    write("limit = 60\n");
    ASSERT_EQ(chown(file.c_str(), 12'345, 12'345), 0);
    const auto store = open();
    EXPECT_EQ(store->integerForKey("limit"), 0);

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    EXPECT_EQ(text(".bad"), "limit = 60\n");
}

TEST_F(FileDefaultsStoreTest, KeepsInMemoryWhatTomlCannotHold)
{
    const auto store = open("limit = 70 # mine\n");

    store->set("limitSound", "\xFF");
    store->set("limit", std::int64_t{85});

    EXPECT_EQ(store->stringForKey("limitSound"), "\xFF");
    EXPECT_EQ(text(), "limit = 85 # mine\n");
}

TEST_F(FileDefaultsStoreTest, WorksInMemoryWithoutAPath)
{
    file = "";
    const auto store = open();

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(store->integerForKey("limit"), 85);
    EXPECT_FALSE(fs::exists("settings.toml"));
}

}  // namespace
}  // namespace vorlane::platform
