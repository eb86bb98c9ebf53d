#include "platform/linux/AutostartLoginItem.h"

#include <gmock/gmock.h>

#include <sstream>

#include "tests/platform/linux/TemporaryFolder.h"

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

    // Keys in the group of a file that would start the program.
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

TEST_F(AutostartLoginItemTest, TurnsOnWithAFileOfOurs)
{
    EXPECT_FALSE(item().enabled());

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_TRUE(item().enabled());
    EXPECT_EQ(own(),
              "[Desktop Entry]\nType=Application\nName=Vorlane\nIcon=org.vorlane.Vorlane\n"
              "Terminal=false\nExec=\"" +
                  places.program + "\"\n");
}

TEST_F(AutostartLoginItemTest, TurnsOffByTakingItAway)
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

TEST_F(AutostartLoginItemTest, TellsWhatTheFilesSayNow)
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
                             "OnlyShowIn=GNOME;sway;\n", "NotShowIn=XFCE;\n", "TryExec=sh\n"}) {
        write("home/autostart", keys);
        EXPECT_TRUE(one.enabled()) << keys;
    }
}

TEST_F(AutostartLoginItemTest, TurnsOnAgainWhateverTurnedItOff)
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

TEST_F(AutostartLoginItemTest, KeepsAFileOfTheUsersWhenItTurnsOff)
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

TEST_F(AutostartLoginItemTest, TakesGarbageForOffAndKeepsItAside)
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

TEST_F(AutostartLoginItemTest, TakesAMaskForOff)
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

TEST_F(AutostartLoginItemTest, ChangesNothingThatIsAsItShouldBe)
{
    write("xdg/autostart", "");

    EXPECT_EQ(item().setEnabled(true), std::nullopt);

    EXPECT_EQ(own(), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
