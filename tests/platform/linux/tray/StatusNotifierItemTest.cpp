#include "platform/linux/tray/StatusNotifierItem.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/ProcessName.h"
#include "tests/platform/linux/tray/FakeWatcher.h"
#include "tests/platform/linux/tray/TrayClient.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class StatusNotifierItemTest : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop busLoop;
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    BusPointer session = bus.connect(busLoop);
    BusPointer desktop = bus.connect(busLoop);
    FakeWatcher watcher{desktop.get()};
    ProcessName process{"gnome-shell"};  // that owns the watcher's name
    std::unique_ptr<StatusNotifierItem> item =
        std::make_unique<StatusNotifierItem>(session.get(), runLoop);
    TrayClient tray{busLoop,
                    desktop.get(),
                    {.owner = session.get(),
                     .path = "/StatusNotifierItem",
                     .interface = "org.kde.StatusNotifierItem"}};
    StatusItemContent content{.symbol = "battery.75",
                              .accessibilityDescription = "Battery 80%, On battery, 2 h 5 min left",
                              .imagePosition = ImagePosition::imageLeading,
                              .title = " 80% · 2:05",
                              .percent = 80,
                              .time = "2:05",
                              .toolTip = "On battery, 2 h 5 min left",
                              .menu = {{.action = MenuAction::quit, .title = "Quit"}}};
    int clicks = 0;

    void SetUp() override
    {
        watcher.appear();
        item->onAction([this] { ++clicks; });
    }

    void show()
    {
        item->show(content);
        tray.settle();
    }

    void showOnTray(const char* name)
    {
        process.set(name);
        watcher.vanish();
        watcher.appear();
        show();
        tray.settle();
        tray.signals.clear();
    }

    void showFirst()
    {
        show();
        tray.signals.clear();
    }
};

TEST_F(StatusNotifierItemTest, RegistersOnceOnConstruction)
{
    runUntil(busLoop, [this] { return !watcher.items.empty(); });

    show();

    EXPECT_THAT(watcher.items, SizeIs(1));
}

TEST_F(StatusNotifierItemTest, SignalsNothingForItsFirstContent)
{
    show();

    EXPECT_THAT(tray.signals, IsEmpty());
}

TEST_F(StatusNotifierItemTest, RegistersAgainWhenAsked)
{
    item->show(content);
    runUntil(busLoop, [this] { return watcher.items.size() == 1; });
    tray.settle();

    item->registerAgain();

    EXPECT_TRUE(runUntil(busLoop, [this] { return watcher.items.size() == 2; }));
}

TEST_F(StatusNotifierItemTest, HasEveryPropertyWithItsType)
{
    show();

    const std::map<std::string, std::string> expected{
        {"Id", "(<'vorlane'>)"},
        {"Category", "(<'Hardware'>)"},
        {"Title", "(<'Vorlane: Battery 80%, On battery, 2 h 5 min left'>)"},
        {"Status", "(<'Active'>)"},
        {"ItemIsMenu", "(<false>)"},
        {"Menu", "(<object '/StatusNotifierItem/Menu'>)"},
        {"IconName", "(<'vorlane-battery-75-symbolic'>)"},
        {"IconAccessibleDesc", "(<'Battery 80%, On battery, 2 h 5 min left'>)"},
        {"ToolTip", "(<('', [], 'On battery, 2 h 5 min left', '')>)"},
        {"XAyatanaLabel", "(<'80% · 2:05'>)"},
        {"XAyatanaLabelGuide", "(<'100% · 00:00'>)"},
        {"IconPixmap",
         "(<[(16, 16, 1024 bytes), (22, 22, 1936 bytes), (24, 24, 2304 bytes), "
         "(32, 32, 4096 bytes), (48, 48, 9216 bytes), (64, 64, 16384 bytes), "
         "(96, 96, 36864 bytes)]>)"},
    };
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(tray.property(name.c_str()), value) << name;
    }
    EXPECT_THAT(tray.property("IconThemePath"), HasSubstr("/share/icons'"));
}

TEST_F(StatusNotifierItemTest, ReturnsAllPropertiesAtOnce)
{
    show();

    const auto all = tray.properties();

    EXPECT_THAT(all, HasSubstr("'Menu': <object '/StatusNotifierItem/Menu'>"));
    EXPECT_THAT(all, HasSubstr("'ToolTip': <('', [], 'On battery, 2 h 5 min left', '')>"));
    EXPECT_THAT(all, HasSubstr("'IconPixmap': <[(16, 16, 1024 bytes), "));
}

