#include "platform/linux/notifications/NotificationQueue.h"

#include <gmock/gmock.h>

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class NotificationQueueTest : public testing::Test {
protected:
    static NotificationRequest request(const std::string& identifier, const std::string& title = "")
    {
        return {.identifier = identifier,
                .title = title,
                .body = "",
                .categoryIdentifier = "",
                .sound = std::nullopt};
    }

    NotificationQueue queue;

    // "identifier title" of all that may be posted now.
    std::vector<std::string> taken(Seconds now)
    {
        std::vector<std::string> names;
        while (const auto next = queue.takeNext(now)) {
            names.push_back(next->identifier + " " + next->title);
        }
        return names;
    }
};

TEST_F(NotificationQueueTest, PostsInTheOrderOfAdding)
{
    queue.add(request("low", "a"), 0s);
    queue.add(request("chargeLimit", "b"), 0s);
    queue.add(request("health", "c"), 0s);

    EXPECT_THAT(taken(1s), ElementsAre("low a", "chargeLimit b", "health c"));
    EXPECT_THAT(taken(1s), IsEmpty());
}

TEST_F(NotificationQueueTest, KeepsOnlyTheNewestOfAnIdentifier)
{
    queue.add(request("low", "old"), 0s);
    queue.add(request("health", "other"), 0s);
    queue.add(request("low", "new"), 1s);

    EXPECT_THAT(taken(1s), ElementsAre("health other", "low new"));
}

TEST_F(NotificationQueueTest, ForgetsWhatIsWithdrawnWhileItWaits)
{
    queue.add(request("low", "a"), 0s);
    queue.add(request("health", "b"), 0s);

    queue.withdraw("low");
    queue.withdraw("tooLong");

    EXPECT_THAT(taken(0s), ElementsAre("health b"));
}

TEST_F(NotificationQueueTest, DoesNotRepeatWhatWasWithdrawnAfterItWasPosted)
{
    queue.add(request("low", "a"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low a"));

    queue.withdraw("low");
    queue.add(request("low", "b"), 1s);
    EXPECT_THAT(taken(1s), IsEmpty());
    queue.lost("low");

    EXPECT_THAT(taken(1s), ElementsAre("low b"));
}

TEST_F(NotificationQueueTest, HoldsARequestBackUntilTheEarlierOneIsAnswered)
{
    queue.add(request("low", "old"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low old"));
    queue.add(request("low", "new"), 1s);
    queue.add(request("health", "other"), 1s);
    EXPECT_THAT(taken(1s), ElementsAre("health other"));

    queue.answered("low");

    EXPECT_THAT(taken(1s), ElementsAre("low new"));
}

TEST_F(NotificationQueueTest, PostsOnceMoreWhatWasLost)
{
    queue.add(request("low", "a"), 0s);
    queue.add(request("health", "b"), 1s);
    EXPECT_THAT(taken(1s), ElementsAre("low a", "health b"));

    queue.allLost();

    EXPECT_THAT(taken(2s), ElementsAre("low a", "health b"));
    queue.answered("low");
    queue.lost("health");
    EXPECT_THAT(taken(2s), ElementsAre("health b"));
}

TEST_F(NotificationQueueTest, PostsWhatWasLostInItsOldOrder)
{
    queue.add(request("low", "a"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low a"));
    queue.add(request("health", "b"), 1s);

    queue.allLost();

    EXPECT_THAT(taken(2s), ElementsAre("low a", "health b"));
}

TEST_F(NotificationQueueTest, PrefersANewerRequestToALostOne)
{
    queue.add(request("low", "old"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low old"));
    queue.add(request("low", "new"), 1s);

    queue.allLost();

    EXPECT_THAT(taken(2s), ElementsAre("low new"));
}

TEST_F(NotificationQueueTest, DropsWhatWaitedLongerThanTenMinutesSinceItWasAdded)
{
    queue.add(request("low", "a"), 100s);
    EXPECT_THAT(taken(100s), ElementsAre("low a"));
    queue.lost("low");
    EXPECT_THAT(taken(700s), ElementsAre("low a"));
    queue.lost("low");

    EXPECT_THAT(taken(701s), IsEmpty());
}

TEST_F(NotificationQueueTest, IgnoresAnswersAndLossesOfWhatItDoesNotKnow)
{
    queue.answered("low");
    queue.lost("low");
    queue.allLost();

    EXPECT_THAT(taken(0s), IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
