#include "platform/linux/session/AutostartLoginItem.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <cstdlib>
#include <random>
#include <sstream>

#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* fileName = "org.vorlane.Vorlane.desktop";

class AutostartLoginItemTest : public testing::Test {
protected:
    AutostartLoginItemTest()
    {
        writeProgram("bin/vorlane");
        places = {.own = path("home/autostart/"),
                  .systems = {path("local/autostart/"), path("xdg/autostart/")},
                  .program = (folder.path() / "bin/vorlane").string(),
                  .desktops = {"sway", "wlroots"}};
    }

    std::string path(const char* in) const { return (folder.path() / in / fileName).string(); }

    void writeProgram(const std::string& name) const
    {
        folder.write(name, "#!/bin/sh\n");
        std::filesystem::permissions(folder.path() / name, std::filesystem::perms::owner_all);
    }

    // Writes a file that starts the program, unless `keys` prevent it.
    void write(const char* in, const std::string& keys) const
    {
        folder.write(std::filesystem::path(in) / fileName,
                     "[Desktop Entry]\nType=Application\nExec=\"" + places.program + "\"\n" + keys);
    }

    AutostartLoginItem item() const { return AutostartLoginItem(places); }

    std::optional<std::string> own() const
    {
        std::ifstream stream(places.own);
        if (!stream) return std::nullopt;
        return (std::ostringstream() << stream.rdbuf()).str();
    }

    TemporaryFolder folder;
    AutostartLoginItem::Places places;
};

TEST_F(AutostartLoginItemTest, TurnsOnByWritingAFile)
{
    EXPECT_FALSE(item().enabled());

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_TRUE(item().enabled());
    EXPECT_EQ(own(),
              "[Desktop Entry]\nType=Application\nName=Vorlane\nIcon=org.vorlane.Vorlane\n"
              "Terminal=false\nExec=\"" +
                  places.program + "\"\n");
}

TEST_F(AutostartLoginItemTest, TurnsOffByRemovingItsFile)
{
    (void)item().setEnabled(true);

    EXPECT_EQ(item().setEnabled(false), std::nullopt);

    EXPECT_FALSE(item().enabled());
    EXPECT_EQ(own(), std::nullopt);
}

TEST_F(AutostartLoginItemTest, TurnsOffWhatTheSystemWouldStart)
{
    write("xdg/autostart", "");
    EXPECT_TRUE(item().enabled());

    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().enabled());
    EXPECT_THAT(own().value(), HasSubstr("Hidden=true"));

    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().enabled());
    EXPECT_THAT(own().value(), Not(HasSubstr("Hidden")));
}

TEST_F(AutostartLoginItemTest, TakesTheFirstOfTheSystemsFiles)
{
    write("xdg/autostart", "");
    write("local/autostart", "Hidden=true\n");

    EXPECT_FALSE(item().enabled());
}

TEST_F(AutostartLoginItemTest, FollowsTheKeysOfTheFile)
{
    const auto one = item();
    for (const auto* keys :
         {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "OnlyShowIn=GNOME;KDE;\n",
          "OnlyShowIn=\n", "NotShowIn=XFCE;wlroots;\n", "TryExec=/nowhere/vorlane\n",
          "TryExec=no-such-program-anywhere\n", "Exec=/nowhere/vorlane\n"}) {
        write("home/autostart", "");
        EXPECT_TRUE(one.enabled());
        write("home/autostart", keys);
        EXPECT_FALSE(one.enabled()) << keys;
    }
    for (const auto* keys : {"Hidden=false\n", "X-GNOME-Autostart-enabled=true\n",
                             "OnlyShowIn=GNOME;;sway;\n", "NotShowIn=XFCE;\n", "TryExec=sh\n"}) {
        write("home/autostart", keys);
        EXPECT_TRUE(one.enabled()) << keys;
    }
}

TEST_F(AutostartLoginItemTest, OverridesAnyKeyThatTurnedItOff)
{
    for (const auto* keys :
         {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "OnlyShowIn=GNOME;KDE;\n",
          "NotShowIn=XFCE;wlroots;\n", "TryExec=/nowhere/vorlane\n", "Exec=/nowhere/vorlane\n"}) {
        write("home/autostart", std::string(keys) + "Comment=mine\n");

        EXPECT_EQ(item().setEnabled(true), std::nullopt);

        EXPECT_TRUE(item().enabled()) << keys;
        EXPECT_THAT(own().value(), HasSubstr("Comment=mine")) << keys;
    }
}

TEST_F(AutostartLoginItemTest, KeepsTheUsersFileWhenItTurnsOff)
{
    write("home/autostart", "X-MATE-Autostart-Delay=10\n");
    const auto before = own().value();

    EXPECT_EQ(item().setEnabled(false), std::nullopt);

    EXPECT_FALSE(item().enabled());
    EXPECT_EQ(own(), before + "Hidden=true\n");
}

TEST_F(AutostartLoginItemTest, KeepsTheCommandThatTheUserWrote)
{
    const auto command = "env LANG=C \"" + places.program + "\"";
    folder.write(std::filesystem::path("home/autostart") / fileName,
                 "[Desktop Entry]\nHidden=true\nExec=" + command + "\n");

    (void)item().setEnabled(true);

    EXPECT_THAT(own().value(), HasSubstr("Exec=" + command + "\n"));
}

