#include <gmock/gmock.h>

#include <string>

#include "tests/platform/linux/windows/RemoteWindowsFixture.h"

namespace vorlane::platform {
namespace {

using testing::IsEmpty;

class MalformedMessageTest : public RemoteWindowsFixture,
                             public testing::WithParamInterface<std::string> {};

TEST_P(MalformedMessageTest, EndsOnlyTheConnection)
{
    open();

    puppet.sendBytes(GetParam());

    EXPECT_TRUE(runUntil(loop, [] { return !hasChildren(); }));
    EXPECT_FALSE(popover->isShown());
    EXPECT_THAT(user, IsEmpty());
    popover->show(popoverWith("again"));
    EXPECT_TRUE(puppet.takeOver());
}

INSTANTIATE_TEST_SUITE_P(Messages, MalformedMessageTest,
                         testing::Values("",                       // empty
                                         "\xff",                   // of no known type
                                         std::string("\x05", 1),   // too short
                                         std::string("\x02x", 2),  // too long
                                         std::string(5000, 'x')));

}  // namespace
}  // namespace vorlane::platform
