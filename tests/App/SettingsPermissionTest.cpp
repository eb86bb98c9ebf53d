#include <gmock/gmock.h>

#include <array>
#include <string>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Turning on an alert asks for permission to notify.
class SettingsPermissionTest : public SettingsViewFixture {
protected:
    // A new machine, whose user has not yet decided about notifications.
    void decideNothing()
    {
        machine.notifications.status = AuthorizationStatus::notDetermined;
        for (const auto* const key : alertToggles) machine.defaults.set(key, false);
    }

    void toggle(const std::string& key, bool value)
    {
        intents.setToggle(key, value);
        machine.runLoop.settle();
    }

    static constexpr std::array alertToggles{"limitEnabled", "lowEnabled", "longEnabled",
                                             "healthEnabled"};
};

TEST_F(SettingsPermissionTest, AsksForPermissionWhenAnAlertIsTurnedOn)
{
    for (const auto* const key : alertToggles) {
        decideNothing();

        toggle(key, true);

        ASSERT_TRUE(machine.alertPanel.open) << key;
        EXPECT_EQ(machine.alertPanel.open->message, "Allow notifications?");
        ASSERT_TRUE(machine.alertPanel.press("Not Now"));
    }
    EXPECT_THAT(machine.notifications.prompts, IsEmpty());
}

TEST_F(SettingsPermissionTest, RequestsAuthorizationAfterTheExplanation)
{
    decideNothing();
    toggle("lowEnabled", true);

    ASSERT_TRUE(machine.alertPanel.press("Continue"));

    EXPECT_THAT(machine.notifications.prompts,
                ElementsAre(AuthorizationOptions{.alert = true, .sound = true, .badge = false}));
}

TEST_F(SettingsPermissionTest, DoesNotAskWhenAnAlertIsTurnedOff)
{
    decideNothing();
    machine.defaults.set("lowEnabled", true);

    toggle("lowEnabled", false);

    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
    EXPECT_EQ(stored("lowEnabled"), DefaultsValue{false});
}

TEST_F(SettingsPermissionTest, DoesNotAskWhenAnAlertIsAlreadyOn)
{
    decideNothing();
    machine.defaults.set("lowEnabled", true);

    toggle("lowEnabled", true);

    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

TEST_F(SettingsPermissionTest, DoesNotAskForOtherToggles)
{
    decideNothing();
    for (const auto* const key : {"repeatReminder", "quietEnabled", "showPercent", "showTime"}) {
        machine.defaults.set(key, false);
        toggle(key, true);
        EXPECT_EQ(machine.alertPanel.open, std::nullopt) << key;
    }
}

TEST_F(SettingsPermissionTest, DoesNotAskOnceTheUserHasDecided)
{
    for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::denied}) {
        decideNothing();
        machine.notifications.status = status;
        toggle("limitEnabled", true);
        EXPECT_EQ(machine.alertPanel.open, std::nullopt);
    }
}

TEST_F(SettingsPermissionTest, StoresAToggleWithoutAskingIfNotificationsAreUnavailable)
{
    decideNothing();
    machine.notifications.reachable = false;

    toggle("limitEnabled", true);

    EXPECT_EQ(stored("limitEnabled"), DefaultsValue{true});
    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

}  // namespace
}  // namespace vorlane