TEST_F(AutostartLoginItemTest, FollowsAProgramThatMoved)
{
    (void)item().setEnabled(true);
    std::filesystem::rename(folder.path() / "bin", folder.path() / "new bin");
    places.program = (folder.path() / "new bin/vorlane").string();
    EXPECT_FALSE(item().enabled());

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_TRUE(item().enabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_EQ(own(), std::nullopt);
}

TEST_F(AutostartLoginItemTest, StartsAProgramWithAnyName)
{
    const std::string name = "a b/50% \"of\" $x\\`y`/vorlane";
    writeProgram(name);
    places.program = (folder.path() / name).string();

    (void)item().setEnabled(true);

    EXPECT_TRUE(item().enabled());
}

// Names with characters that are special in desktop files or shells.
std::vector<std::string> awkwardNames()
{
    std::vector<std::string> names{"plain",  "a b",         " lead",  "trail ",
                                   "q\"q",   "s'q",         "$HOME",  "`id`",
                                   "$(id)",  "50%",         "%f%u%%", "back\\slash",
                                   "\\n\\s", "caf\xC3\xA9", "a=b",    ";&|<>*?#()~!{}[]",
                                   "-c",     "~",           "#"};
    constexpr std::string_view nasty = "\"'`$\\%= ;&|*?<>()#~!n0";
    std::mt19937 random(7);
    for (int i = 0; i < 40; ++i) {
        std::string name = "r" + std::to_string(i);
        for (auto left = 1 + random() % 8; left > 0; --left) name += nasty[random() % nasty.size()];
        names.push_back(name);
    }
    return names;
}

bool appearsSoon(const std::filesystem::path& path)
{
    for (int look = 0; look < 1000 && !std::filesystem::exists(path); ++look) (void)usleep(10'000);
    return std::filesystem::exists(path);
}

TEST_F(AutostartLoginItemTest, IsStartedFromAnyFolder)
{
    if (std::system("/usr/bin/python3 -c 'from gi.repository import Gio' 2>/dev/null") != 0) {
        GTEST_SKIP() << "GLib for Python, which starts the programs, is not installed";
    }
    std::vector<std::filesystem::path> started;
    std::string command = "/usr/bin/python3 " VORLANE_LAUNCH;
    for (const auto& name : awkwardNames()) {
        const auto program = std::filesystem::path(name) / "vorlane";
        folder.write(program, "#!/bin/sh\n: > \"$0.started\"\n");
        std::filesystem::permissions(folder.path() / program, std::filesystem::perms::owner_all);
        places.program = (folder.path() / program).string();
        places.own =
            (folder.path() / "home" / std::to_string(started.size())).string() + ".desktop";

        EXPECT_EQ(item().setEnabled(true), std::nullopt);
        EXPECT_TRUE(item().enabled()) << name;
        started.emplace_back(places.program + ".started");
        command += " " + places.own;
    }

    EXPECT_EQ(std::system(command.c_str()), 0);

    for (const auto& mark : started) EXPECT_TRUE(appearsSoon(mark)) << mark;
}

TEST_F(AutostartLoginItemTest, SaysThatItCannotStartAProgramFromSomeFolders)
{
    write("xdg/autostart", "Hidden=true\n");
    for (const auto* name : {"new\nline/vorlane", "caf\xE9/vorlane"}) {
        writeProgram(name);
        places.program = (folder.path() / name).string();

        EXPECT_EQ(item().setEnabled(true),
                  "The path of Vorlane has characters that an autostart file cannot hold.");

        EXPECT_FALSE(item().enabled());
        EXPECT_EQ(own(), std::nullopt);
    }
}

TEST_F(AutostartLoginItemTest, TurnsOffFromAnyFolderWhatTheSystemWouldStart)
{
    write("xdg/autostart", "");
    places.program = (folder.path() / "caf\xE9").string();

    EXPECT_EQ(item().setEnabled(false), std::nullopt);

    EXPECT_FALSE(item().enabled());
    EXPECT_THAT(own().value(), Not(HasSubstr("Exec")));
}

TEST_F(AutostartLoginItemTest, NoticesThatAProgramInAnOddFolderIsGone)
{
    writeProgram("50%/vorlane");
    places.program = (folder.path() / "50%/vorlane").string();
    (void)item().setEnabled(true);

    std::filesystem::remove(places.program);

    EXPECT_FALSE(item().enabled());
}

TEST_F(AutostartLoginItemTest, ChangesNothingThatItCannotKeepAside)
{
    folder.write(std::filesystem::path("home/autostart") / fileName, "mine");
    for (int i = 0; i < 1000; ++i) {
        std::ofstream(places.own + ".bad" + (i == 0 ? "" : "." + std::to_string(i)));
    }

    EXPECT_EQ(item().setEnabled(true), "File exists");

    EXPECT_EQ(own(), "mine");
}

TEST_F(AutostartLoginItemTest, TreatsGarbageAsOffAndKeepsItAside)
{
    const auto garbage = std::string(
        "\x7f"
        "ELF\0\1\2",
        7);
    folder.write(std::filesystem::path("home/autostart") / fileName, garbage);
    write("xdg/autostart", "");
    EXPECT_FALSE(item().enabled());

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_TRUE(item().enabled());
    EXPECT_TRUE(std::filesystem::exists(places.own + ".bad"));
}

TEST_F(AutostartLoginItemTest, TreatsALinkToDevNullAsOff)
{
    write("xdg/autostart", "");
    std::filesystem::create_directories(folder.path() / "home/autostart");
    std::filesystem::create_symlink("/dev/null", places.own);

    EXPECT_FALSE(item().enabled());
}

TEST_F(AutostartLoginItemTest, SaysWhyItCannotTurnOn)
{
    folder.write("home/autostart", "a file where the folder should be");

    EXPECT_EQ(item().setEnabled(true), "Not a directory");

    EXPECT_FALSE(item().enabled());
}

TEST_F(AutostartLoginItemTest, ChangesNothingWhenTheSystemStartsIt)
{
    write("xdg/autostart", "");

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_EQ(own(), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
