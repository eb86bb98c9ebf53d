#include "platform/linux/ExitHook.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace vorlane::platform {
namespace {

TEST(ExitHookDeathTest, DoesItsWorkWhenALibraryEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const ExitHook hook([] { (void)std::fputs("saved\n", stderr); });
            std::exit(1);
        },
        testing::ExitedWithCode(1), "^saved\n$");
}

TEST(ExitHookDeathTest, DoesNothingOnceItIsCalledOff)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::optional<ExitHook> hook([] { (void)std::fputs("saved\n", stderr); });
            hook.reset();
            std::exit(1);
        },
        testing::ExitedWithCode(1), "^$");
}

TEST(ExitHookTest, DoesItsWorkOnceWhenAskedTo)
{
    int times = 0;
    const ExitHook hook([&] { ++times; });

    ExitHook::runNow();
    ExitHook::runNow();

    EXPECT_EQ(times, 1);
}

}  // namespace
}  // namespace vorlane::platform
