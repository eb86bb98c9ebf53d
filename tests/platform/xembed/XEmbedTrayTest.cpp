// The trays in which the icon docks.
#include "tests/platform/xembed/XEmbedTrayFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class XEmbedTrayTest : public XEmbedTrayFixture {};

TEST_F(XEmbedTrayTest, AsksTheTrayToDockAndMapItsIcon)
{
    tray->appear();
    start();

    ASSERT_TRUE(untilDocked(1));
    EXPECT_THAT(tray->iconInfo(), ElementsAre(0, 1));
}

TEST_F(XEmbedTrayTest, DocksInATrayThatAppearsLater)
{
    start();
    ASSERT_TRUE(until([&] { return connected; }));

    tray->appear();

    EXPECT_TRUE(untilDocked(1));
}

TEST_F(XEmbedTrayTest, DocksInTheNextTrayWhenOneHasDied)
{
    embed();

    tray = std::make_unique<FakeTray>();
    tray->appear();
    ASSERT_TRUE(untilDocked(1));
    tray->embed(24);

    EXPECT_TRUE(until([&] { return tray->pixel(12, 12) == red; }));
    EXPECT_THAT(tray->docked, SizeIs(1));
}

TEST_F(XEmbedTrayTest, DocksInATrayThatTookOverBeforeTheOtherDied)
{
    embed();
    auto next = std::make_unique<FakeTray>();
    next->takeOver();

    tray = std::move(next);

    EXPECT_TRUE(untilDocked(1));
}

TEST_F(XEmbedTrayTest, IgnoresManagersOfOtherThings)
{
    embed();

    tray->announce("WM_S0");
    tray->setSymbolColor({0, 0xffff, 0});

    EXPECT_TRUE(until([&] { return tray->pixel(12, 12) == green; }));
    EXPECT_THAT(tray->docked, SizeIs(1));
}

TEST_F(XEmbedTrayTest, DocksAgainWhenTheSameTrayRestarts)
{
    embed();

    tray->appear();

    EXPECT_TRUE(untilDocked(2));
}

TEST_F(XEmbedTrayTest, DoesNotReturnToATrayThatExpelledItUntilThatRestarts)
{
    embed();

    tray->expel();
    ASSERT_TRUE(until([&] { return !tray->hasIcon(); }));
    EXPECT_THAT(tray->docked, SizeIs(1));

    tray->appear();
    ASSERT_TRUE(untilDocked(2));
    tray->embed(24);
    EXPECT_TRUE(until([&] { return tray->pixel(12, 12) == red; }));
    EXPECT_THAT(tray->docked, SizeIs(2));
}

TEST_F(XEmbedTrayTest, FollowsTheTraysColourWithoutDockingAgain)
{
    embed();
    EXPECT_EQ(asked.color, std::nullopt);

    tray->setSymbolColor({0xffff, 0x8000, 0x00ff});
    EXPECT_TRUE(until([&] { return asked.color == Rgb{255, 128, 0}; }));
    tray->setSymbolColor({0, 0xffff, 0});
    EXPECT_TRUE(until([&] { return asked.color == green; }));
    tray->offerNothing();
    EXPECT_TRUE(until([&] { return !asked.color; }));

    EXPECT_THAT(tray->docked, SizeIs(1));
}

TEST_F(XEmbedTrayTest, KnowsTheColourOfATrayFromTheStart)
{
    tray->setSymbolColor({0xffff, 0x8000, 0x00ff});
    tray->appear();
    start();

    EXPECT_TRUE(until([&] { return asked.size > 0; }));
    EXPECT_EQ(asked.color, (Rgb{255, 128, 0}));
}

TEST_F(XEmbedTrayTest, UsesTheVisualThatTheTrayOffers)
{
    tray->offerAlpha();
    tray->appear();
    start();

    ASSERT_TRUE(untilDocked(1));
    EXPECT_EQ(tray->iconDepth(), 32);
}

TEST_F(XEmbedTrayTest, DocksAgainWithTheVisualThatTheTrayOffersLater)
{
    embed();
    EXPECT_EQ(tray->iconDepth(), 24);

    tray->offerAlpha();
    ASSERT_TRUE(untilDocked(2));
    EXPECT_EQ(tray->iconDepth(), 32);

    tray->offerNothing();
    ASSERT_TRUE(untilDocked(3));
    EXPECT_EQ(tray->iconDepth(), 24);
}

TEST_F(XEmbedTrayTest, ReportsThatTheServerIsGone)
{
    embed();

    server.end();

    EXPECT_TRUE(until([&] { return !connected; }));
    EXPECT_FALSE(program->show("Vorlane: Battery 59%"));
}

TEST_F(XEmbedTrayTest, IsNotOpenedWithoutAServer)
{
    server.end();

    EXPECT_EQ(XConnection::open(), nullptr);
}

}  // namespace
}  // namespace vorlane::platform
