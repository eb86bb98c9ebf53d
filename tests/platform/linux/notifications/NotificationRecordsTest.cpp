#include "platform/linux/notifications/NotificationRecords.h"

#include <gmock/gmock.h>

#include <map>

namespace vorlane::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class NotificationRecordsTest : public testing::Test {
protected:
    static NotificationRequest request(const std::string& identifier, const std::string& title = "")
    {
        return {.identifier = identifier,
                .title = title,
                .body = "",
                .categoryIdentifier = "",
                .sound = std::nullopt};
    }

    NotificationRecords records;

    std::map<std::string, NotificationRecord*> posted;

    // Takes all requests that may be posted now, as "identifier title".
    std::vector<std::string> taken(Seconds now)
    {
        std::vector<std::string> names;
        while (auto* const next = records.takeNext(now)) {
            const auto& request = next->inFlight->request;
            posted[request.identifier] = next;
            names.push_back(request.identifier + " " + request.title);
        }
        return names;
    }
};

TEST_F(NotificationRecordsTest, PostsInTheOrderOfAdding)
{
    records.add(request("low", "a"), 0s);
    records.add(request("chargeLimit", "b"), 0s);
    records.add(request("health", "c"), 0s);

    EXPECT_THAT(taken(1s), ElementsAre("low a", "chargeLimit b", "health c"));
    EXPECT_THAT(taken(1s), IsEmpty());
}

TEST_F(NotificationRecordsTest, KeepsOnlyTheNewestPerIdentifier)
{
    records.add(request("low", "old"), 0s);
    records.add(request("health", "other"), 0s);
    records.add(request("low", "new"), 1s);

    EXPECT_THAT(taken(1s), ElementsAre("health other", "low new"));
}

TEST_F(NotificationRecordsTest, DiscardsAPendingRequestThatIsWithdrawn)
{
    records.add(request("low", "a"), 0s);
    records.add(request("health", "b"), 0s);

    (void)records.withdraw("low");
    (void)records.withdraw("tooLong");

    EXPECT_THAT(taken(0s), ElementsAre("health b"));
}

TEST_F(NotificationRecordsTest, DoesNotRepeatALostPostThatWasWithdrawn)
{
    records.add(request("low", "a"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low a"));

    (void)records.withdraw("low");
    records.add(request("low", "b"), 1s);
    EXPECT_THAT(taken(1s), IsEmpty());
    posted.at("low")->lost();

    EXPECT_THAT(taken(1s), ElementsAre("low b"));
}

TEST_F(NotificationRecordsTest, HoldsARequestBackWhileAnEarlierOneIsInFlight)
{
    records.add(request("low", "old"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low old"));
    records.add(request("low", "new"), 1s);
    records.add(request("health", "other"), 1s);
    EXPECT_THAT(taken(1s), ElementsAre("health other"));

    posted.at("low")->answered();

    EXPECT_THAT(taken(1s), ElementsAre("low new"));
}

TEST_F(NotificationRecordsTest, PostsLostRequestsAgain)
{
    records.add(request("low", "a"), 0s);
    records.add(request("health", "b"), 1s);
    EXPECT_THAT(taken(1s), ElementsAre("low a", "health b"));

    records.serverChanged();

    EXPECT_THAT(taken(2s), ElementsAre("low a", "health b"));
    posted.at("low")->answered();
    posted.at("health")->lost();
    EXPECT_THAT(taken(2s), ElementsAre("health b"));
}

TEST_F(NotificationRecordsTest, PostsLostRequestsInTheirOriginalOrder)
{
    records.add(request("low", "a"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low a"));
    records.add(request("health", "b"), 1s);

    records.serverChanged();

    EXPECT_THAT(taken(2s), ElementsAre("low a", "health b"));
}

TEST_F(NotificationRecordsTest, PrefersANewerRequestToALostOne)
{
    records.add(request("low", "old"), 0s);
    EXPECT_THAT(taken(0s), ElementsAre("low old"));
    records.add(request("low", "new"), 1s);

    records.serverChanged();

    EXPECT_THAT(taken(2s), ElementsAre("low new"));
}

TEST_F(NotificationRecordsTest, DiscardsRequestsOlderThanTenMinutes)
{
    records.add(request("low", "a"), 100s);
    EXPECT_THAT(taken(100s), ElementsAre("low a"));
    posted.at("low")->lost();
    EXPECT_THAT(taken(700s), ElementsAre("low a"));
    posted.at("low")->lost();

    EXPECT_THAT(taken(701s), IsEmpty());
}

TEST_F(NotificationRecordsTest, IsEmptyOnceAllRequestsAreAnsweredOrWithdrawn)
{
    EXPECT_TRUE(records.isEmpty());
    records.add(request("low", "a"), 0s);
    records.add(request("health", "b"), 0s);
    (void)records.withdraw("health");
    EXPECT_FALSE(records.isEmpty());
    EXPECT_THAT(taken(0s), ElementsAre("low a"));
    EXPECT_FALSE(records.isEmpty());

    posted.at("low")->answered();

    EXPECT_TRUE(records.isEmpty());
}

TEST_F(NotificationRecordsTest, ReturnsTheNewestIdToCloseOnce)
{
    records.show("low", 1);
    records.show("health", 2);
    records.show("low", 3);

    EXPECT_EQ(records.withdraw("low"), 3U);
    EXPECT_EQ(records.withdraw("low"), std::nullopt);
    EXPECT_THAT(records.shown(), ElementsAre(Pair("health", 2U)));
}

TEST_F(NotificationRecordsTest, KnowsItsIdsAfterTheyAreClosed)
{
    records.show("low", 1);
    records.show("low", 2);
    (void)records.withdraw("low");

    EXPECT_TRUE(records.isOurs(1));
    EXPECT_TRUE(records.isOurs(2));
    EXPECT_FALSE(records.isOurs(3));
    EXPECT_FALSE(records.isOurs(0));
}

TEST_F(NotificationRecordsTest, RemembersAHundredIdsAndThoseStillShown)
{
    records.show("health", 1);
    for (std::uint32_t id = 2; id <= 102; ++id) records.show("low", id);

    EXPECT_TRUE(records.isOurs(1));
    EXPECT_FALSE(records.isOurs(2));
    EXPECT_TRUE(records.isOurs(3));
}

TEST_F(NotificationRecordsTest, ForgetsItsIdsWhenTheServerChanges)
{
    records.show("low", 1);

    records.serverChanged();

    EXPECT_FALSE(records.isOurs(1));
    EXPECT_EQ(records.withdraw("low"), std::nullopt);
}

}  // namespace
}  // namespace vorlane::platform
