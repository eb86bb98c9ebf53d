#include "platform/linux/files/Files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <set>
#include <utility>
#include <vector>

#include "tests/platform/linux/support/ChildProcess.h"
#include "tests/platform/linux/support/FullDisk.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

namespace fs = std::filesystem;

class FilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder.path() / "file";
    static constexpr std::size_t limit = 100;

    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        return names;
    }

    static unsigned modeOf(const fs::path& path)
    {
        return static_cast<unsigned>(fs::symlink_status(path).permissions());
    }

    // Sets its modification time years back.
    void makeOld(const char* name) const
    {
        const timespec old[] = {{.tv_sec = 1'000'000'000, .tv_nsec = 0},
                                {.tv_sec = 1'000'000'000, .tv_nsec = 0}};
        (void)utimensat(AT_FDCWD, (folder.path() / name).c_str(), old, AT_SYMLINK_NOFOLLOW);
    }

    Expected<> replaceWith(std::string_view content) const { return replaceFile(file, content); }
};

TEST_F(FilesTest, ReadsAFileWhole)
{
    folder.write("file", std::string_view("a\0b\n", 4));

    EXPECT_EQ(readFile(file, limit).value_or("none"), std::string("a\0b\n", 4));
}

TEST_F(FilesTest, ReadsAnEmptyFileAsEmpty)
{
    folder.write("file", "");

    EXPECT_EQ(readFile(file, limit).value_or("none"), "");
}

TEST_F(FilesTest, ReadsUpToTheLimitAndNothingBeyond)
{
    folder.write("file", std::string(limit, 'x'));
    EXPECT_EQ(readFile(file, limit).value_or("none"), std::string(limit, 'x'));

    folder.write("file", std::string(limit + 1, 'x'));
    EXPECT_FALSE(readFile(file, limit));
}

TEST_F(FilesTest, ReadsAFileOfManyPieces)
{
    std::string content;
    for (int i = 0; content.size() < 1'000'000; ++i) content += std::to_string(i);
    folder.write("file", content);

    EXPECT_EQ(readFile(file, 2'000'000).value_or("none"), content);
}

TEST_F(FilesTest, ReadsThroughALink)
{
    folder.write("target", "content");
    fs::create_symlink("target", file);

    EXPECT_EQ(readFile(file, limit).value_or("none"), "content");
}

TEST_F(FilesTest, ReadsOnlyRegularFilesAndNeverBlocks)
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

TEST_F(FilesTest, CreatesAPrivateFile)
{
    EXPECT_TRUE(replaceWith("content"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "content");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FilesTest, WritesAllPiecesInTheirOrder)
{
    std::vector<std::string_view> pieces{"one ", "two ", "three"};
    std::size_t next = 0;

    EXPECT_TRUE(replaceFile(file, [&] { return next < 3 ? pieces[next++] : ""; }));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "one two three");
}

TEST_F(FilesTest, LeavesTheOldFileInPlaceWhileItWritesTheNewOne)
{
    folder.write("file", "old");
    std::string seen;
    std::string_view content = "new";

    EXPECT_TRUE(replaceFile(file, [&] {
        seen += readFile(file, limit).value_or("none") + ",";
        return std::exchange(content, {});
    }));

    EXPECT_EQ(seen, "old,old,");
    EXPECT_EQ(readFile(file, limit).value_or("none"), "new");
}

TEST_F(FilesTest, ReplacesALinkAndNotItsTarget)
{
    folder.write("target", "old");
    fs::create_symlink("target", file);

    EXPECT_TRUE(replaceWith("new"));

    EXPECT_FALSE(fs::is_symlink(file));
    EXPECT_EQ(readFile(file, limit).value_or("none"), "new");
    EXPECT_EQ(readFile(folder.path() / "target", limit).value_or("none"), "old");
}

TEST_F(FilesTest, LeavesTheOldFileUntouchedOnAFullDisk)
{
    folder.write("file", "old");
    const std::string large(100'000, 'x');
    Expected<> replaced;
    {
        const FullDisk full(4096);
        replaced = replaceWith(large);
    }

    EXPECT_FALSE(replaced);
    EXPECT_EQ(readFile(file, limit).value_or("none"), "old");
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FilesTest, MovesAFolderAsideWhenItReplacesIt)
{
    fs::create_directories(fs::path(file) / "inner");

    EXPECT_TRUE(replaceWith("new"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "new");
    EXPECT_THAT(names(), ElementsAre("file", "file.bad"));
    EXPECT_TRUE(fs::is_directory(fs::path(file + ".bad") / "inner"));
}

TEST_F(FilesTest, SetsModesRegardlessOfTheUmask)
{
    file = folder.path() / "new" / "inner" / "file";
    const auto before = umask(0777);
    const auto replaced = replaceWith("content");
    (void)umask(before);

    EXPECT_TRUE(replaced);
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(folder.path() / "new" / "inner"), 0700U);
    EXPECT_EQ(modeOf(folder.path() / "new"), 0700U);
}

TEST_F(FilesTest, KeepsTheModeOfAnExistingFolder)
{
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_TRUE(replaceWith("content"));

    EXPECT_EQ(modeOf(folder.path()), 0755U);
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(FilesTest, NeverMakesTheContentReadableToOthers)
{
    folder.write("file", "old");
    fs::permissions(file, fs::perms{0666});

    EXPECT_TRUE(replaceFile(file, [&, first = true]() mutable -> std::string_view {
        for (const auto& name : names())
            EXPECT_TRUE(name == "file" || modeOf(folder.path() / name) == 0600);
        return std::exchange(first, false) ? "new" : "";
    }));

    EXPECT_EQ(modeOf(file), 0600U);
}

// Otherwise an attacker could put a link there first.
TEST_F(FilesTest, UsesUnpredictableTemporaryNames)
{
    std::set<std::string> seen;
    for (int i = 0; i < 20; ++i) {
        std::string_view content = "new";
        EXPECT_TRUE(replaceFile(file, [&] {
            for (const auto& name : names()) seen.insert(name);
            return std::exchange(content, {});
        }));
    }

    seen.erase("file");
    EXPECT_EQ(seen.size(), 20U);
}

TEST_F(FilesTest, RemovesTemporariesOfAKilledProcess)
{
    for (const auto* name : {".file.aB3xY9", ".file.young1", ".file.other", ".file.six-le",
                             ".file2.aB3xY9", "file.aB3xY9"}) {
        folder.write(name, "left");
        if (name != std::string_view(".file.young1")) makeOld(name);
    }
    fs::create_directory(folder.path() / ".file.folder");
    fs::create_symlink("file", folder.path() / ".file.aalink");
    makeOld(".file.folder");
    makeOld(".file.aalink");

    EXPECT_TRUE(replaceWith("new"));

    EXPECT_THAT(names(), ElementsAre(".file.aalink", ".file.folder", ".file.other", ".file.six-le",
                                     ".file.young1", ".file2.aB3xY9", "file", "file.aB3xY9"));
}

TEST_F(FilesTest, ReadsOnlyFilesOfTheUserAndOfRoot)
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

TEST_F(FilesTest, SaysWhyAFileCannotBeRead)
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

TEST_F(FilesTest, FailsWhereNoFolderIsPossible)
{
    folder.write("plain", "");

    EXPECT_FALSE(replaceFile(folder.path() / "plain" / "file", [] { return ""; }));
    EXPECT_FALSE(replaceFile("", [] { return ""; }));
    EXPECT_FALSE(replaceFile(folder.path().string() + "/", [] { return ""; }));
    EXPECT_THAT(names(), ElementsAre("plain"));
}

TEST_F(FilesTest, KeepsAFileUnderASecondNameUntilItIsReplaced)
{
    folder.write("file", "bad");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_EQ(readFile(file, limit).value_or("none"), "bad");  // whole at every moment
    EXPECT_TRUE(replaceWith("good"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "good");
    EXPECT_EQ(readFile(file + ".bad", limit).value_or("none"), "bad");
}

TEST_F(FilesTest, NeverOverwritesAnEarlierBackup)
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

TEST_F(FilesTest, KeepsTheSameFileOnlyOnce)
{
    folder.write("file", "bad");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(keepFileAside(file));

    EXPECT_THAT(names(), ElementsAre("file", "file.bad"));
}

TEST_F(FilesTest, MovesAFolderAside)
{
    folder.write("file/inner", "kept");
    folder.write("file.bad", "earlier");

    EXPECT_TRUE(keepFileAside(file));

    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(readFile(file + ".bad.1/inner", limit).value_or("none"), "kept");
    EXPECT_EQ(readFile(file + ".bad", limit).value_or("none"), "earlier");
}

TEST_F(FilesTest, KeepsADanglingLink)
{
    fs::create_symlink("nowhere", file);

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(replaceWith("good"));

    EXPECT_EQ(fs::read_symlink(file + ".bad"), "nowhere");
    EXPECT_EQ(readFile(file, limit).value_or("none"), "good");
}

TEST_F(FilesTest, SucceedsWhenThereIsNothingToKeep)
{
    folder.write("plain", "");

    EXPECT_TRUE(keepFileAside(file));
    EXPECT_TRUE(keepFileAside(folder.path() / "missing" / "file"));
    EXPECT_TRUE(keepFileAside(folder.path() / "plain" / "file"));

    EXPECT_THAT(names(), ElementsAre("plain"));
}

TEST_F(FilesTest, ReportsThatAFileCannotBeKept)
{
    EXPECT_FALSE(keepFileAside("/proc/self/status"));
}

TEST_F(FilesTest, CreatesPrivateFolders)
{
    const auto inner = folder.path() / "one" / "two";

    makeFolders(inner);
    makeFolders(inner);

    EXPECT_EQ(fs::status(inner).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(inner.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(FilesTest, FindsTheFolderOfAPath)
{
    EXPECT_EQ(folderOf("/a/b/c"), "/a/b");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("/"), "/");
    EXPECT_EQ(folderOf("a"), ".");
}

}  // namespace
}  // namespace vorlane::platform
