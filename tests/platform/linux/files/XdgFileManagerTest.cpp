#include "platform/linux/files/XdgFileManager.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>

#include "platform/linux/files/XdgFolders.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

class XdgFileManagerTest : public testing::Test {
protected:
    XdgFileManager files;
    std::map<const char*, std::optional<std::string>> before;

    void SetUp() override
    {
        for (const auto* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            const auto* const value = std::getenv(name);
            before[name] = value ? std::optional<std::string>(value) : std::nullopt;
            (void)unsetenv(name);
        }
    }

    void TearDown() override
    {
        for (const auto& [name, value] : before) {
            value ? (void)setenv(name, value->c_str(), 1) : (void)unsetenv(name);
        }
    }

    static void set(const char* name, const char* value) { (void)setenv(name, value, 1); }
};

TEST_F(XdgFileManagerTest, KeepsDataInTheHomeFolder)
{
    set("HOME", "/home/user");

    EXPECT_THAT(files.applicationSupportFolders(), ElementsAre("/home/user/.local/share"));
    EXPECT_EQ(xdgConfigHome(), "/home/user/.config");
}

TEST_F(XdgFileManagerTest, KeepsDataWhereTheEnvironmentSays)
{
    set("HOME", "/home/user");
    set("XDG_DATA_HOME", "/data");
    set("XDG_CONFIG_HOME", "/config");

    EXPECT_THAT(files.applicationSupportFolders(), ElementsAre("/data"));
    EXPECT_EQ(xdgConfigHome(), "/config");
}

TEST_F(XdgFileManagerTest, IgnoresRelativeAndEmptyVariables)
{
    set("HOME", "/home/user");
    set("XDG_DATA_HOME", "data");
    set("XDG_CONFIG_HOME", "");

    EXPECT_THAT(files.applicationSupportFolders(), ElementsAre("/home/user/.local/share"));
    EXPECT_EQ(xdgConfigHome(), "/home/user/.config");
}

TEST_F(XdgFileManagerTest, FallsBackToTheHomeFolderOfTheAccount)
{
    const auto withoutHome = files.applicationSupportFolders();
    set("HOME", "relative");
    const auto withBadHome = files.applicationSupportFolders();

    ASSERT_EQ(withoutHome.size(), 1U);
    EXPECT_THAT(withoutHome.front(), testing::MatchesRegex("/.*/\\.local/share"));
    EXPECT_EQ(withBadHome, withoutHome);
}

TEST_F(XdgFileManagerTest, MakesReadsReplacesAndKeepsFiles)
{
    const TemporaryFolder folder;
    const std::string path = folder.path() / "Vorlane" / "history.json";
    std::vector<std::string_view> pieces{"[", "]", ""};
    std::size_t next = 0;

    files.createFolder(folder.path() / "Vorlane");

    EXPECT_EQ(files.read(path), std::nullopt);
    EXPECT_TRUE(files.keepAside(path));
    EXPECT_TRUE(files.replace(path, [&] { return pieces.at(next++); }));
    EXPECT_EQ(files.read(path), "[]");
    EXPECT_TRUE(files.keepAside(path));
    EXPECT_EQ(files.read(path + ".bad"), "[]");
}

TEST_F(XdgFileManagerTest, DoesNotReadAHundredMegabytes)
{
    const TemporaryFolder folder;
    folder.write("history.json", "[");
    std::filesystem::resize_file(folder.path() / "history.json", 100'000'000);

    EXPECT_EQ(files.read(folder.path() / "history.json"), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
