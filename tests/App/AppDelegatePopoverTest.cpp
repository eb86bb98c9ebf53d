#include <gmock/gmock.h>

#include "tests/App/AppDelegateWindowsFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

// When the popover opens and closes.
class AppDelegatePopoverTest : public AppDelegateWindowsFixture {};

TEST_F(AppDelegatePopoverTest, CreatesThePopoverButNoWindowAtLaunch)
{
    EXPECT_EQ(machine.windows.popoversMade, 1);
    EXPECT_EQ(machine.windows.settingsWindowsMade, 0);
    EXPECT_THAT(machine.windows.events, IsEmpty());
}

TEST_F(AppDelegatePopoverTest, OpensThePopoverWithAFreshReading)
{
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});

    item().click();

    EXPECT_EQ(refreshes(), 2);
    EXPECT_THAT(delegate->model->history.samples, SizeIs(2));
    ASSERT_TRUE(popover().shown);
    EXPECT_EQ(battery().gauge.ring.text, "49%");
    EXPECT_EQ(machine.application.activations, 1);

    machine.runLoop.settle();
    EXPECT_EQ(shown().title, " 49%");
}

TEST_F(AppDelegatePopoverTest, RecordsNothingWhenThePopoverOpensOnAnUnchangedReading)
{
    machine.advance(10s);

    click();

    EXPECT_EQ(refreshes(), 2);
    EXPECT_THAT(delegate->model->history.samples, SizeIs(1));
}

TEST_F(AppDelegatePopoverTest, PostsRemindersThatBecomeDueWhenThePopoverOpens)
{
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{20});

    click();

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppDelegatePopoverTest, ActivatesTheApplicationAfterShowingThePopover)
{
    machine.application.activated = [this] { machine.windows.events.emplace_back("activated"); };

    delegate->togglePopover();
    delegate->openSettings();

    EXPECT_THAT(machine.windows.events, ElementsAre("popover shown", "activated", "popover closed",
                                                    "settings shown", "activated"));
}

TEST_F(AppDelegatePopoverTest, ClosesThePopoverOnASecondClickWithoutARefresh)
{
    click();

    click();

    EXPECT_EQ(popover().shown, std::nullopt);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegatePopoverTest, DoesNotReopenThePopoverOnThePressThatClosedIt)
{
    click();

    machine.windows.pressOutsidePopover();
    click();
    EXPECT_EQ(popover().shown, std::nullopt);
    EXPECT_EQ(refreshes(), 2);

    machine.windows.release();
    click();
    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 2);
}

TEST_F(AppDelegatePopoverTest, OpensThePopoverFromTheMenu)
{
    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegatePopoverTest, RaisesAnOpenPopoverFromTheMenu)
{
    click();

    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 1);
    EXPECT_EQ(popover().raisings, 1);
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegatePopoverTest, ReopensThePopoverFromTheMenuThatClosedIt)
{
    click();
    machine.windows.pressOutsidePopover();

    ASSERT_TRUE(choose("Open Vorlane"));

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(popover().openings, 2);
}

TEST_F(AppDelegatePopoverTest, ClosesThePopoverThatTheMenuOpenedOnAClick)
{
    ASSERT_TRUE(choose("Open Vorlane"));

    click();

    EXPECT_EQ(popover().shown, std::nullopt);
}

TEST_F(AppDelegatePopoverTest, OpensThePopoverWhenTheProgramIsStartedAgain)
{
    reopen();

    EXPECT_TRUE(popover().shown);
    EXPECT_EQ(refreshes(), 2);
    EXPECT_EQ(machine.application.activations, 1);
}

TEST_F(AppDelegatePopoverTest, RaisesAnOpenPopoverWhenTheProgramIsStartedAgain)
{
    click();
    machine.powerSources.sources[0].set("Current Capacity", std::int64_t{49});

    reopen();

    EXPECT_EQ(popover().openings, 1);
    EXPECT_EQ(popover().raisings, 1);
    ASSERT_TRUE(popover().shown);
    EXPECT_EQ(battery().gauge.ring.text, "49%");
    EXPECT_EQ(machine.application.activations, 2);
}

TEST_F(AppDelegatePopoverTest, KeepsTheRangeWhileThePopoverIsClosed)
{
    click();
    popover().intents.selectRange(1);
    click();

    click();

    EXPECT_EQ(battery().range.selected, 1);
}

TEST_F(AppDelegatePopoverTest, QuitsFromThePopover)
{
    click();

    popover().intents.quit();

    EXPECT_TRUE(machine.application.terminating);
}

}  // namespace
}  // namespace vorlane
