#include "platform/linux/LinuxTexts.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

TEST(LinuxTextsTest, NameNoOtherSystem)
{
    for (const auto text : {linuxTexts.noBattery, linuxTexts.footnote, linuxTexts.closingNote,
                            linuxTexts.notificationsUnavailable, linuxTexts.permission,
                            linuxTexts.menuBar, linuxTexts.showPercent}) {
        EXPECT_FALSE(text.empty());
        for (const auto* const foreign :
             {"Mac", "macOS", "System Settings", "app bundle", "menu bar", "Menu bar"})
            EXPECT_EQ(text.find(foreign), std::string_view::npos) << text;
    }
}

TEST(LinuxTextsTest, ReplaceEveryDefault)
{
    const PlatformTexts defaults;

    EXPECT_NE(linuxTexts.noBattery, defaults.noBattery);
    EXPECT_NE(linuxTexts.footnote, defaults.footnote);
    EXPECT_NE(linuxTexts.closingNote, defaults.closingNote);
    EXPECT_NE(linuxTexts.notificationsUnavailable, defaults.notificationsUnavailable);
    EXPECT_NE(linuxTexts.permission, defaults.permission);
    EXPECT_NE(linuxTexts.menuBar, defaults.menuBar);
    EXPECT_NE(linuxTexts.showPercent, defaults.showPercent);
}

}  // namespace
}  // namespace vorlane::platform