TEST_F(StatusNotifierItemTest, ShowsTheSameIconWhenItNeedsAttention)
{
    content.needsAttention = true;
    show();

    EXPECT_EQ(tray.property("Status"), "(<'NeedsAttention'>)");
    EXPECT_EQ(tray.property("AttentionIconName"), "(<'vorlane-battery-75-symbolic'>)");
    EXPECT_EQ(tray.property("AttentionIconPixmap"), tray.property("IconPixmap"));
    EXPECT_EQ(tray.property("AttentionAccessibleDesc"), tray.property("IconAccessibleDesc"));
}

TEST_F(StatusNotifierItemTest, ShowsTheSamePixelsWhenItNeedsAttention)
{
    content.needsAttention = true;
    showOnTray("lxqt-panel");

    EXPECT_EQ(tray.property("AttentionIconName"), "(<''>)");
    EXPECT_EQ(tray.property("AttentionIconPixmap"), tray.property("IconPixmap"));
}

// Some trays show an overlay instead of the icon.
TEST_F(StatusNotifierItemTest, HasNoOverlay)
{
    show();

    EXPECT_THAT(tray.properties(), testing::Not(HasSubstr("Overlay")));
}

TEST_F(StatusNotifierItemTest, HasNoImageWithoutASymbol)
{
    content.symbol = std::nullopt;

    show();

    EXPECT_EQ(tray.property("IconName"), "(<''>)");
    EXPECT_EQ(tray.property("IconPixmap"), "(<[]>)");
}

TEST_F(StatusNotifierItemTest, HasNoLabelWhenOnlyTheImageIsWanted)
{
    content.imagePosition = ImagePosition::imageOnly;
    content.title = "";
    content.percent.reset();
    content.time.reset();

    show();

    EXPECT_EQ(tray.property("XAyatanaLabel"), "(<''>)");
    EXPECT_EQ(tray.property("XAyatanaLabelGuide"), "(<''>)");
}

TEST_F(StatusNotifierItemTest, ReservesRoomForTheWidestLabel)
{
    content.title = " 7%";
    content.percent = 7;
    content.time.reset();
    show();
    EXPECT_EQ(tray.property("XAyatanaLabelGuide"), "(<'100%'>)");

    content.title = " 0:07";
    content.percent.reset();
    content.time = "0:07";
    show();
    EXPECT_EQ(tray.property("XAyatanaLabelGuide"), "(<'00:00'>)");
}

TEST_F(StatusNotifierItemTest, SignalsNothingForTheSameContent)
{
    showFirst();

    show();

    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemTest, AnnouncesItsIconAndLabelAMomentAfterATrayHasAcceptedIt)
{
    ASSERT_TRUE(runUntil(busLoop, [&] { return !watcher.items.empty(); }));
    showFirst();

    runLoop.advance(Seconds{2});
    tray.settle();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()",
                                               "PropertiesChanged('org.kde.StatusNotifierItem', "
                                               "{'XAyatanaLabel': <'80% · 2:05'>}, [])"));
}

TEST_F(StatusNotifierItemTest, AnnouncesOnlyItsIconWithoutALabel)
{
    ASSERT_TRUE(runUntil(busLoop, [&] { return !watcher.items.empty(); }));
    content.imagePosition = ImagePosition::imageOnly;
    showFirst();

    runLoop.advance(Seconds{2});
    tray.settle();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()"));
}

TEST_F(StatusNotifierItemTest, SignalsANewIconForANewSymbol)
{
    showFirst();
    content.symbol = "battery.50";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()"));
    EXPECT_EQ(tray.property("IconName"), "(<'vorlane-battery-50-symbolic'>)");
}

TEST_F(StatusNotifierItemTest, SignalsNoNewIconForANewDescription)
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

TEST_F(StatusNotifierItemTest, KeepsItsTitleOnTraysThatMayRememberIt)
{
    showOnTray("lxqt-panel");
    content.accessibilityDescription = "No battery found";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre(StartsWith("PropertiesChanged(")));
    EXPECT_EQ(tray.property("Title"), "(<'Vorlane'>)");
}

TEST_F(StatusNotifierItemTest, SignalsANewToolTipForANewSecondLine)
{
    showOnTray("panel-1-systray");
    EXPECT_EQ(tray.property("ToolTip"),
              "(<('', [], 'On battery, 2 h 5 min left', 'Battery 80%')>)");
    content.accessibilityDescription = "Battery 79%, On battery, 2 h 5 min left";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewToolTip()", StartsWith("PropertiesChanged(")));
}

TEST_F(StatusNotifierItemTest, SignalsTheAttentionIconBeforeTheStatus)
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

TEST_F(StatusNotifierItemTest, SignalsBothIconsWhileItNeedsAttention)
{
    content.needsAttention = true;
    showFirst();
    content.symbol = "battery.50";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewIcon()", "NewAttentionIcon()"));
}

TEST_F(StatusNotifierItemTest, SignalsANewToolTip)
{
    showFirst();
    content.toolTip = "On battery, 2 h left";

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("NewToolTip()"));
}

