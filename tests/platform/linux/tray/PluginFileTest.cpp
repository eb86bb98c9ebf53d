#include "platform/linux/tray/PluginFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/XTrayPlugin.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

class PluginFileTest : public testing::Test {
protected:
    static std::string whole()
    {
        std::ostringstream text;
        text << std::ifstream(VORLANE_X_TRAY, std::ios::binary).rdbuf();
        return text.str();
    }

    void* open() const { return openPlugin(plugin, xTrayEntryName); }

    TemporaryFolder folder;
    std::string plugin = (folder.path() / "plugin.so").string();
};

TEST_F(PluginFileTest, FindsItsFunction)
{
    folder.write("plugin.so", whole());

    EXPECT_NE(open(), nullptr);
    EXPECT_EQ(openPlugin(plugin, "another"), nullptr);
}

TEST_F(PluginFileTest, RejectsATruncatedFile)
{
    const auto content = whole();
    for (const auto length :
         {std::size_t{0}, std::size_t{10}, content.size() / 2, content.size() - 1}) {
        folder.write("plugin.so", content.substr(0, length));

        EXPECT_EQ(open(), nullptr) << length;
    }
}

TEST_F(PluginFileTest, RejectsAnythingButALibrary)
{
    EXPECT_EQ(open(), nullptr) << "no file";

    folder.write("plugin.so", std::string(4096, 'x'));
    EXPECT_EQ(open(), nullptr) << "no library";

    std::filesystem::remove(plugin);
    std::filesystem::create_directory(plugin);
    EXPECT_EQ(open(), nullptr) << "a folder";

    std::filesystem::remove(plugin);
    ASSERT_EQ(mkfifo(plugin.c_str(), S_IRWXU), 0);
    EXPECT_EQ(open(), nullptr) << "a pipe";

    std::filesystem::remove(plugin);
    std::filesystem::create_symlink("/dev/zero", plugin);
    EXPECT_EQ(open(), nullptr) << "a device";
}

}  // namespace
}  // namespace vorlane::platform
