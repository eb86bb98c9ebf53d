#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the settings window shows: every section, row and text, and which controls are enabled.
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

    EXPECT_EQ(section(0).rows.size(), 4);  // no note: the reminder comes first
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

TEST_F(SettingsViewTest, ShowsStoredValues)
{
    for (const auto* const key : {"limitEnabled", "repeatReminder", "lowEnabled", "longEnabled",
                                  "healthEnabled", "quietEnabled", "showPercent", "showTime"}) {
        for (const bool value : {false, true}) {
            machine.defaults.set(key, value);
            EXPECT_EQ(row<ToggleRow>(key).value, value) << key;
        }
    }
    machine.defaults.set("limit", std::int64_t{55});
    EXPECT_EQ(row<StepperRow>("limit").value, 55);
    EXPECT_EQ(row<StepperRow>("limit").title, "Alert when charging reaches 55%");
    machine.defaults.set("low", std::int64_t{15});
    EXPECT_EQ(row<StepperRow>("low").value, 15);
    EXPECT_EQ(row<StepperRow>("low").title, "Alert on battery at 15% or less");
    machine.defaults.set("longHours", std::int64_t{2});
    EXPECT_EQ(row<StepperRow>("longHours").value, 2);
    EXPECT_EQ(row<StepperRow>("longHours").title,
              "Alert after 2 h plugged in above the charge limit");
    for (const auto* const key : {"limitSound", "lowSound", "longSound", "healthSound"}) {
        machine.defaults.set(key, std::string("Frog"));
        EXPECT_EQ(row<SoundRow>(key).value, "Frog") << key;
    }
}

TEST_F(SettingsViewTest, ShowsANumberOutOfRangeUnchanged)
{
    machine.defaults.set("limit", std::int64_t{150});

    EXPECT_EQ(row<StepperRow>("limit").value, 150);
    EXPECT_EQ(row<StepperRow>("limit").title, "Alert when charging reaches 150%");
    EXPECT_EQ(row<StepperRow>("limit").maximum, 100);
}

TEST_F(SettingsViewTest, ShowsAnUnknownSoundUnchanged)
{
    machine.defaults.set("lowSound", std::string("Gong"));

    EXPECT_EQ(row<SoundRow>("lowSound").value, "Gong");
    EXPECT_EQ(row<SoundRow>("lowSound").entries, sound("lowSound").entries);
}

TEST_F(SettingsViewTest, DisablesTheRowsOfTheChargeLimitButKeepsTheirValues)
{
    machine.defaults.set("limit", std::int64_t{70});
    machine.defaults.set("repeatReminder", false);
    machine.defaults.set("limitSound", std::string("Pop"));

    machine.defaults.set("limitEnabled", false);

    EXPECT_TRUE(enabled("limitEnabled"));
    EXPECT_FALSE(enabled("limit"));
    EXPECT_FALSE(enabled("repeatReminder"));
    EXPECT_FALSE(enabled("limitSound"));
    EXPECT_EQ(row<StepperRow>("limit").value, 70);
    EXPECT_FALSE(row<ToggleRow>("repeatReminder").value);
    EXPECT_EQ(row<SoundRow>("limitSound").value, "Pop");
    EXPECT_EQ(stored("limit"), DefaultsValue{std::int64_t{70}});
}

TEST_F(SettingsViewTest, DisablesOnlyTheRowsOfTheToggle)
{
    const std::vector<std::pair<std::string, std::vector<std::string>>> groups{
        {"limitEnabled", {"limit", "repeatReminder", "limitSound"}},
        {"lowEnabled", {"low", "lowSound"}},
        {"longEnabled", {"longHours", "longSound"}},
        {"healthEnabled", {"healthSound"}},
        {"quietEnabled", {"quietStart", "quietEnd"}}};
    for (const auto& [toggle, members] : groups) {
        for (const auto& [other, ignored] : groups) machine.defaults.set(other, other != toggle);
        for (const auto& [other, rows] : groups) {
            EXPECT_TRUE(enabled(other));
            for (const auto& key : rows) EXPECT_EQ(enabled(key), other != toggle) << key;
        }
        EXPECT_TRUE(enabled("showPercent"));
        EXPECT_TRUE(enabled("showTime"));
    }
}

TEST_F(SettingsViewTest, DisablesTheTimesOfQuietHoursThatAreOff)
{
    EXPECT_FALSE(row<TimeRow>("quietStart").enabled);
    EXPECT_FALSE(row<TimeRow>("quietEnd").enabled);
    EXPECT_EQ(row<TimeRow>("quietStart").time, (TimeOfDay{.hour = 22, .minute = 0}));
}

TEST_F(SettingsViewTest, ShowsStoredMinutesAsATimeOfDay)
{
    const auto shown = [this](std::int64_t minutes) {
        machine.defaults.set("quietStart", minutes);
        return row<TimeRow>("quietStart").time;
    };

    EXPECT_EQ(shown(1320), (TimeOfDay{.hour = 22, .minute = 0}));
    EXPECT_EQ(shown(0), (TimeOfDay{.hour = 0, .minute = 0}));
    EXPECT_EQ(shown(59), (TimeOfDay{.hour = 0, .minute = 59}));
    EXPECT_EQ(shown(60), (TimeOfDay{.hour = 1, .minute = 0}));
    EXPECT_EQ(shown(1439), (TimeOfDay{.hour = 23, .minute = 59}));
}

TEST_F(SettingsViewTest, ShowsTheCurrentTimeForAnImpossibleTime)
{
    machine.clock.time = start + Seconds{14 * 60};
    for (const std::int64_t minutes : {-1, 1440, 5000}) {
        machine.defaults.set("quietEnd", minutes);
        EXPECT_EQ(row<TimeRow>("quietEnd").time, (TimeOfDay{.hour = 9, .minute = 14})) << minutes;
    }
}

TEST_F(SettingsViewTest, ShowsTheNextValidTimeForOneThatTodaySkips)
{
    // On this day the clock goes from 02:00 to 03:00.
    struct SpringCalendar : FakeCalendar {
        std::optional<Date> today(Date now, TimeOfDay time) const override
        {
            return FakeCalendar::today(now, time.hour == 2 ? TimeOfDay{3, 0} : time);
        }
    };
    const SpringCalendar calendar;
    view = std::make_shared<SettingsView>(
        model, SettingsView::Dependencies{.defaults = machine.defaults,
                                          .batteryRegistry = machine.batteryRegistry,
                                          .loginItem = machine.loginItem,
                                          .soundPlayer = machine.soundPlayer,
                                          .alertPanel = machine.alertPanel,
                                          .clock = machine.clock,
                                          .calendar = calendar,
                                          .texts = machine.texts});
    machine.defaults.set("quietStart", std::int64_t{150});

    EXPECT_EQ(row<TimeRow>("quietStart").time, (TimeOfDay{.hour = 3, .minute = 0}));
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
