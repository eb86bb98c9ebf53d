#include "platform/linux/settings/FileDefaultsStore.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/platform/linux/settings/FileDefaultsStoreFixture.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

class FileDefaultsStoreTest : public FileDefaultsStoreFixture {};

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

}  // namespace
}  // namespace vorlane::platform
