#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/platform/linux/settings/FileDefaultsStoreFixture.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

// What cannot be read as settings counts as empty and is kept aside before the first write.
class MalformedSettingsTest : public FileDefaultsStoreFixture {};

TEST_F(MalformedSettingsTest, ReadsAMalformedFileAsDefaultsAndLeavesIt)
{
    const auto store = open("limit = 70\nlow = \n");
    store->registerDefaults({{"limit", std::int64_t{80}}});

    EXPECT_EQ(store->integerForKey("limit"), 80);
    EXPECT_EQ(changesNow(), 0);
    EXPECT_EQ(text(), "limit = 70\nlow = \n");
    EXPECT_EQ(text(".bad"), "none");
}

TEST_F(MalformedSettingsTest, KeepsAMalformedFileAsideBeforeTheFirstWrite)
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

TEST_F(MalformedSettingsTest, KeepsAsideAFileWithATableInPlaceOfAValue)
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

TEST_F(MalformedSettingsTest, KeepsNoFileAsideForAValueThatTomlCannotHold)
{
    const auto store = open("[sound]\na = 1\n");

    store->set("sound", "\xFF");

    EXPECT_EQ(text(), "[sound]\na = 1\n");
    EXPECT_EQ(text(".bad"), "none");
}

TEST_F(MalformedSettingsTest, KeepsAsideAFileThatAnEditorBroke)
{
    const auto store = open("limit = 70\n");
    write("limit = \n");
    EXPECT_EQ(changesNow(), 1);

    store->set("low", std::int64_t{10});

    EXPECT_EQ(text(), "low = 10\n");
    EXPECT_EQ(text(".bad"), "limit = \n");
}

TEST_F(MalformedSettingsTest, ReadsAMalformedFileOnceItIsRepaired)
{
    const auto store = open("limit = \n");

    write("limit = 60\n");

    EXPECT_EQ(changesNow(), 1);
    EXPECT_EQ(store->integerForKey("limit"), 60);
}

TEST_F(MalformedSettingsTest, TreatsAHugeFileAsMalformed)
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

TEST_F(MalformedSettingsTest, KeepsAFolderOrAPipeAsideBeforeTheFirstWrite)
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

TEST_F(MalformedSettingsTest, IgnoresAnotherUsersFile)
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

}  // namespace
}  // namespace vorlane::platform
