#include "App/SettingsView.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the settings window shows: every section, row, text and note.
class SettingsViewTest : public SettingsViewFixture {
protected:
    SettingsSection section(std::size_t index) const { return view->content().sections.at(index); }

    // The sound row of that key on a new machine.
    static SoundRow sound(const std::string& key)
    {
        return {.key = key,
                .title = "Sound",
                .value = "default",
                .entries = {{.title = "Default", .value = "default"},
                            {.title = "None", .value = "none"},
                            {.title = "", .value = ""},
                            {.title = "Glass", .value = "Glass"},
                            {.title = "Ping", .value = "Ping"},
                            {.title = "Hero", .value = "Hero"},
                            {.title = "Submarine", .value = "Submarine"},
                            {.title = "Funk", .value = "Funk"},
                            {.title = "Basso", .value = "Basso"},
                            {.title = "Blow", .value = "Blow"},
                            {.title = "Bottle", .value = "Bottle"},
                            {.title = "Frog", .value = "Frog"},
                            {.title = "Morse", .value = "Morse"},
                            {.title = "Pop", .value = "Pop"},
                            {.title = "Purr", .value = "Purr"},
                            {.title = "Sosumi", .value = "Sosumi"},
                            {.title = "Tink", .value = "Tink"}}};
    }

    static NoteRow notice(const std::string& text)
    {
        return {.text = text, .color = Color::orange};
    }
};

TEST_F(SettingsViewTest, HasItsSectionsInOrder)
{
    std::vector<std::string> headers;
    for (const auto& section : view->content().sections) headers.push_back(section.header);

    EXPECT_THAT(headers,
                ElementsAre("Alerts", "", "", "", "Quiet hours", "Menu bar", "General", ""));
}

TEST_F(SettingsViewTest, ShowsTheChargeLimit)
{
    EXPECT_THAT(
        section(0).rows,
        ElementsAre(ToggleRow{.key = "limitEnabled", .title = "Charge limit", .value = true},
                    StepperRow{.key = "limit",
                               .title = "Alert when charging reaches 80%",
                               .value = 80,
                               .minimum = 50,
                               .maximum = 100},
                    ToggleRow{.key = "repeatReminder",
                              .title = "Repeat every 5 minutes, up to 3 times",
                              .value = true},
                    sound("limitSound")));
}

TEST_F(SettingsViewTest, ShowsTheLowBattery)
{
    EXPECT_THAT(section(1).rows,
                ElementsAre(ToggleRow{.key = "lowEnabled", .title = "Low battery", .value = true},
                            StepperRow{.key = "low",
                                       .title = "Alert on battery at 20% or less",
                                       .value = 20,
                                       .minimum = 5,
                                       .maximum = 50},
                            sound("lowSound")));
}

TEST_F(SettingsViewTest, ShowsPluggedInTooLong)
{
    EXPECT_THAT(
        section(2).rows,
        ElementsAre(ToggleRow{.key = "longEnabled", .title = "Plugged in too long", .value = true},
                    StepperRow{.key = "longHours",
                               .title = "Alert after 8 h plugged in above the charge limit",
                               .value = 8,
                               .minimum = 1,
                               .maximum = 48},
                    sound("longSound")));
}

TEST_F(SettingsViewTest, ShowsTheBatteryHealth)
{
    EXPECT_THAT(section(3).rows, ElementsAre(ToggleRow{.key = "healthEnabled",
                                                       .title = "Battery health below 80% (once)",
                                                       .value = true},
                                             sound("healthSound")));
}

TEST_F(SettingsViewTest, ShowsTheQuietHours)
{
    machine.defaults.set("quietEnabled", true);

    EXPECT_THAT(section(4).rows,
                ElementsAre(ToggleRow{.key = "quietEnabled",
                                      .title = "Hold alerts during quiet hours",
                                      .value = true},
                            TimeRow{.key = "quietStart", .title = "From", .time = {22, 0}},
                            TimeRow{.key = "quietEnd", .title = "Until", .time = {7, 0}}));
}

TEST_F(SettingsViewTest, ShowsTheMenuBar)
{
    EXPECT_THAT(
        section(5).rows,
        ElementsAre(
            ToggleRow{
                .key = "showPercent", .title = "Show percentage in the menu bar", .value = true},
            ToggleRow{.key = "showTime", .title = "Show time remaining", .value = false}));
}

