#include "platform/linux/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorlane::platform {
namespace {

CommandLine read(const std::vector<const char*>& arguments)
{
    return readCommandLine(arguments);
}

TEST(CommandLineTest, StartsWithoutAnActionByDefault)
{
    EXPECT_EQ(read({}),
              (CommandLine{.kind = CommandLine::Kind::start, .action = MenuAction::none}));
}

TEST(CommandLineTest, ReadsEachOption)
{
    EXPECT_EQ(read({"--open"}), CommandLine{.action = MenuAction::open});
    EXPECT_EQ(read({"--settings"}), CommandLine{.action = MenuAction::settings});
    EXPECT_EQ(read({"--snooze"}), CommandLine{.action = MenuAction::snooze});
    EXPECT_EQ(read({"--quit"}), CommandLine{.action = MenuAction::quit});
    EXPECT_EQ(read({"--help"}), CommandLine{.kind = CommandLine::Kind::help});
    EXPECT_EQ(read({"--version"}), CommandLine{.kind = CommandLine::Kind::version});
}

TEST(CommandLineTest, RejectsUnknownAndExtraArguments)
{
    for (const auto& arguments : std::vector<std::vector<const char*>>{
             {"--opne"}, {"open"}, {""}, {"--open", "--settings"}}) {
        EXPECT_EQ(read(arguments), CommandLine{.kind = CommandLine::Kind::unknown});
    }
}

}  // namespace
}  // namespace vorlane::platform
