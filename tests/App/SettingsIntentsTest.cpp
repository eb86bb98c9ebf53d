#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "App/SampleJson.h"
#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the settings window's intents do.
class SettingsIntentsTest : public SettingsViewFixture {
protected:
    // Returns the number stored after the stepper sent `value`.
    DefaultsValue number(const std::string& key, std::int64_t value)
    {
        intents.setNumber(key, value);
        return stored(key);
    }

    static DefaultsValue whole(std::int64_t value) { return value; }

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

    SettingsIntents intents = view->intents();
};

TEST_F(SettingsIntentsTest, StoresEachToggle)
{
    for (const auto* const key : {"limitEnabled", "repeatReminder", "lowEnabled", "longEnabled",
                                  "healthEnabled", "quietEnabled", "showPercent", "showTime"}) {
        for (const bool value : {false, true}) {
            intents.setToggle(key, value);
            EXPECT_EQ(stored(key), DefaultsValue{value}) << key;
            EXPECT_EQ(row<ToggleRow>(key).value, value) << key;
        }
    }
}

TEST_F(SettingsIntentsTest, AsksForPermissionWhenAnAlertIsTurnedOn)
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

TEST_F(SettingsIntentsTest, RequestsAuthorizationAfterTheExplanation)
{
    decideNothing();
    toggle("lowEnabled", true);

    ASSERT_TRUE(machine.alertPanel.press("Continue"));

    EXPECT_THAT(machine.notifications.prompts,
                ElementsAre(AuthorizationOptions{.alert = true, .sound = true, .badge = false}));
}

TEST_F(SettingsIntentsTest, DoesNotAskWhenAnAlertIsTurnedOff)
{
    decideNothing();
    machine.defaults.set("lowEnabled", true);

    toggle("lowEnabled", false);

    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
    EXPECT_EQ(stored("lowEnabled"), DefaultsValue{false});
}

TEST_F(SettingsIntentsTest, DoesNotAskWhenAnAlertIsAlreadyOn)
{
    decideNothing();
    machine.defaults.set("lowEnabled", true);

    toggle("lowEnabled", true);

    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

TEST_F(SettingsIntentsTest, DoesNotAskForOtherToggles)
{
    decideNothing();
    for (const auto* const key : {"repeatReminder", "quietEnabled", "showPercent", "showTime"}) {
        machine.defaults.set(key, false);
        toggle(key, true);
        EXPECT_EQ(machine.alertPanel.open, std::nullopt) << key;
    }
}

TEST_F(SettingsIntentsTest, DoesNotAskOnceTheUserHasDecided)
{
    for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::denied}) {
        decideNothing();
        machine.notifications.status = status;
        toggle("limitEnabled", true);
        EXPECT_EQ(machine.alertPanel.open, std::nullopt);
    }
}

