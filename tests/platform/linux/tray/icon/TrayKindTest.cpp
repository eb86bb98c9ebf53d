#include "platform/linux/tray/icon/TrayKind.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

TEST(TrayKindTest, KnowsTheTraysThatShowLabels)
{
    for (const auto* const process :
         {"gnome-shell", "mate-panel", "notification-ar", "ayatana-indicat", "indicator-appli",
          "indicator-application-service"}) {
        EXPECT_EQ(trayKind(process), TrayKind::labels) << process;
    }
}

TEST(TrayKindTest, TakesEveryOtherTrayForOneOfIcons)
{
    for (const auto* const process :
         {"", "lxqt-panel", "waybar", "xapp-sn-watcher", "budgie-panel", "gnome-shell-calendar",
          "gnome", "mate", "panel-1-whisker", "panel", "kded"}) {
        EXPECT_EQ(trayKind(process), TrayKind::icons) << process;
    }
}

TEST(TrayKindTest, KnowsPlasma)
{
    for (const auto* const process : {"plasmashell", "kded5", "kded6"}) {
        EXPECT_EQ(trayKind(process), TrayKind::titledIcons) << process;
    }
}

TEST(TrayKindTest, KnowsXfceByItsPanelAndByTheProcessOfItsPlugin)
{
    for (const auto* const process :
         {"xfce4-panel", "panel-1-systray", "panel-12-systra", "panel-123-systr"}) {
        EXPECT_EQ(trayKind(process), TrayKind::describedIcons) << process;
    }
}

}  // namespace
}  // namespace vorlane::platform
