#include "platform/linux/TrayKind.h"

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
         {"", "plasmashell", "kded5", "kded6", "panel-1-systray", "xfce4-panel", "lxqt-panel",
          "waybar", "xapp-sn-watcher", "budgie-panel", "gnome-shell-calendar", "gnome", "mate"}) {
        EXPECT_EQ(trayKind(process), TrayKind::icons) << process;
    }
}

}  // namespace
}  // namespace vorlane::platform
