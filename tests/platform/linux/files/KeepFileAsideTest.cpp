#include <gmock/gmock.h>

#include "tests/platform/linux/files/FilesFixture.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class KeepFileAsideTest : public FilesFixture {};

TEST_F(KeepFileAsideTest, KeepsAFileUnderASecondNameUntilItIsReplaced)
{
    folder.write("file", "bad");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_EQ(readFile(file, limit).value_or("none"), "bad");  // still there until it is replaced
    EXPECT_TRUE(replaceWith("good"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "good");
    EXPECT_EQ(readFile(file + ".bad", limit).value_or("none"), "bad");
}

TEST_F(KeepFileAsideTest, NeverOverwritesAnEarlierBackup)
{
    for (const auto* content : {"first", "second", "third"}) {
        folder.write("file", content);
        EXPECT_TRUE(keepFileAside(file));
        EXPECT_TRUE(replaceWith("good"));
    }

    EXPECT_EQ(readFile(file + ".bad", limit).value_or("none"), "first");
    EXPECT_EQ(readFile(file + ".bad.1", limit).value_or("none"), "second");
    EXPECT_EQ(readFile(file + ".bad.2", limit).value_or("none"), "third");
}

TEST_F(KeepFileAsideTest, KeepsTheSameFileOnlyOnce)
{
    folder.write("file", "bad");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(keepFileAside(file));

    EXPECT_THAT(names(), ElementsAre("file", "file.bad"));
}

TEST_F(KeepFileAsideTest, MovesAFolderAside)
{
    folder.write("file/inner", "kept");
    folder.write("file.bad", "earlier");

    EXPECT_TRUE(keepFileAside(file));

    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(readFile(file + ".bad.1/inner", limit).value_or("none"), "kept");
    EXPECT_EQ(readFile(file + ".bad", limit).value_or("none"), "earlier");
}

TEST_F(KeepFileAsideTest, KeepsADanglingLink)
{
    fs::create_symlink("nowhere", file);

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(replaceWith("good"));

    EXPECT_EQ(fs::read_symlink(file + ".bad"), "nowhere");
    EXPECT_EQ(readFile(file, limit).value_or("none"), "good");
}

TEST_F(KeepFileAsideTest, SucceedsWhenThereIsNothingToKeep)
{
    folder.write("plain", "");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(keepFileAside(folder.path() / "missing" / "file"));
    EXPECT_TRUE(keepFileAside(folder.path() / "plain" / "file"));

    EXPECT_THAT(names(), ElementsAre("plain"));
}

TEST_F(KeepFileAsideTest, ReportsThatAFileCannotBeKept)
{
    EXPECT_FALSE(keepFileAside("/proc/self/status"));
}

}  // namespace
}  // namespace vorlane::platform
