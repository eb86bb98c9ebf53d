#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

// Which values the controls of the settings window show, and which controls are enabled.
class SettingsControlsTest : public SettingsViewFixture {};

TEST_F(SettingsControlsTest, ShowsStoredValues)
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

TEST_F(SettingsControlsTest, ShowsANumberOutOfRangeUnchanged)
{
    machine.defaults.set("limit", std::int64_t{150});

    EXPECT_EQ(row<StepperRow>("limit").value, 150);
    EXPECT_EQ(row<StepperRow>("limit").title, "Alert when charging reaches 150%");
    EXPECT_EQ(row<StepperRow>("limit").maximum, 100);
}

TEST_F(SettingsControlsTest, DisablesTheRowsOfTheChargeLimitButKeepsTheirValues)
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

TEST_F(SettingsControlsTest, DisablesOnlyTheRowsOfTheToggle)
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

TEST_F(SettingsControlsTest, DisablesTheTimesOfQuietHoursThatAreOff)
{
    EXPECT_FALSE(row<TimeRow>("quietStart").enabled);
    EXPECT_FALSE(row<TimeRow>("quietEnd").enabled);
    EXPECT_EQ(row<TimeRow>("quietStart").time, (TimeOfDay{.hour = 22, .minute = 0}));
}

TEST_F(SettingsControlsTest, ShowsStoredMinutesAsATimeOfDay)
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

TEST_F(SettingsControlsTest, ShowsTheCurrentTimeForAnImpossibleTime)
{
    machine.clock.time = start + Seconds{14 * 60};
    for (const std::int64_t minutes : {-1, 1440, 5000}) {
        machine.defaults.set("quietEnd", minutes);
        EXPECT_EQ(row<TimeRow>("quietEnd").time, (TimeOfDay{.hour = 9, .minute = 14})) << minutes;
    }
}

TEST_F(SettingsControlsTest, ShowsTheNextValidTimeForOneThatTodaySkips)
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

}  // namespace
}  // namespace vorlane
