#include "platform/linux/power/PowerNotes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

PowerSupply drainingAt(const char* percent, Values more = {})
{
    more.insert({{"STATUS", "Discharging"}, {"CAPACITY", percent}});
    return battery(std::move(more));
}

PowerSupply usbOnline()
{
    return supply("ucsi", {{"TYPE", "USB"}, {"ONLINE", "1"}});
}

std::vector<std::string> notesOn(const std::vector<PowerSupply>& supplies)
{
    return powerNotes(supplies, machineBattery(supplies));
}

TEST(PowerNotesTest, SayNothingWhenTheAdaptersAreTrusted)
{
    EXPECT_THAT(notesOn({}), IsEmpty());
    EXPECT_THAT(notesOn({drainingAt("30"), mains("0")}), IsEmpty());
    EXPECT_THAT(notesOn({battery({{"STATUS", "Charging"}, {"CAPACITY", "30"}}), mains("1")}),
                IsEmpty());
}

TEST(PowerNotesTest, SayThatAUsbSupplyIsNotTrusted)
{
    EXPECT_THAT(notesOn({drainingAt("80"), mains("0"), usbOnline()}),
                ElementsAre(HasSubstr("USB supply")));
}

TEST(PowerNotesTest, SayThatAChargerIsTooWeak)
{
    EXPECT_THAT(notesOn({drainingAt("49"), mains("1")}), ElementsAre(HasSubstr("below 50%")));
}

TEST(PowerNotesTest, SayWhyTheBatteryDischargesOnTheAdapter)
{
    EXPECT_THAT(notesOn({drainingAt("50"), mains("1")}),
                ElementsAre(HasSubstr("at 50% and above")));
    EXPECT_THAT(
        notesOn({drainingAt("30", {{"CHARGE_BEHAVIOUR", "auto [force-discharge]"}}), mains("1")}),
        ElementsAre(HasSubstr("force-discharge")));
}

}  // namespace
}  // namespace vorlane::platform
