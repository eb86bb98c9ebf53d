#include "platform/linux/tray/TrayChoice.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

using Step = TrayChoice::Step;

class TrayChoiceTest : public testing::Test {
protected:
    TrayChoice choice;

    void show()
    {
        (void)choice.watcher(false);
        (void)choice.waited();
    }
};

TEST_F(TrayChoiceTest, WaitsForAWatcherBeforeItShowsTheIcon)
{
    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, ShowsNoIconWhileThereIsAWatcher)
{
    EXPECT_EQ(choice.watcher(true), Step::nothing);
    EXPECT_EQ(choice.waited(), Step::nothing);
}

TEST_F(TrayChoiceTest, CancelsTheWaitWhenAWatcherAppears)
{
    (void)choice.watcher(false);

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
    EXPECT_EQ(choice.waited(), Step::nothing);
}

TEST_F(TrayChoiceTest, WithdrawsTheIconWhenAWatcherAppears)
{
    show();

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
}

TEST_F(TrayChoiceTest, ShowsTheIconAgainOnceTheWatcherHasBeenGoneForAWhile)
{
    show();
    (void)choice.watcher(true);

    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, IgnoresRepeatedReports)
{
    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.watcher(false), Step::nothing);  // the wait is not extended
    (void)choice.waited();
    EXPECT_EQ(choice.watcher(false), Step::nothing);

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
    EXPECT_EQ(choice.watcher(true), Step::nothing);
}

TEST_F(TrayChoiceTest, RetriesALostDisplayOnlyWhenAsked)
{
    show();

    EXPECT_EQ(choice.lost(), Step::withdraw);
    EXPECT_EQ(choice.waited(), Step::nothing);
    EXPECT_EQ(choice.retry(), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, IgnoresTheLossOfADisplayItDoesNotUse)
{
    EXPECT_EQ(choice.lost(), Step::nothing);
    (void)choice.watcher(false);
    EXPECT_EQ(choice.lost(), Step::nothing);

    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, DoesNotRetryWithAWatcherOrBeforeTheFirstReport)
{
    EXPECT_EQ(choice.retry(), Step::nothing);
    (void)choice.watcher(true);
    EXPECT_EQ(choice.retry(), Step::nothing);
}

TEST_F(TrayChoiceTest, DoesNotRetryWhileTheIconIsShown)
{
    show();

    EXPECT_EQ(choice.retry(), Step::nothing);
}

}  // namespace
}  // namespace vorlane::platform
