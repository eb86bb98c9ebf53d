#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {
namespace {

using testing::IsEmpty;

// What the status item shows for a state and the settings.
class StatusItemTest : public AppDelegateFixture {
protected:
    StatusItemTest() { launch(); }

    // The title at 50%, with 125 minutes left or no estimate.
    std::string title(bool showPercent, bool showTime, bool timeIsKnown)
    {
        machine.minutesLeft(timeIsKnown ? 125 : -1);
        set("showPercent", showPercent);
        set("showTime", showTime);
        EXPECT_EQ(shown().imagePosition,
                  shown().title.empty() ? ImagePosition::imageOnly : ImagePosition::imageLeading);
        return shown().title;
    }
};

TEST_F(StatusItemTest, AlsoReturnsThePartsOfTheTitle)
{
    EXPECT_EQ(title(true, true, true), " 50% \u00b7 2:05");
    EXPECT_EQ(shown().percent, 50);
    EXPECT_EQ(shown().time, "2:05");

    EXPECT_EQ(title(false, true, false), "");
    EXPECT_EQ(shown().percent, std::nullopt);
    EXPECT_EQ(shown().time, std::nullopt);

    EXPECT_EQ(title(true, true, true), " 50% \u00b7 2:05");
    machine.removeBattery();
    EXPECT_EQ(shown().percent, std::nullopt);
    EXPECT_EQ(shown().time, std::nullopt);
}

TEST_F(StatusItemTest, ShowsPercentAndTimeAsTheUserChose)
{
    EXPECT_EQ(title(true, true, true), " 50% \u00b7 2:05");
    EXPECT_EQ(title(true, true, false), " 50%");
    EXPECT_EQ(title(true, false, true), " 50%");
    EXPECT_EQ(title(true, false, false), " 50%");
    EXPECT_EQ(title(false, true, true), " 2:05");
    EXPECT_EQ(title(false, true, false), "");
    EXPECT_EQ(title(false, false, true), "");
    EXPECT_EQ(title(false, false, false), "");
}

TEST_F(StatusItemTest, HasNoTitleWithoutABattery)
{
    machine.removeBattery();
    for (const bool showPercent : {true, false}) {
        for (const bool showTime : {true, false}) {
            set("showPercent", showPercent);
            set("showTime", showTime);
            EXPECT_EQ(shown().title, "");
            EXPECT_EQ(shown().imagePosition, ImagePosition::imageOnly);
        }
    }
}

TEST_F(StatusItemTest, ShowsAnEmptyBatteryAsZeroPercent)
{
    machine.charge(0);
    EXPECT_EQ(shown().title, " 0%");

    machine.charge(100);
    EXPECT_EQ(shown().title, " 100%");
}

TEST_F(StatusItemTest, ShowsTheTimeToFullWhileCharging)
{
    set("showTime", true);
    machine.minutesLeft(59);

    machine.plugIn();
    EXPECT_EQ(shown().title, " 50% \u00b7 0:59");

    machine.charge(100);
    EXPECT_EQ(shown().title, " 100%");
}

TEST_F(StatusItemTest, DescribesTheBatteryForScreenReaders)
{
    machine.charge(57);
    machine.minutesLeft(125);
    EXPECT_EQ(shown().accessibilityDescription, "Battery 57%, On battery, 2 h 5 min left");

    set("showPercent", false);
    machine.plugIn();
    machine.charge(100);
    EXPECT_EQ(shown().accessibilityDescription, "Battery 100%, Fully charged");

    machine.removeBattery();
    EXPECT_EQ(shown().accessibilityDescription, "No battery found");
}

TEST_F(StatusItemTest, UsesTheFirstSymbolThatTheSystemHas)
{
    EXPECT_EQ(shown().symbol, "battery.50");

    machine.plugIn();
    EXPECT_EQ(shown().symbol, "battery.100.bolt");

    machine.charge(100);
    EXPECT_EQ(shown().symbol, "battery.100");  // the fake tray lacks "battery.100percent"

    machine.statusBar.item.symbols.insert("battery.100percent");
    delegate->updateStatusItem();
    EXPECT_EQ(shown().symbol, "battery.100percent");
}

TEST_F(StatusItemTest, HasNoImageWhenTheSystemHasNoSymbol)
{
    machine.statusBar.item.symbols.clear();

    delegate->updateStatusItem();

    EXPECT_EQ(shown().symbol, std::nullopt);
    EXPECT_EQ(shown().title, " 50%");
}

TEST_F(StatusItemTest, ShowsTheStateInTheToolTip)
{
    EXPECT_EQ(shown().toolTip, "On battery, estimating time left\u2026");

    machine.plugIn();
    machine.charge(100);
    EXPECT_EQ(shown().toolTip, "Fully charged");

    machine.removeBattery();
    EXPECT_EQ(shown().toolTip, "No battery found");
    EXPECT_EQ(shown().symbol, "battery.0");
}

TEST_F(StatusItemTest, NeedsAttentionWhileTheBatteryIsLow)
{
    machine.charge(21);
    EXPECT_FALSE(shown().needsAttention);

    machine.charge(20);
    EXPECT_TRUE(shown().needsAttention);

    machine.plugIn();
    EXPECT_FALSE(shown().needsAttention);

    machine.unplug();
    EXPECT_TRUE(shown().needsAttention);

    machine.removeBattery();
    EXPECT_FALSE(shown().needsAttention);
}

TEST_F(StatusItemTest, NeedsAttentionEvenIfNothingWasPosted)
{
    machine.sleep();
    machine.charge(8);
    machine.wake();
    machine.advance(Seconds{10});

    EXPECT_TRUE(shown().needsAttention);
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(StatusItemTest, NeedsAttentionAccordingToTheUsersSettings)
{
    machine.charge(20);
    set("lowEnabled", false);
    EXPECT_FALSE(shown().needsAttention);

    set("lowEnabled", true);
    EXPECT_TRUE(shown().needsAttention);

    set("low", std::int64_t{15});
    EXPECT_FALSE(shown().needsAttention);
}

TEST_F(StatusItemTest, TreatsSettingsOfTheWrongTypeAsOff)
{
    set("showPercent", std::string("yes"));
    set("showTime", std::int64_t{1});

    EXPECT_THAT(shown().title, IsEmpty());
}

}  // namespace
}  // namespace vorlane