TEST_F(SettingsIntentsTest, StoresAToggleWithoutAskingIfNotificationsAreUnavailable)
{
    decideNothing();
    machine.notifications.reachable = false;

    toggle("limitEnabled", true);

    EXPECT_EQ(stored("limitEnabled"), DefaultsValue{true});
    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

TEST_F(SettingsIntentsTest, KeepsTheLimitWithin50And100)
{
    EXPECT_EQ(number("limit", 50), whole(50));
    EXPECT_EQ(number("limit", 49), whole(50));
    EXPECT_EQ(number("limit", 100), whole(100));
    EXPECT_EQ(number("limit", 101), whole(100));
    EXPECT_EQ(number("limit", 75), whole(75));
}

TEST_F(SettingsIntentsTest, KeepsTheLowLevelWithin5And50)
{
    EXPECT_EQ(number("low", 5), whole(5));
    EXPECT_EQ(number("low", 4), whole(5));
    EXPECT_EQ(number("low", 50), whole(50));
    EXPECT_EQ(number("low", 51), whole(50));
    EXPECT_EQ(number("low", 21), whole(21));
}

TEST_F(SettingsIntentsTest, KeepsTheHoursWithin1And48)
{
    EXPECT_EQ(number("longHours", 1), whole(1));
    EXPECT_EQ(number("longHours", 0), whole(1));
    EXPECT_EQ(number("longHours", 48), whole(48));
    EXPECT_EQ(number("longHours", 49), whole(48));
    EXPECT_EQ(number("longHours", 9), whole(9));
}

TEST_F(SettingsIntentsTest, StepsANumberOutOfRangeToTheNearestEnd)
{
    EXPECT_EQ(number("limit", 149), whole(100));
    EXPECT_EQ(number("limit", -3), whole(50));
    EXPECT_EQ(number("longHours", std::numeric_limits<std::int64_t>::max()), whole(48));
}

TEST_F(SettingsIntentsTest, IgnoresANumberWithoutAStepper)
{
    intents.setNumber("quietStart", 5);

    EXPECT_THAT(machine.defaults.values, IsEmpty());
}

TEST_F(SettingsIntentsTest, StoresAPickedTimeInMinutes)
{
    intents.setTime("quietEnd", {.hour = 6, .minute = 30});
    EXPECT_EQ(stored("quietEnd"), whole(390));
    EXPECT_EQ(row<TimeRow>("quietEnd").time, (TimeOfDay{.hour = 6, .minute = 30}));

    intents.setTime("quietStart", {.hour = 23, .minute = 59});
    EXPECT_EQ(stored("quietStart"), whole(1439));
}

TEST_F(SettingsIntentsTest, ClampsTimesToTheDay)
{
    intents.setTime("quietStart", {.hour = std::numeric_limits<std::int64_t>::max(), .minute = -1});

    EXPECT_EQ(stored("quietStart"), whole(1380));
}

TEST_F(SettingsIntentsTest, PlaysAChosenSoundOnce)
{
    intents.chooseSound("limitSound", "Sosumi");

    EXPECT_THAT(machine.soundPlayer.played, ElementsAre("Sosumi"));
    EXPECT_EQ(stored("limitSound"), DefaultsValue{std::string("Sosumi")});
    EXPECT_EQ(row<SoundRow>("limitSound").value, "Sosumi");
}

TEST_F(SettingsIntentsTest, PlaysASoundAgainOnlyAfterAnotherWasChosen)
{
    intents.chooseSound("limitSound", "Sosumi");
    intents.chooseSound("limitSound", "Sosumi");
    intents.chooseSound("limitSound", "Tink");
    intents.chooseSound("limitSound", "Sosumi");

    EXPECT_THAT(machine.soundPlayer.played, ElementsAre("Sosumi", "Tink", "Sosumi"));
}

TEST_F(SettingsIntentsTest, PlaysTheSameSoundForEachAlert)
{
    for (const auto* const key : {"limitSound", "lowSound", "longSound", "healthSound"}) {
        intents.chooseSound(key, "Pop");
        EXPECT_EQ(stored(key), DefaultsValue{std::string("Pop")}) << key;
    }

    EXPECT_THAT(machine.soundPlayer.played, ElementsAre("Pop", "Pop", "Pop", "Pop"));
}

TEST_F(SettingsIntentsTest, PlaysNothingForNoneAndDefault)
{
    intents.chooseSound("lowSound", "none");
    EXPECT_EQ(stored("lowSound"), DefaultsValue{std::string("none")});

    intents.chooseSound("lowSound", "default");
    EXPECT_EQ(stored("lowSound"), DefaultsValue{std::string("default")});

    EXPECT_THAT(machine.soundPlayer.played, IsEmpty());
}

TEST_F(SettingsIntentsTest, RegistersTheLoginItem)
{
    intents.setLaunchAtLogin(true);
    EXPECT_TRUE(machine.loginItem.on);
    EXPECT_TRUE(view->launchAtLogin.get());
    EXPECT_EQ(view->loginError.get(), std::nullopt);

    intents.setLaunchAtLogin(false);
    EXPECT_FALSE(machine.loginItem.on);
    EXPECT_FALSE(view->launchAtLogin.get());
    EXPECT_THAT(machine.defaults.values, IsEmpty());
}

TEST_F(SettingsIntentsTest, ShowsWhyTheLoginItemCouldNotBeChanged)
{
    machine.loginItem.failure = "Read-only file system";

    intents.setLaunchAtLogin(true);

    EXPECT_THAT(
        view->content().sections.at(6).rows,
        ElementsAre(LoginItemRow{.title = "Launch at Login", .value = false},
                    NoteRow{.text = "Could not change Launch at Login: Read-only file system",
                            .color = Color::red},
                    ResetRow{.title = "Reset History\u2026"}));
}

TEST_F(SettingsIntentsTest, ShowsTheRealStateAfterAFailedChange)
{
    machine.loginItem.failure = "Read-only file system";
    machine.loginItem.on = true;  // changed by another program

    intents.setLaunchAtLogin(false);

    EXPECT_TRUE(view->launchAtLogin.get());
}

TEST_F(SettingsIntentsTest, ShowsTheErrorUntilAChangeSucceeds)
{
    machine.loginItem.failure = "Read-only file system";
    intents.setLaunchAtLogin(true);
    intents.setToggle("showTime", true);
    EXPECT_TRUE(view->loginError.get());

    machine.loginItem.failure = "Disk full";
    intents.setLaunchAtLogin(true);
    EXPECT_EQ(view->loginError.get(), "Could not change Launch at Login: Disk full");

    machine.loginItem.failure.reset();
    intents.setLaunchAtLogin(true);
    EXPECT_EQ(view->loginError.get(), std::nullopt);
    EXPECT_TRUE(view->launchAtLogin.get());
}

TEST_F(SettingsIntentsTest, AnnouncesAFailedChangeSoThatTheToggleIsRedrawn)
{
    machine.loginItem.failure = "Disk full";
    intents.setLaunchAtLogin(true);
    int announced = 0;
    const auto subscription = view->launchAtLogin.subscribe([&] { ++announced; });

    intents.setLaunchAtLogin(true);

    EXPECT_EQ(announced, 1);
}

TEST_F(SettingsIntentsTest, ConfirmsBeforeResettingTheHistory)
{
    model->history.samples = {plugged(start)};

    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.open);
    EXPECT_EQ(machine.alertPanel.open->message, "Reset history?");
    EXPECT_EQ(machine.alertPanel.open->informativeText,
              "This deletes all saved battery samples used for the chart.");
    EXPECT_THAT(machine.alertPanel.open->buttons,
                ElementsAre(AlertButton{.title = "Reset", .role = ButtonRole::destructive},
                            AlertButton{.title = "Cancel", .role = ButtonRole::cancel}));
    EXPECT_TRUE(view->confirmReset);
    EXPECT_EQ(model->history.samples.size(), 1);
}

