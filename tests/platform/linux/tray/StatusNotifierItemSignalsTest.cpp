#include <gmock/gmock.h>

#include "tests/platform/linux/tray/StatusNotifierItemFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// Which changes of the item's content are signalled.
class StatusNotifierItemSignalsTest : public StatusNotifierItemFixture {};

TEST_F(StatusNotifierItemSignalsTest, SignalsNothingForItsFirstContent)
{
    show();

    EXPECT_THAT(tray.signals, IsEmpty());
}

TEST_F(StatusNotifierItemSignalsTest, SignalsNothingForTheSameContent)
{
    showFirst();

    show();

    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemSignalsTest, AnnouncesItsIconAndLabelAMomentAfterATrayHasAcceptedIt)
{
    ASSERT_TRUE(runUntil(busLoop, [&] { return !watcher.items.empty(); }));
    showFirst();

    runLoop.advance(Seconds{2});
    tray.settle();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()",
                                               "PropertiesChanged('org.kde.StatusNotifierItem', "
                                               "{'XAyatanaLabel': <'80% · 2:05'>}, [])"));
}

TEST_F(StatusNotifierItemSignalsTest, AnnouncesOnlyItsIconWithoutALabel)
{
    ASSERT_TRUE(runUntil(busLoop, [&] { return !watcher.items.empty(); }));
    content.imagePosition = ImagePosition::imageOnly;
    showFirst();

    runLoop.advance(Seconds{2});
    tray.settle();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()"));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewIconForANewSymbol)
{
    showFirst();
    content.symbol = "battery.50";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()"));
    EXPECT_EQ(tray.property("IconName"), "(<'vorlane-battery-50-symbolic'>)");
}

TEST_F(StatusNotifierItemSignalsTest, SignalsNoNewIconForANewDescription)
{
    showFirst();
    content.accessibilityDescription = "No battery found";

    show();

    EXPECT_THAT(tray.newSignals(),
                ElementsAre("NewTitle()",
                            "PropertiesChanged('org.kde.StatusNotifierItem', "
                            "{'IconAccessibleDesc': <'No battery found'>, "
                            "'AttentionAccessibleDesc': <'No battery found'>}, [])"));
    EXPECT_EQ(tray.property("Title"), "(<'Vorlane: No battery found'>)");
}

TEST_F(StatusNotifierItemSignalsTest, KeepsItsTitleOnTraysThatMayRememberIt)
{
    showOnTray("lxqt-panel");
    content.accessibilityDescription = "No battery found";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre(StartsWith("PropertiesChanged(")));
    EXPECT_EQ(tray.property("Title"), "(<'Vorlane'>)");
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewToolTipForANewSecondLine)
{
    showOnTray("panel-1-systray");
    EXPECT_EQ(tray.property("ToolTip"),
              "(<('', [], 'On battery, 2 h 5 min left', 'Battery 80%')>)");
    content.accessibilityDescription = "Battery 79%, On battery, 2 h 5 min left";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewToolTip()", StartsWith("PropertiesChanged(")));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsTheAttentionIconBeforeTheStatus)
{
    showFirst();
    content.needsAttention = true;

    show();
    EXPECT_THAT(tray.newSignals(),
                ElementsAre("NewAttentionIcon()", "NewStatus('NeedsAttention')"));

    show();
    EXPECT_THAT(tray.newSignals(), IsEmpty());

    content.needsAttention = false;
    show();
    EXPECT_THAT(tray.newSignals(), ElementsAre("NewStatus('Active')"));
    EXPECT_EQ(tray.property("Status"), "(<'Active'>)");
}

TEST_F(StatusNotifierItemSignalsTest, SignalsBothIconsWhileItNeedsAttention)
{
    content.needsAttention = true;
    showFirst();
    content.symbol = "battery.50";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()", "NewAttentionIcon()"));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewToolTip)
{
    showFirst();
    content.toolTip = "On battery, 2 h left";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewToolTip()"));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewLabelWithItsGuide)
{
    showFirst();
    content.title = " 79%";
    content.percent = 79;
    content.time.reset();

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("XAyatanaNewLabel('79%', '100%')"));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsAnEmptyLabelWhenTheTitleIsRemoved)
{
    showFirst();
    content.title = "";
    content.percent.reset();
    content.time.reset();
    content.imagePosition = ImagePosition::imageOnly;

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("XAyatanaNewLabel('', '')"));
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewIconWhenTheKindOfTrayChanges)
{
    showFirst();

    process.set("waybar");
    watcher.vanish();
    watcher.appear();
    EXPECT_TRUE(runUntil(busLoop, [this] { return !tray.signals.empty(); }));
    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()", "NewTitle()"));
    EXPECT_EQ(tray.property("IconName"), "(<''>)");

    process.set("mate-panel");
    watcher.vanish();
    watcher.appear();
    EXPECT_TRUE(runUntil(busLoop, [this] { return !tray.signals.empty(); }));
    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()", "NewTitle()"));
    EXPECT_EQ(tray.property("IconName"), "(<'vorlane-battery-75-symbolic'>)");
}

TEST_F(StatusNotifierItemSignalsTest, SignalsANewIconForANewNumberInIt)
{
    showOnTray("waybar");

    content.title = " 79% · 2:05";
    content.percent = 79;
    show();
    EXPECT_THAT(tray.newSignals(),
                ElementsAre("NewIcon()", "XAyatanaNewLabel('79% · 2:05', '100% · 00:00')"));

    show();
    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemSignalsTest, ReturnsToTheThemeIconWhenTheTitleIsRemoved)
{
    showOnTray("waybar");
    content.title = "";
    content.percent.reset();
    content.time.reset();
    content.imagePosition = ImagePosition::imageOnly;

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()", "XAyatanaNewLabel('', '')"));
    EXPECT_EQ(tray.property("IconName"), "(<'vorlane-battery-75-symbolic'>)");
}

TEST_F(StatusNotifierItemSignalsTest, SignalsNothingWhenOnlyTheMenuChanges)
{
    showFirst();
    content.menu = {};

    show();

    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
