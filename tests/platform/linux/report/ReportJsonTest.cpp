#include "platform/linux/report/ReportJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/platform/linux/power/Supplies.h"

namespace vorlane::platform {
namespace {

using nlohmann::json;

json report(const std::vector<PowerSupply>& supplies)
{
    return json::parse(reportJson(supplies), nullptr, false);
}

const std::vector<std::string> stateKeys{
    "hasBattery",    "percent",        "isCharging",  "pluggedIn",  "isCharged",
    "minutesToFull", "minutesToEmpty", "sourceName",  "cycleCount", "designCapacity",
    "fullCapacity",  "temperatureC",   "voltage",     "amperage",   "adapterWatts",
    "stateText",     "shortTime",      "healthLabel", "symbolNames"};

TEST(ReportJsonTest, NamesEveryFieldOfTheStateAndNullWhenAbsent)
{
    const auto state = report({}).at("state");

    EXPECT_EQ(state.size(), stateKeys.size());
    for (const auto& key : stateKeys) EXPECT_TRUE(state.contains(key)) << key;
    EXPECT_EQ(state.at("hasBattery"), false);
    EXPECT_EQ(state.at("minutesToFull"), nullptr);
    EXPECT_EQ(state.at("stateText"), "No battery found");
    EXPECT_EQ(state.at("shortTime"), nullptr);
    EXPECT_EQ(state.at("symbolNames"), json::array({"battery.0"}));
}

TEST(ReportJsonTest, GivesTheStateThatTheProgramWouldShow)
{
    const auto charging = battery({{"STATUS", "Charging"},
                                   {"CAPACITY", "50"},
                                   {"MODEL_NAME", "X"},
                                   {"CYCLE_COUNT", "12"},
                                   {"CHARGE_NOW", "2000000"},
                                   {"CHARGE_FULL", "4000000"},
                                   {"CHARGE_FULL_DESIGN", "4100000"},
                                   {"CURRENT_NOW", "1000000"},
                                   {"VOLTAGE_NOW", "12000000"},
                                   {"TEMP", "305"}});

    const auto state = report({charging}).at("state");

    EXPECT_EQ(state.at("percent"), 50);
    EXPECT_EQ(state.at("isCharging"), true);
    EXPECT_EQ(state.at("pluggedIn"), true);
    EXPECT_EQ(state.at("isCharged"), false);
    EXPECT_EQ(state.at("minutesToFull"), 120);
    EXPECT_EQ(state.at("sourceName"), "X");
    EXPECT_EQ(state.at("cycleCount"), 12);
    EXPECT_EQ(state.at("designCapacity"), 4100);
    EXPECT_EQ(state.at("fullCapacity"), 4000);
    EXPECT_EQ(state.at("temperatureC"), 30.5);
    EXPECT_EQ(state.at("voltage"), 12.0);
    EXPECT_EQ(state.at("amperage"), 1.0);
    EXPECT_EQ(state.at("stateText"), "Charging, 2 h to full");
    EXPECT_EQ(state.at("shortTime"), "2:00");
    EXPECT_EQ(state.at("healthLabel"), "Good");
}

TEST(ReportJsonTest, GivesTheAdapterWatts)
{
    const auto adapter = supply("ucsi-source-psy-0", {{"TYPE", "USB"},
                                                      {"ONLINE", "1"},
                                                      {"VOLTAGE_MAX", "20000000"},
                                                      {"CURRENT_MAX", "3250000"}});

    const auto state = report({battery({{"CAPACITY", "50"}}), adapter}).at("state");

    EXPECT_EQ(state.at("adapterWatts"), 65);
}

TEST(ReportJsonTest, LeavesOutSerialNumbers)
{
    const auto text = reportJson({battery({{"SERIAL_NUMBER", "S3CRET"}, {"XSERIAL", "S3CRET"}})});

    EXPECT_THAT(text, testing::Not(testing::HasSubstr("S3CRET")));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("SERIAL")));
}

TEST(ReportJsonTest, GivesTheKernelsValuesOfEachSupply)
{
    const auto supplies = report({mains("1"), battery({{"CAPACITY", "50"}})}).at("supplies");

    EXPECT_EQ(supplies, json({{"AC", {{"TYPE", "Mains"}, {"ONLINE", "1"}}},
                              {"BAT0", {{"TYPE", "Battery"}, {"CAPACITY", "50"}}}}));
}

TEST(ReportJsonTest, ReplacesInvalidUtf8)
{
    const auto all = report({battery({{"CAPACITY", "50"}, {"MODEL_NAME", "a\xff\x80z"}}, "B\xfe")});

    EXPECT_EQ(all.at("state").at("sourceName"), "a\uFFFD\uFFFDz");
    EXPECT_TRUE(all.at("supplies").contains("B\uFFFD"));
}

}  // namespace
}  // namespace vorlane::platform