TEST_F(SettingsViewTest, ShowsTheGeneralSettings)
{
    EXPECT_THAT(section(6).rows,
                ElementsAre(LoginItemRow{.title = "Launch at Login", .value = false},
                            ResetRow{.title = "Reset History\u2026"}));
}

TEST_F(SettingsViewTest, NotesAFirmwareThresholdAtOrBelowTheLimit)
{
    const auto noteAt = [this](std::int64_t threshold) {
        machine.batteryRegistry.entry =
            PropertyDictionary{{.key = "ChargeThreshold", .value = threshold}};
        const auto rows = section(0).rows;
        return rows.size() == 5 ? std::get<NoteRow>(rows.at(2)).text : std::string();
    };
    machine.defaults.set("limit", std::int64_t{80});

    EXPECT_EQ(noteAt(80),
              "This laptop stops charging at 80% by itself. A limit of 81% reminds you only if it "
              "does not.");
    EXPECT_EQ(noteAt(60),
              "This laptop stops charging at 60% by itself. A limit of 61% reminds you only if it "
              "does not.");
    EXPECT_EQ(noteAt(81), "");
}

TEST_F(SettingsViewTest, NotesThatTheFirmwareKeepsTheChargeBelowFull)
{
    machine.batteryRegistry.entry = PropertyDictionary{{.key = "KeepsBelowFull", .value = true}};

    EXPECT_EQ(std::get<NoteRow>(section(0).rows.at(2)),
              (NoteRow{.text = "This laptop keeps its charge below 100% by itself.",
                       .color = std::nullopt}));
}

TEST_F(SettingsViewTest, PrefersTheExactFirmwareThreshold)
{
    machine.batteryRegistry.entry =
        PropertyDictionary{{.key = "KeepsBelowFull", .value = true},
                           {.key = "ChargeThreshold", .value = std::int64_t{90}}};

    EXPECT_EQ(section(0).rows.size(), 4);  // no note: the limit is reached before the threshold
}

TEST_F(SettingsViewTest, EndsWithANoteOnWhatTheProgramCannotDo)
{
    EXPECT_THAT(
        section(7).rows,
        ElementsAre(NoteRow{.text = "macOS may also hold charging at 80% itself (Optimized Battery "
                                    "Charging, System Settings, Battery). Vorlane can only remind "
                                    "you; it cannot control charging.",
                            .color = std::nullopt}));
}

TEST_F(SettingsViewTest, ExplainsWhyAlertsCannotBeDelivered)
{
    machine.notifications.reachable = false;

    EXPECT_THAT(
        section(6).rows,
        ElementsAre(
            LoginItemRow{.title = "Launch at Login", .value = false},
            ResetRow{.title = "Reset History\u2026"},
            notice("Notifications need Vorlane to run as an app bundle (see make_app.sh). Run from "
                   "the command line, alerts cannot be delivered.")));
}

TEST_F(SettingsViewTest, RemovesTheNoteOnDeliveryWhenNotificationsBecomeAvailable)
{
    machine.notifications.reachable = false;
    ASSERT_EQ(section(6).rows.size(), 3);

    machine.notifications.reachable = true;

    EXPECT_EQ(section(6).rows.size(), 2);
}

TEST_F(SettingsViewTest, ShowsAnUnknownSoundUnchanged)
{
    machine.defaults.set("lowSound", std::string("Gong"));

    EXPECT_EQ(row<SoundRow>("lowSound").value, "Gong");
    EXPECT_EQ(row<SoundRow>("lowSound").entries, sound("lowSound").entries);
}

TEST_F(SettingsViewTest, ReadsTheLoginItemWhenConstructed)
{
    machine.loginItem.on = true;
    EXPECT_FALSE(view->launchAtLogin.get());

    view = makeView();

    EXPECT_TRUE(view->launchAtLogin.get());
    EXPECT_EQ(section(6).rows.front(),
              SettingsRow(LoginItemRow{.title = "Launch at Login", .value = true}));
}

TEST_F(SettingsViewTest, StoresNothingWhenShown)
{
    (void)view->content();

    EXPECT_THAT(machine.defaults.values, IsEmpty());
    EXPECT_THAT(machine.soundPlayer.played, IsEmpty());
    EXPECT_EQ(machine.alertPanel.open, std::nullopt);
}

}  // namespace
}  // namespace vorlane
