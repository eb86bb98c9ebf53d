#include <gtest/gtest.h>

#include "tests/platform/linux/files/FilesFixture.h"

namespace vorlane::platform {
namespace {

namespace fs = std::filesystem;

class FoldersTest : public FilesFixture {};

TEST_F(FoldersTest, CreatesPrivateFolders)
{
    const auto inner = folder.path() / "one" / "two";

    makeFolders(inner);
    makeFolders(inner);

    EXPECT_EQ(fs::status(inner).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(inner.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(FoldersTest, FindsTheFolderOfAPath)
{
    EXPECT_EQ(folderOf("/a/b/c"), "/a/b");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("/"), "/");
    EXPECT_EQ(folderOf("a"), ".");
}

}  // namespace
}  // namespace vorlane::platform
