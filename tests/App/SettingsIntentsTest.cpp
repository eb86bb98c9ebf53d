#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/App/SettingsViewFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the controls of the settings window store and play.
class SettingsIntentsTest : public SettingsViewFixture {
protected:
    // Returns the number stored after the stepper sent `value`.
    DefaultsValue number(const std::string& key, std::int64_t value)
    {
        intents.setNumber(key, value);
        return stored(key);
    }

    static DefaultsValue whole(std::int64_t value) { return value; }
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
