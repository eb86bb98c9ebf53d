#include "platform/linux/session/DesktopEntry.h"

#include <gtest/gtest.h>

#include <random>

namespace vorlane::platform {
namespace {

TEST(DesktopEntryTest, ReadsTheKeysOfItsGroupOnly)
{
    const DesktopEntry entry(
        "# Name=Comment\n"
        "[Desktop Entry]\n"
        "Name = Vorlane \r\n"
        "Exec=vorlane\n"
        "[Desktop Action Quit]\n"
        "Exec=other\n"
        "Hidden=true\n");

    EXPECT_TRUE(entry.isValid());
    EXPECT_EQ(entry.value("Name"), "Vorlane");
    EXPECT_EQ(entry.value("Exec"), "vorlane");
    EXPECT_EQ(entry.value("Hidden"), std::nullopt);
}

TEST(DesktopEntryTest, IsNotValidWithoutItsGroup)
{
    for (const auto* text : {"", "Exec=vorlane\n", "[Other]\nExec=vorlane",
                             "\x7f"
                             "ELF\0\n"}) {
        EXPECT_FALSE(DesktopEntry(text).isValid()) << text;
        EXPECT_EQ(DesktopEntry(text).value("Exec"), std::nullopt);
    }
}

TEST(DesktopEntryTest, ResolvesEscapes)
{
    const DesktopEntry entry("[Desktop Entry]\nA=\\sx\\\\y\\tz\\q\\\nB=no end\\");

    EXPECT_EQ(entry.value("A"), " x\\y\tz\\q\\");
    EXPECT_EQ(entry.value("B"), "no end\\");
}

TEST(DesktopEntryTest, KeepsEverythingElse)
{
    DesktopEntry entry(
        "# mine\n"
        "[Desktop Entry]\n"
        "Exec = old\n"
        "\n"
        "# why\n"
        "Comment=x\n"
        "Exec=older\n"
        "\n"
        "[Desktop Action A]\n"
        "Exec=a\n");

    entry.set("Exec", "new");
    entry.set("Hidden", "true");
    entry.remove("Comment");

    EXPECT_EQ(entry.text(),
              "# mine\n"
              "[Desktop Entry]\n"
              "Exec=new\n"
              "\n"
              "# why\n"
              "Hidden=true\n"
              "\n"
              "[Desktop Action A]\n"
              "Exec=a\n");
}

TEST(DesktopEntryTest, QuotesAPath)
{
    EXPECT_EQ(execCommand("/usr/bin/vorlane"), "\"/usr/bin/vorlane\"");
    EXPECT_EQ(execCommand("/a b/$x/`y`/\"z\"/\\"), "\"/a b/\\$x/\\`y\\`/\\\"z\\\"/\\\\\"");
    EXPECT_EQ(execCommand("/caf\xC3\xA9"), "\"/caf\xC3\xA9\"");
}

TEST(DesktopEntryTest, UsesAShellForNamesThatExecDoesNotAllow)
{
    EXPECT_EQ(execCommand("/50%"), "/bin/sh -c \"exec \\\"\\$0\\\"\" \"/50%%\"");
    EXPECT_EQ(execCommand("/a=b"), "/bin/sh -c \"exec \\\"\\$0\\\"\" \"/a=b\"");
}

TEST(DesktopEntryTest, RefusesAPathThatExecCannotHold)
{
    for (const auto* path : {"/tab\t", "/new\nline", "/\x01", "/\x7F", "/caf\xE9", "/\xFF"}) {
        EXPECT_EQ(execCommand(path), std::nullopt) << path;
    }
}

TEST(DesktopEntryTest, RecognisesOnlyItsOwnShellCommand)
{
    EXPECT_EQ(programOf("/bin/sh -c \"exec true\""), "/bin/sh");
    EXPECT_EQ(programOf("/bin/sh -c"), "/bin/sh");
}

TEST(DesktopEntryTest, ReadsBackPathsOfAnyLetters)
{
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        std::string path = "/\xC3\xA4";
        for (auto left = random() % 20; left > 0; --left)
            path += static_cast<char>(' ' + random() % 95);
        DesktopEntry entry("[Desktop Entry]\n");
        entry.set("Exec", execCommand(path).value());

        EXPECT_EQ(programOf(DesktopEntry(entry.text()).value("Exec").value()), path);
    }
}

TEST(DesktopEntryTest, FindsTheProgramBeforeItsArguments)
{
    EXPECT_EQ(programOf("vorlane --flag %u"), "vorlane");
    EXPECT_EQ(programOf("\"/a b/v\" x"), "/a b/v");
    EXPECT_EQ(programOf(""), "");
}

}  // namespace
}  // namespace vorlane::platform
