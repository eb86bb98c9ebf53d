// What the icon draws and reports while it is in a tray.
#include "tests/platform/xembed/XEmbedTrayFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

class EmbeddedIconTest : public XEmbedTrayFixture {};

TEST_F(EmbeddedIconTest, DrawsItsPictureInTheMiddle)
{
    picture = [](int) { return filled(10, {255, 255, 0, 0}); };

    embed(24);

    EXPECT_EQ(tray->pixel(7, 7), red);
    EXPECT_EQ(tray->pixel(16, 16), red);
    EXPECT_EQ(tray->pixel(6, 12), FakeTray::background);
    EXPECT_EQ(tray->pixel(17, 12), FakeTray::background);
    EXPECT_EQ(tray->pixel(12, 6), FakeTray::background);
    EXPECT_EQ(tray->pixel(12, 17), FakeTray::background);
}

TEST_F(EmbeddedIconTest, ReplacesItsPicture)
{
    embed();

    picture = [](int) { return filled(4, {255, 0, 255, 0}); };
    connected = program->show("Vorlane: Battery 59%");

    EXPECT_TRUE(until([&] { return tray->pixel(12, 12) == green; }));
    EXPECT_EQ(tray->pixel(2, 2), FakeTray::background);
}

TEST_F(EmbeddedIconTest, DrawsAgainAtANewSize)
{
    embed(24);

    tray->resize(40);

    EXPECT_TRUE(until([&] { return tray->pixel(38, 38) == red; }));
    EXPECT_EQ(asked.size, 40);
}

TEST_F(EmbeddedIconTest, DrawsAgainWhenTheTrayHasHiddenIt)
{
    embed();

    tray->hide();
    tray->show();

    EXPECT_TRUE(until([&] { return tray->pixel(12, 12) == red; }));
}

TEST_F(EmbeddedIconTest, DrawsNoPictureThatIsTooLargeForARequest)
{
    embed(24);

    tray->resize(1000);

    EXPECT_TRUE(until([&] { return asked.size == 192; }));
}

TEST_F(EmbeddedIconTest, NamesItsIcon)
{
    embed();
    EXPECT_EQ(tray->iconName(), "Vorlane: Battery 60%");

    connected = program->show("Vorlane: Battery 59%");

    EXPECT_TRUE(until([&] { return tray->iconName() == "Vorlane: Battery 59%"; }));
}

TEST_F(EmbeddedIconTest, ReportsClicksOfTheFirstAndTheThirdButton)
{
    embed();

    for (const auto button : std::initializer_list<xcb_button_t>{1, 2, 3, 4, 1})
        tray->click(button);

    ASSERT_TRUE(until([&] { return intents.size() >= 3; }));
    EXPECT_THAT(intents, ElementsAre("click", "menu", "click"));
}

TEST_F(EmbeddedIconTest, ReportsAClickOnlyAtItsRelease)
{
    embed();

    tray->press(3);
    tray->press(1);
    tray->release(1);
    tray->release(1);
    tray->click(3);

    ASSERT_TRUE(until([&] { return intents.size() >= 2; }));
    EXPECT_THAT(intents, ElementsAre("click", "menu"));
}

TEST_F(EmbeddedIconTest, IgnoresAReleaseWithoutAPressAndOneOutside)
{
    embed();

    tray->release(1);
    tray->press(1);
    tray->release(1, -1);
    tray->press(1);
    tray->release(1, 24);
    tray->click(3);

    ASSERT_TRUE(until([&] { return !intents.empty(); }));
    EXPECT_THAT(intents, ElementsAre("menu"));
}

TEST_F(EmbeddedIconTest, DrawsOnlyTheLatestPictureForAServerThatHung)
{
    embed();
    server.stop();
    drawings = 0;

    for (int percent = 59; percent > 9; --percent)
        connected = program->show("Vorlane: Battery " + std::to_string(percent) + "%");
    EXPECT_LE(drawings, 1);
    server.resume();

    EXPECT_TRUE(until([&] { return tray->iconName() == "Vorlane: Battery 10%"; }));
    EXPECT_LE(drawings, 2);
}

}  // namespace
}  // namespace vorlane::platform