TEST_F(StatusNotifierItemTest, SignalsANewLabelWithItsGuide)
{
    showFirst();
    content.title = " 79%";
    content.percent = 79;
    content.time.reset();

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("XAyatanaNewLabel('79%', '100%')"));
}

TEST_F(StatusNotifierItemTest, SignalsAnEmptyLabelWhenTheTitleIsRemoved)
{
    showFirst();
    content.title = "";
    content.percent.reset();
    content.time.reset();
    content.imagePosition = ImagePosition::imageOnly;

    show();

    EXPECT_THAT(tray.newSignals(), ElementsAre("XAyatanaNewLabel('', '')"));
}

TEST_F(StatusNotifierItemTest, HasTheNumberInItsPixelsOnTraysWithoutLabels)
{
    showOnTray("waybar");

    EXPECT_EQ(tray.property("IconName"), "(<''>)");
    EXPECT_THAT(tray.property("IconPixmap"), HasSubstr("(22, 22, 1936 bytes)"));
    EXPECT_EQ(tray.property("XAyatanaLabel"), "(<'80% · 2:05'>)");
}

TEST_F(StatusNotifierItemTest, SignalsANewIconWhenTheKindOfTrayChanges)
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

TEST_F(StatusNotifierItemTest, SignalsANewIconForANewNumberInIt)
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

TEST_F(StatusNotifierItemTest, ReturnsToTheThemeIconWhenTheTitleIsRemoved)
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

TEST_F(StatusNotifierItemTest, SignalsNothingWhenOnlyTheMenuChanges)
{
    showFirst();
    content.menu = {};

    show();

    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemTest, ReportsAClickOnALaterTurn)
{
    show();

    EXPECT_EQ(tray.call("Activate", "ii", 1268, -15), "()");
    EXPECT_EQ(clicks, 0);
    runLoop.settle();

    EXPECT_EQ(clicks, 1);
}

TEST_F(StatusNotifierItemTest, IgnoresAClickWithoutACallback)
{
    const auto other = bus.connect(busLoop);
    StatusNotifierItem bare(other.get(), runLoop);
    const TrayClient client(busLoop, desktop.get(),
                            {.owner = other.get(),
                             .path = "/StatusNotifierItem",
                             .interface = "org.kde.StatusNotifierItem"});

    EXPECT_EQ(client.call("Activate", "ii", 0, 0), "()");
    runLoop.settle();
}

TEST_F(StatusNotifierItemTest, DropsAPendingClickWhenDestroyed)
{
    show();
    tray.call("Activate", "ii", 0, 0);

    item.reset();
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
}

TEST_F(StatusNotifierItemTest, AcceptsEveryOtherGestureAndDoesNothing)
{
    showFirst();

    EXPECT_EQ(tray.call("SecondaryActivate", "ii", 0, 0), "()");
    EXPECT_EQ(tray.call("ContextMenu", "ii", 0, 0), "()");
    EXPECT_EQ(tray.call("Scroll", "is", -120, "vertical"), "()");
    EXPECT_EQ(tray.call("XAyatanaSecondaryActivate", "u", 0U), "()");
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusNotifierItemTest, KeepsTheActivationToken)
{
    EXPECT_EQ(tray.call("ProvideXdgActivationToken", "s", "token"), "()");

    EXPECT_STREQ(std::getenv("XDG_ACTIVATION_TOKEN"), "token");
    (void)unsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(StatusNotifierItemTest, RejectsCallsWithOtherArguments)
{
    show();

    EXPECT_EQ(tray.call("Activate", "ss", "1268", "15"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Activate", ""), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Scroll", "si", "vertical", 1), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Explode", ""), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_THAT(tray.property("Nonsense"), StartsWith("org.freedesktop.DBus.Error.Unknown"));
    runLoop.settle();

    EXPECT_EQ(clicks, 0);
}

TEST_F(StatusNotifierItemTest, AnswersBeforeTheFirstShow)
{
    EXPECT_EQ(tray.property("IconName"), "(<''>)");
    EXPECT_EQ(tray.property("Title"), "(<'Vorlane'>)");
    EXPECT_EQ(tray.property("ToolTip"), "(<('', [], '', '')>)");
}

}  // namespace
}  // namespace vorlane::platform
