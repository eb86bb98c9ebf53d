#include "platform/linux/NotificationMessage.h"

#include <gmock/gmock.h>

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const NotificationAction snooze{.identifier = "SNOOZE", .title = "Snooze 1 hour"};
const std::vector<NotificationCategory> categories{
    {.identifier = "OTHER", .actions = {{.identifier = "X", .title = "Y"}}},
    {.identifier = "VL_ALERT", .actions = {snooze}}};

NotificationRequest request()
{
    return {.identifier = "low",
            .title = "A & B",
            .body = "20% <left> & \"falling\"",
            .categoryIdentifier = "VL_ALERT",
            .sound = "default"};
}

NotificationMessage made(const NotificationRequest& request,
                         const NotificationCapabilities& capabilities)
{
    return notificationMessage(request, categories, capabilities);
}

TEST(NotificationMessageTest, EscapesTheBodyForServersThatTakeItForMarkup)
{
    const auto message = made(request(), {.bodyMarkup = true});

    EXPECT_EQ(message.title, "A & B");
    EXPECT_EQ(message.body, "20% &lt;left&gt; &amp; \"falling\"");
}

TEST(NotificationMessageTest, LeavesTheBodyAsItIsForOtherServers)
{
    EXPECT_EQ(made(request(), {}).body, request().body);
}

TEST(NotificationMessageTest, OffersTheActionsOfItsCategoryWhereTheServerHasActions)
{
    EXPECT_THAT(made(request(), {.actions = true}).actions, ElementsAre(snooze));
    EXPECT_THAT(made(request(), {.actions = false}).actions, IsEmpty());
}

TEST(NotificationMessageTest, HasNoActionsWithoutAKnownCategory)
{
    auto stranger = request();
    stranger.categoryIdentifier = "UNKNOWN";

    EXPECT_THAT(made(stranger, {.actions = true}).actions, IsEmpty());
}

TEST(NotificationMessageTest, NamesTheSoundForServersThatPlaySounds)
{
    auto named = request();
    named.sound = "Submarine";

    EXPECT_EQ(made(request(), {.sound = true}).soundName, "message-new-instant");
    EXPECT_EQ(made(named, {.sound = true}).soundName, "vorlane-submarine");
}

TEST(NotificationMessageTest, IsSilentForTheServerOtherwise)
{
    auto silent = request();
    silent.sound = std::nullopt;

    EXPECT_EQ(made(silent, {.sound = true}).soundName, std::nullopt);
    EXPECT_EQ(made(request(), {.sound = false}).soundName, std::nullopt);
}

TEST(NotificationMessageTest, CannotBeMadeOfTextThatABusCannotCarry)
{
    const auto bus = owned<BusPointer>(sd_bus_new);
    auto broken = request();
    broken.title = "\xFF";

    EXPECT_FALSE(notifyCall(bus.get(), ":1.1", made(broken, {}), "battery"));
    EXPECT_FALSE(notifyCall(bus.get(), "not a name", made(request(), {}), "battery"));
}

}  // namespace
}  // namespace vorlane::platform
