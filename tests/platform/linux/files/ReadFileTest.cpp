#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <system_error>

#include "tests/platform/linux/files/FilesFixture.h"
#include "tests/platform/linux/support/ChildProcess.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

class ReadFileTest : public FilesFixture {};

TEST_F(ReadFileTest, ReadsAFileWhole)
{
    folder.write("file", std::string_view("a\0b\n", 4));

    EXPECT_EQ(readFile(file, limit).value_or("none"), std::string("a\0b\n", 4));
}

TEST_F(ReadFileTest, ReadsAnEmptyFileAsEmpty)
{
    folder.write("file", "");

    EXPECT_EQ(readFile(file, limit).value_or("none"), "");
}

TEST_F(ReadFileTest, ReadsUpToTheLimitAndNothingBeyond)
{
    folder.write("file", std::string(limit, 'x'));
    EXPECT_EQ(readFile(file, limit).value_or("none"), std::string(limit, 'x'));

    folder.write("file", std::string(limit + 1, 'x'));
    EXPECT_FALSE(readFile(file, limit));
}

TEST_F(ReadFileTest, ReadsAFileOfManyPieces)
{
    std::string content;
    for (int i = 0; content.size() < 1'000'000; ++i) content += std::to_string(i);
    folder.write("file", content);

    EXPECT_EQ(readFile(file, 2'000'000).value_or("none"), content);
}

TEST_F(ReadFileTest, ReadsThroughALink)
{
    folder.write("target", "content");
    fs::create_symlink("target", file);

    EXPECT_EQ(readFile(file, limit).value_or("none"), "content");
}

TEST_F(ReadFileTest, ReadsOnlyRegularFilesAndNeverBlocks)
{
    EXPECT_FALSE(readFile(file, limit));
    EXPECT_FALSE(readFile("", limit));
    EXPECT_FALSE(readFile(folder.path(), limit));
    EXPECT_FALSE(readFile("/dev/zero", limit));

    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(file, limit));

    fs::create_symlink("loop", folder.path() / "loop");
    EXPECT_FALSE(readFile(folder.path() / "loop", limit));
}

TEST_F(ReadFileTest, ReadsOnlyFilesOfTheUserAndOfRoot)
{
    if (getuid() != 0) GTEST_SKIP() << "only root can give a file to another user";
    folder.write("file", "content");
    fs::permissions(folder.path(), fs::perms{0777});
    fs::permissions(file, fs::perms{0666});
    ASSERT_EQ(chown(file.c_str(), 12'345, 12'345), 0);

    const auto content = readOwnFile(file, limit);
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error(), std::errc::operation_not_permitted);
    EXPECT_EQ(readFile(file, limit).value_or("none"), "content");
    fs::create_symlink(file, folder.path() / "link");
    EXPECT_FALSE(readOwnFile(folder.path() / "link", limit));

    ASSERT_EQ(chown(file.c_str(), 0, 0), 0);
    EXPECT_TRUE(holdsInChild([&] {
        ASSERT_EQ(setresuid(nobody, nobody, nobody), 0);
        EXPECT_EQ(readOwnFile(file, limit).value_or("none"), "content");
    }));
}

TEST_F(ReadFileTest, SaysWhyAFileCannotBeRead)
{
    const auto why = [](const std::string& path) {
        const auto content = readFile(path, limit);
        return content ? std::errc() : content.error();
    };
    folder.write("long", std::string(limit + 1, 'x'));

    EXPECT_EQ(why(file), std::errc::no_such_file_or_directory);
    EXPECT_EQ(why(folder.path()), std::errc::invalid_argument);
    EXPECT_EQ(why("/dev/zero"), std::errc::invalid_argument);
    EXPECT_EQ(why(folder.path() / "long"), std::errc::file_too_large);
    EXPECT_TRUE(countsAsEmpty(std::errc::file_too_large));
    EXPECT_FALSE(countsAsEmpty(std::errc::io_error));
    EXPECT_FALSE(countsAsEmpty(std::errc::too_many_files_open));
}

}  // namespace
}  // namespace vorlane::platform
