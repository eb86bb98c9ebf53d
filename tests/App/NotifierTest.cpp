#include "App/Notifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/NotifierFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Sounds = std::map<AlertKind, std::string>;

class NotifierTest : public NotifierFixture {
protected:
    static PendingAlert alert(AlertKind kind)
    {
        return {.kind = kind, .title = "Title", .body = "Body"};
    }

    std::optional<std::string> soundWith(const Sounds& sounds)
    {
        notifier->deliver(alert(AlertKind::low), sounds);
        return center.posted.back().sound;
    }
};

TEST_F(NotifierTest, IsAvailableWhenTheServiceCanBeReached)
{
    EXPECT_TRUE(notifier->available());

    center.reachable = false;

    EXPECT_FALSE(notifier->available());
}

TEST_F(NotifierTest, RegistersOneCategoryWithTheSnoozeAction)
{
    center.categories = {{.identifier = "old", .actions = {}}};

    notifier->setup();

    EXPECT_EQ(center.delegate.lock(), notifier);
    EXPECT_THAT(center.categories,
                ElementsAre(NotificationCategory{
                    .identifier = "VL_ALERT",
                    .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}}}));
}

TEST_F(NotifierTest, DoesNothingWhileNotificationsAreUnavailable)
{
    center.reachable = false;
    center.status = AuthorizationStatus::notDetermined;

    notifier->setup();
    notifier->requestIfNeeded();
    notifier->deliver(alert(AlertKind::low), {});
    runLoop.settle();

    EXPECT_EQ(center.delegate.lock(), nullptr);
    EXPECT_THAT(center.categories, IsEmpty());
    EXPECT_THAT(center.posted, IsEmpty());
    EXPECT_THAT(center.prompts, IsEmpty());
    EXPECT_FALSE(alertPanel.open);
}

TEST_F(NotifierTest, PostsAnAlertAtOnce)
{
    notifier->deliver(alert(AlertKind::tooLong), {{AlertKind::tooLong, "Ping"}});

    EXPECT_THAT(center.posted, ElementsAre(NotificationRequest{.identifier = "tooLong",
                                                               .title = "Title",
                                                               .body = "Body",
                                                               .categoryIdentifier = "VL_ALERT",
                                                               .sound = "Ping",
                                                               .urgent = false,
                                                               .symbol = "powerplug.fill"}));
}

TEST_F(NotifierTest, IdentifiesANotificationByItsKind)
{
    for (const auto kind : allAlertKinds) {
        notifier->deliver(alert(kind), {});
        EXPECT_EQ(center.posted.back().identifier, rawValue(kind));
    }
    EXPECT_THAT(center.shown, SizeIs(4));
}

TEST_F(NotifierTest, ReplacesTheEarlierNotificationOfAKind)
{
    notifier->deliver({.kind = AlertKind::chargeLimit, .title = "First", .body = ""}, {});
    notifier->deliver({.kind = AlertKind::chargeLimit, .title = "Second", .body = ""}, {});

    ASSERT_THAT(center.shown, SizeIs(1));
    EXPECT_EQ(center.shown.at("chargeLimit").title, "Second");
}

TEST_F(NotifierTest, ShowsASymbolForEachKind)
{
    const auto symbolOf = [this](AlertKind kind) {
        notifier->deliver(alert(kind), {});
        return center.posted.back().symbol;
    };

    EXPECT_EQ(symbolOf(AlertKind::chargeLimit), "battery.100.bolt");
    EXPECT_EQ(symbolOf(AlertKind::low), "battery.0");
    EXPECT_EQ(symbolOf(AlertKind::tooLong), "powerplug.fill");
    EXPECT_EQ(symbolOf(AlertKind::health), "battery.worn");
}

TEST_F(NotifierTest, MarksOnlyTheLowBatteryAsUrgent)
{
    for (const auto kind : allAlertKinds) {
        notifier->deliver(alert(kind), {});
        EXPECT_EQ(center.posted.back().urgent, kind == AlertKind::low);
    }
}

TEST_F(NotifierTest, PlaysTheSoundOfTheKind)
{
    EXPECT_EQ(soundWith({{AlertKind::low, "Glass"}, {AlertKind::health, "Ping"}}), "Glass");
    EXPECT_EQ(soundWith({{AlertKind::low, "default"}}), "default");
    EXPECT_EQ(soundWith({{AlertKind::low, "no such sound"}}), "no such sound");
    EXPECT_EQ(soundWith({{AlertKind::low, ""}}), "");
}

TEST_F(NotifierTest, PostsSilentlyWithoutASound)
{
    EXPECT_EQ(soundWith({{AlertKind::low, "none"}}), std::nullopt);
}

TEST_F(NotifierTest, PlaysTheDefaultSoundForAKindWithoutASetting)
{
    EXPECT_EQ(soundWith({}), "default");
    EXPECT_EQ(soundWith({{AlertKind::health, "none"}}), "default");
}

TEST_F(NotifierTest, OffersTheSnoozeEvenIfTheServiceStartsLate)
{
    center.reachable = false;
    notifier->setup();
    center.reachable = true;

    notifier->deliver(alert(AlertKind::low), {});

    EXPECT_TRUE(center.press("low", "Snooze 1 hour"));
}

TEST_F(NotifierTest, ShowsNotificationsWhileTheProgramIsFrontmost)
{
    EXPECT_EQ(notifier->willPresent(), (PresentationOptions{
                                           .banner = true,
                                           .sound = true,
                                           .list = false,
                                           .badge = false,
                                       }));
}

TEST_F(NotifierTest, SnoozesOnTheNextTurn)
{
    int snoozes = 0;
    notifier->onSnooze = [&] { ++snoozes; };
    notifier->setup();
    notifier->deliver(alert(AlertKind::low), {});

    ASSERT_TRUE(center.press("low", "Snooze 1 hour"));
    EXPECT_EQ(center.completions, 1);
    EXPECT_EQ(snoozes, 0);

    runLoop.settle();
    EXPECT_EQ(snoozes, 1);
    EXPECT_EQ(center.completions, 1);
}

TEST_F(NotifierTest, IgnoresAnyOtherAction)
{
    int snoozes = 0;
    notifier->onSnooze = [&] { ++snoozes; };
    notifier->setup();

    for (const auto* const action : {"default", "", "snooze", "SNOOZE ", "SNOOZE2", "dismiss"}) {
        center.respond(action);
    }
    runLoop.settle();

    EXPECT_EQ(center.completions, 6);
    EXPECT_EQ(snoozes, 0);
}

TEST_F(NotifierTest, CompletesASnoozeWithoutACallback)
{
    notifier->setup();

    center.respond("SNOOZE");
    runLoop.settle();

    EXPECT_EQ(center.completions, 1);
}

TEST_F(NotifierTest, IgnoresASnoozeOnceDestroyed)
{
    int snoozes = 0;
    notifier->onSnooze = [&] { ++snoozes; };
    notifier->setup();
    center.respond("SNOOZE");

    notifier.reset();
    runLoop.settle();

    EXPECT_EQ(snoozes, 0);
}

}  // namespace
}  // namespace vorlane
