#include "App/FatalError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace vorlane {
namespace {

TEST(FatalErrorDeathTest, PrintsTheTextAndAborts)
{
    EXPECT_EXIT(fatalError("The reason"), testing::KilledBySignal(SIGABRT), "^The reason\n$");
}

TEST(FatalErrorDeathTest, PrintsTextThatIsNotNullTerminated)
{
    const std::string text = "The reason and more";
    EXPECT_EXIT(fatalError(std::string_view(text).substr(0, 10)), testing::KilledBySignal(SIGABRT),
                "^The reason\n$");
}

}  // namespace
}  // namespace vorlane
