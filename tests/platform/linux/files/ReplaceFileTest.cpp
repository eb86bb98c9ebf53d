#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/platform/linux/files/FilesFixture.h"
#include "tests/platform/linux/support/FullDisk.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class ReplaceFileTest : public FilesFixture {
protected:
    static unsigned modeOf(const fs::path& path)
    {
        return static_cast<unsigned>(fs::symlink_status(path).permissions());
    }

    // Sets the file's modification time years back.
    void makeOld(const char* name) const
    {
        const timespec old[] = {{.tv_sec = 1'000'000'000, .tv_nsec = 0},
                                {.tv_sec = 1'000'000'000, .tv_nsec = 0}};
        (void)utimensat(AT_FDCWD, (folder.path() / name).c_str(), old, AT_SYMLINK_NOFOLLOW);
    }
};

TEST_F(ReplaceFileTest, CreatesAPrivateFile)
{
    EXPECT_TRUE(replaceWith("content"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "content");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(ReplaceFileTest, WritesAllPiecesInTheirOrder)
{
    std::vector<std::string_view> pieces{"one ", "two ", "three"};
    std::size_t next = 0;

    EXPECT_TRUE(replaceFile(file, [&] { return next < 3 ? pieces[next++] : ""; }));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "one two three");
}

TEST_F(ReplaceFileTest, LeavesTheOldFileInPlaceWhileItWritesTheNewOne)
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

TEST_F(ReplaceFileTest, ReplacesALinkAndNotItsTarget)
{
    folder.write("target", "old");
    fs::create_symlink("target", file);

    EXPECT_TRUE(replaceWith("new"));

    EXPECT_FALSE(fs::is_symlink(file));
    EXPECT_EQ(readFile(file, limit).value_or("none"), "new");
    EXPECT_EQ(readFile(folder.path() / "target", limit).value_or("none"), "old");
}

TEST_F(ReplaceFileTest, LeavesTheOldFileUntouchedOnAFullDisk)
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

TEST_F(ReplaceFileTest, MovesAFolderAsideWhenItReplacesIt)
{
    fs::create_directories(fs::path(file) / "inner");

    EXPECT_TRUE(replaceWith("new"));

    EXPECT_EQ(readFile(file, limit).value_or("none"), "new");
    EXPECT_THAT(names(), ElementsAre("file", "file.bad"));
    EXPECT_TRUE(fs::is_directory(fs::path(file + ".bad") / "inner"));
}

TEST_F(ReplaceFileTest, SetsModesRegardlessOfTheUmask)
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

TEST_F(ReplaceFileTest, KeepsTheModeOfAnExistingFolder)
{
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_TRUE(replaceWith("content"));

    EXPECT_EQ(modeOf(folder.path()), 0755U);
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(ReplaceFileTest, NeverMakesTheContentReadableToOthers)
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
TEST_F(ReplaceFileTest, UsesUnpredictableTemporaryNames)
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

TEST_F(ReplaceFileTest, RemovesTemporariesOfAKilledProcess)
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

TEST_F(ReplaceFileTest, FailsWhereNoFolderIsPossible)
{
    folder.write("plain", "");

    EXPECT_FALSE(replaceFile(folder.path() / "plain" / "file", [] { return ""; }));
    EXPECT_FALSE(replaceFile("", [] { return ""; }));
    EXPECT_FALSE(replaceFile(folder.path().string() + "/", [] { return ""; }));
    EXPECT_THAT(names(), ElementsAre("plain"));
}

}  // namespace
}  // namespace vorlane::platform
