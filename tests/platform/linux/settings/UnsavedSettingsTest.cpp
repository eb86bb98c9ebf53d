#include <gtest/gtest.h>

#include "tests/platform/linux/settings/FileDefaultsStoreFixture.h"
#include "tests/platform/linux/support/FullDisk.h"
#include "tests/platform/linux/support/NoMoreFiles.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

// Values that are not in the file: not yet, or never.
class UnsavedSettingsTest : public FileDefaultsStoreFixture {};

TEST_F(UnsavedSettingsTest, KeepsAValueInMemoryUntilItCanBeWritten)
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

TEST_F(UnsavedSettingsTest, WritesAnUnsavedValueWhenItIsSetAgain)
{
    folder.write("vorlane", "a file where the folder should be");
    const auto store = open();
    store->set("limit", std::int64_t{85});
    fs::remove(file.parent_path());

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(text(), "limit = 85\n");
    EXPECT_EQ(changesNow(), 1);
}

TEST_F(UnsavedSettingsTest, DiscardsAPendingValueThatTheFileHolds)
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

TEST_F(UnsavedSettingsTest, DiscardsAPendingValueThatTheUserHasWritten)
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

TEST_F(UnsavedSettingsTest, RetriesAFailedWrite)
{
    folder.write("vorlane", "a file where the folder should be");
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    store.set("limit", std::int64_t{85});
    fs::remove(file.parent_path());

    while (text() == "none") (void)sd_event_run(loop.event(), UINT64_MAX);

    EXPECT_EQ(text(), "limit = 85\n");
}

TEST_F(UnsavedSettingsTest, WritesPendingValuesAtItsEnd)
{
    folder.write("vorlane", "a file where the folder should be");
    {
        const auto store = open();
        store->set("limit", std::int64_t{85});
        fs::remove(file.parent_path());
    }

    EXPECT_EQ(text(), "limit = 85\n");
}

TEST_F(UnsavedSettingsTest, IsIdleWithoutPendingValues)
{
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    store.set("limit", std::int64_t{85});
    (void)changesNow();

    EXPECT_EQ(sd_event_run(loop.event(), 50'000), 0);
}

TEST_F(UnsavedSettingsTest, KeepsInMemoryWhatTomlCannotHold)
{
    const auto store = open("limit = 70 # mine\n");

    store->set("limitSound", "\xFF");
    store->set("limit", std::int64_t{85});

    EXPECT_EQ(store->stringForKey("limitSound"), "\xFF");
    EXPECT_EQ(text(), "limit = 85 # mine\n");
}

TEST_F(UnsavedSettingsTest, WorksInMemoryWithoutAPath)
{
    file = "";
    const auto store = open();

    store->set("limit", std::int64_t{85});

    EXPECT_EQ(store->integerForKey("limit"), 85);
    EXPECT_FALSE(fs::exists("settings.toml"));
}

}  // namespace
}  // namespace vorlane::platform
