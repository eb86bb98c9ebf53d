#include "platform/linux/tray/TrayFace.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

const StatusItemContent content{
    .symbol = "battery.50",
    .accessibilityDescription = "Battery 57%, On battery, 2 h 5 min left",
    .imagePosition = ImagePosition::imageLeading,
    .title = " 57%",
    .percent = 57,
    .time = {},
    .toolTip = "On battery, 2 h 5 min left",
    .menu = {}};

TEST(TrayFaceTest, PutsTheDescriptionInTheTitleWhereScreenReadersGetIt)
{
    for (const auto tray : {TrayKind::labels, TrayKind::recoloredIcons}) {
        EXPECT_EQ(TrayFace::of(content, tray).title,
                  "Vorlane: Battery 57%, On battery, 2 h 5 min left");
        EXPECT_EQ(TrayFace::of({}, tray).title, "Vorlane");
    }
    for (const auto tray : {TrayKind::icons, TrayKind::describedIcons}) {
        EXPECT_EQ(TrayFace::of(content, tray).title, "Vorlane");
    }
}

TEST(TrayFaceTest, HasAToolTipOfOneLineExceptOnXfce)
{
    for (const auto tray : {TrayKind::labels, TrayKind::icons, TrayKind::recoloredIcons}) {
        EXPECT_EQ(TrayFace::of(content, tray).toolTip,
                  (TrayToolTip{.title = "On battery, 2 h 5 min left", .text = ""}));
    }
}

TEST(TrayFaceTest, PutsTheRestOfTheDescriptionInTheToolTipOnXfce)
{
    EXPECT_EQ(TrayFace::of(content, TrayKind::describedIcons).toolTip,
              (TrayToolTip{.title = "On battery, 2 h 5 min left", .text = "Battery 57%"}));
}

// XFCE shows a single line if the tooltip's title and text are the same.
TEST(TrayFaceTest, RepeatsTheTitleInTheToolTipOnXfceWhenThereIsNoRest)
{
    auto none = content;
    none.accessibilityDescription = "No battery found";
    none.toolTip = "No battery found";

    EXPECT_EQ(TrayFace::of(none, TrayKind::describedIcons).toolTip,
              (TrayToolTip{.title = "No battery found", .text = "No battery found"}));
}

}  // namespace
}  // namespace vorlane::platform
