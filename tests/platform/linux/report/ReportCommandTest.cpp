// The command vorlane-report as a user calls it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

struct Result {
    int status = -1;
    std::string output;
};

// `arguments` is part of a shell command and must be quoted accordingly.
Result run(const std::string& arguments)
{
    const auto command = std::string("'" VORLANE_REPORT "' ") + arguments;
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) return {};

    Result result;
    std::array<char, 4096> piece{};
    for (auto count = piece.size(); count > 0;) {
        count = fread(piece.data(), 1, piece.size(), pipe);
        result.output.append(piece.data(), count);
    }
    const int ended = pclose(pipe);
    result.status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return result;
}

class ReportCommandTest : public testing::Test {
protected:
    TemporaryFolder folder;

    std::string quotedFolder() const { return "'" + folder.path().string() + "'"; }
};

TEST_F(ReportCommandTest, PrintsOneJsonObjectForAFolder)
{
    folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CAPACITY=42\n");

    const auto result = run(quotedFolder() + " 2>&1");

    EXPECT_EQ(result.status, 0);
    const auto json = nlohmann::json::parse(result.output, nullptr, false);
    ASSERT_TRUE(json.is_object());
    EXPECT_EQ(json.at("supplies").at("BAT0").at("CAPACITY"), "42");
    EXPECT_EQ(json.at("state").at("percent"), 42);
}

TEST_F(ReportCommandTest, ReportsNoBatteryForAnEmptyFolder)
{
    const auto result = run(quotedFolder() + " 2>&1");

    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("No battery found"));
}

TEST_F(ReportCommandTest, ReadsTheKernelsFolderWithoutAnArgument)
{
    const auto result = run("2>&1");

    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(nlohmann::json::parse(result.output, nullptr, false).is_object());
}

TEST_F(ReportCommandTest, RefusesAFolderThatItCannotRead)
{
    const auto result = run(quotedFolder() + "/none 2>&1 >/dev/null");

    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("cannot read the folder"));
    EXPECT_THAT(run(quotedFolder() + "/none 2>/dev/null").output, IsEmpty());
}

TEST_F(ReportCommandTest, PrintsItsUsageWhenCalledWrongly)
{
    for (const char* const arguments : {"a b", "--help", "''  ''"}) {
        const auto result = run(std::string(arguments) + " 2>&1 >/dev/null");

        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.output, HasSubstr("Usage: ")) << arguments;
    }
}

TEST_F(ReportCommandTest, FailsWhenItsOutputCannotBeWritten)
{
    EXPECT_EQ(run(quotedFolder() + " >/dev/full").status, 1);
}

}  // namespace
}  // namespace vorlane::platform
