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

TEST_F(TrayChoiceTest, WaitsForAWatcherBeforeItShowsAnIcon)
{
    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, ShowsNoIconBesideAWatcher)
{
    EXPECT_EQ(choice.watcher(true), Step::nothing);
    EXPECT_EQ(choice.waited(), Step::nothing);
}

TEST_F(TrayChoiceTest, StopsWaitingWhenAWatcherComes)
{
    (void)choice.watcher(false);

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
    EXPECT_EQ(choice.waited(), Step::nothing);
}

TEST_F(TrayChoiceTest, WithdrawsTheIconAtOnceWhenAWatcherComes)
{
    show();

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
}

TEST_F(TrayChoiceTest, BringsTheIconBackAfterTheWatcherHasGoneForAWhile)
{
    show();
    (void)choice.watcher(true);

    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, DoesNothingWhenToldTheSameAgain)
{
    EXPECT_EQ(choice.watcher(false), Step::wait);
    EXPECT_EQ(choice.watcher(false), Step::nothing);  // waits no longer for being told twice
    (void)choice.waited();
    EXPECT_EQ(choice.watcher(false), Step::nothing);

    EXPECT_EQ(choice.watcher(true), Step::withdraw);
    EXPECT_EQ(choice.watcher(true), Step::nothing);
}

TEST_F(TrayChoiceTest, TriesALostDisplayAgainOnlyWhenAsked)
{
    show();

    EXPECT_EQ(choice.lost(), Step::withdraw);
    EXPECT_EQ(choice.waited(), Step::nothing);
    EXPECT_EQ(choice.again(), Step::wait);
    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, LosesNoDisplayThatItDoesNotUse)
{
    EXPECT_EQ(choice.lost(), Step::nothing);
    (void)choice.watcher(false);
    EXPECT_EQ(choice.lost(), Step::nothing);

    EXPECT_EQ(choice.waited(), Step::show);
}

TEST_F(TrayChoiceTest, TriesNothingAgainBesideAWatcherOrBeforeOneIsLookedFor)
{
    EXPECT_EQ(choice.again(), Step::nothing);
    (void)choice.watcher(true);
    EXPECT_EQ(choice.again(), Step::nothing);
}

TEST_F(TrayChoiceTest, TriesNothingAgainWhereTheIconIs)
{
    show();

    EXPECT_EQ(choice.again(), Step::nothing);
}

}  // namespace
}  // namespace vorlane::platform
