#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/platform/linux/windows/RemoteWindowsFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;

class HungProcessTest : public RemoteWindowsFixture {
protected:
    static constexpr Seconds patience{1};

    HungProcessTest() : RemoteWindowsFixture(patience) {}

    void waitLongerThanItsPatience()
    {
        bool waited = false;
        const auto later = loop.after(2 * patience, [&] { waited = true; });
        ASSERT_TRUE(runUntil(loop, [&] { return waited; }));
    }
};

TEST_F(HungProcessTest, IsReplacedOncePerRequest)
{
    start();

    ASSERT_TRUE(puppet.takeOver()) << "the second process";
    EXPECT_THAT(received(), ElementsAre("appearance", "show first"));
    EXPECT_TRUE(popover->isShown());

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); })) << "it hangs, too";
    EXPECT_FALSE(popover->isShown());
    EXPECT_FALSE(puppet.wasStarted());
}

TEST_F(HungProcessTest, IsReplacedByOneThatShowsAllWindowsWithNewestContent)
{
    start();
    settings->makeKeyAndOrderFront({});
    popover->update(popoverWith("newer"));

    ASSERT_TRUE(puppet.takeOver());

    EXPECT_THAT(received(), ElementsAre("appearance", "settings", "show newer"));
    EXPECT_TRUE(settings->isShown());
}

TEST_F(HungProcessTest, IsNotReplacedForAWindowBeingClosed)
{
    start();
    popover->performClose();

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_FALSE(puppet.wasStarted());
}

TEST_F(HungProcessTest, HasItsDialogsAnsweredByTheCancelButton)
{
    open();
    std::optional<std::size_t> answer;

    windows.runModal(question, [&](std::size_t button) { answer = button; });

    EXPECT_TRUE(runUntil(loop, [&] { return answer == 1U; }));
}

TEST_F(HungProcessTest, IsNotAssumedOfAProcessThatAnswers)
{
    open();

    waitLongerThanItsPatience();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(hasChildren());
}

TEST_F(HungProcessTest, IsNotAssumedForAnUpdateThatFollowsTheAnswer)
{
    start();
    popover->update(popoverWith("later"));
    EXPECT_THAT(received(), ElementsAre("appearance", "show first"));
    answerAll();
    EXPECT_THAT(received(), ElementsAre("update later"));

    waitLongerThanItsPatience();

    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(hasChildren());
}

}  // namespace
}  // namespace vorlane::platform