TEST_F(SettingsIntentsTest, DeletesTheHistoryOnReset)
{
    model->history.samples = {plugged(start)};
    const auto version = model->historyVersion.get();
    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.press("Reset"));

    EXPECT_FALSE(view->confirmReset);
    EXPECT_THAT(model->history.samples, IsEmpty());
    EXPECT_EQ(decodeSamples(machine.files.contents.at(FakeMachine::historyFile)),
              std::vector<Sample>{});
    EXPECT_EQ(model->historyVersion.get(), version + 1);
}

TEST_F(SettingsIntentsTest, ChangesNothingOnCancel)
{
    model->history.samples = {plugged(start)};
    const auto version = model->historyVersion.get();
    intents.resetHistory();

    ASSERT_TRUE(machine.alertPanel.press("Cancel"));

    EXPECT_FALSE(view->confirmReset);
    EXPECT_EQ(model->history.samples.size(), 1);
    EXPECT_THAT(machine.files.contents, IsEmpty());
    EXPECT_EQ(model->historyVersion.get(), version);
}

TEST_F(SettingsIntentsTest, ShowsOneConfirmationAtATime)
{
    struct CountingPanel : FakeAlertPanel {
        int runs = 0;

        void runModal(const AlertPanelContent& content,
                      std::function<void(std::size_t)> next) override
        {
            ++runs;
            FakeAlertPanel::runModal(content, std::move(next));
        }
    };
    CountingPanel panel;
    view = std::make_shared<SettingsView>(
        model, SettingsView::Dependencies{.defaults = machine.defaults,
                                          .batteryRegistry = machine.batteryRegistry,
                                          .loginItem = machine.loginItem,
                                          .soundPlayer = machine.soundPlayer,
                                          .alertPanel = panel,
                                          .clock = machine.clock,
                                          .calendar = machine.calendar,
                                          .texts = machine.texts});
    intents = view->intents();

    intents.resetHistory();
    intents.resetHistory();
    EXPECT_EQ(panel.runs, 1);

    ASSERT_TRUE(panel.press("Cancel"));
    intents.resetHistory();
    EXPECT_EQ(panel.runs, 2);
}

TEST_F(SettingsIntentsTest, IgnoresIntentsOnceDestroyed)
{
    model->history.samples = {plugged(start)};
    intents.resetHistory();
    view.reset();

    EXPECT_TRUE(machine.alertPanel.press("Reset"));
    intents.setToggle("limitEnabled", false);
    intents.setNumber("limit", 60);
    intents.setTime("quietEnd", {.hour = 6, .minute = 30});
    intents.chooseSound("limitSound", "Pop");
    intents.setLaunchAtLogin(true);
    intents.resetHistory();

    EXPECT_EQ(model->history.samples.size(), 1);
    EXPECT_THAT(machine.defaults.values, IsEmpty());
    EXPECT_THAT(machine.soundPlayer.played, IsEmpty());
    EXPECT_FALSE(machine.loginItem.on);
    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

}  // namespace
}  // namespace vorlane
