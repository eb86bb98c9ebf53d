#include "platform/linux/tray/StatusNotifierItem.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "tests/platform/linux/tray/StatusNotifierItemFixture.h"

namespace vorlane::platform {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

// How the item registers, and its properties.
class StatusNotifierItemTest : public StatusNotifierItemFixture {};

TEST_F(StatusNotifierItemTest, RegistersOnceOnConstruction)
{
    runUntil(busLoop, [this] { return !watcher.items.empty(); });

    show();

    EXPECT_THAT(watcher.items, SizeIs(1));
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

TEST_F(StatusNotifierItemTest, HasTheNumberInItsPixelsOnTraysWithoutLabels)
{
    showOnTray("waybar");

    EXPECT_EQ(tray.property("IconName"), "(<''>)");
    EXPECT_THAT(tray.property("IconPixmap"), HasSubstr("(22, 22, 1936 bytes)"));
    EXPECT_EQ(tray.property("XAyatanaLabel"), "(<'80% · 2:05'>)");
}

TEST_F(StatusNotifierItemTest, AnswersBeforeTheFirstShow)
{
    EXPECT_EQ(tray.property("IconName"), "(<''>)");
    EXPECT_EQ(tray.property("Title"), "(<'Vorlane'>)");
    EXPECT_EQ(tray.property("ToolTip"), "(<('', [], '', '')>)");
}

}  // namespace
}  // namespace vorlane::platform
