#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/NotifierFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using NotifierPermissionTest = NotifierFixture;

TEST_F(NotifierPermissionTest, ExplainsBeforeItAsksForPermission)
{
    center.status = AuthorizationStatus::notDetermined;

    notifier->requestIfNeeded();
    EXPECT_FALSE(alertPanel.open);
    EXPECT_EQ(application.activations, 0);

    runLoop.settle();
    ASSERT_TRUE(alertPanel.open);
    EXPECT_EQ(alertPanel.open->message, "Allow notifications?");
    EXPECT_EQ(alertPanel.open->informativeText,
              "Vorlane uses notifications to remind you to unplug at your chosen charge level, "
              "when the battery is low, and when you have been plugged in too long. macOS will "
              "ask for permission next.");
    EXPECT_THAT(alertPanel.open->buttons,
                ElementsAre(AlertButton{.title = "Continue"},
                            AlertButton{.title = "Not Now", .role = ButtonRole::cancel}));
    EXPECT_EQ(application.activations, 1);
    EXPECT_THAT(center.prompts, IsEmpty());
}

TEST_F(NotifierPermissionTest, AsksForAlertAndSoundWhenTheUserContinues)
{
    center.status = AuthorizationStatus::notDetermined;
    notifier->requestIfNeeded();
    runLoop.settle();

    ASSERT_TRUE(alertPanel.press("Continue"));

    EXPECT_THAT(center.prompts,
                ElementsAre(AuthorizationOptions{.alert = true, .sound = true, .badge = false}));
}

TEST_F(NotifierPermissionTest, ExplainsAgainNextTimeAfterNotNow)
{
    center.status = AuthorizationStatus::notDetermined;
    notifier->requestIfNeeded();
    runLoop.settle();

    ASSERT_TRUE(alertPanel.press("Not Now"));
    EXPECT_THAT(center.prompts, IsEmpty());

    notifier->requestIfNeeded();
    runLoop.settle();
    EXPECT_TRUE(alertPanel.open);
}

TEST_F(NotifierPermissionTest, DoesNotAskOnceTheUserHasDecided)
{
    for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::denied}) {
        center.status = status;
        notifier->requestIfNeeded();
        runLoop.settle();

        EXPECT_FALSE(alertPanel.open);
        EXPECT_THAT(center.prompts, IsEmpty());
        EXPECT_EQ(application.activations, 0);
    }
}

TEST_F(NotifierPermissionTest, WaitsForALateAnswer)
{
    center.status = AuthorizationStatus::notDetermined;
    center.answersLater = true;
    notifier->requestIfNeeded();
    runLoop.settle();
    EXPECT_FALSE(alertPanel.open);

    center.answer();
    runLoop.settle();

    EXPECT_TRUE(alertPanel.open);
}

TEST_F(NotifierPermissionTest, IgnoresTheStatusOnceDestroyed)
{
    center.status = AuthorizationStatus::notDetermined;
    center.answersLater = true;
    notifier->requestIfNeeded();
    notifier->requestIfNeeded();
    center.answer();
    notifier->requestIfNeeded();
    notifier.reset();

    center.answer();
    runLoop.settle();

    EXPECT_FALSE(alertPanel.open);
}

TEST_F(NotifierPermissionTest, IgnoresTheDialogOnceDestroyed)
{
    center.status = AuthorizationStatus::notDetermined;
    notifier->requestIfNeeded();
    runLoop.settle();
    notifier.reset();

    ASSERT_TRUE(alertPanel.press("Continue"));

    EXPECT_THAT(center.prompts, IsEmpty());
}

}  // namespace
}  // namespace vorlane
