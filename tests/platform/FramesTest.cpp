#include "platform/Frames.h"

#include <gmock/gmock.h>

#include <string>

#include "platform/linux/base/FileDescriptor.h"

namespace vorlane::platform {
namespace {

class FramesTest : public testing::Test {
protected:
    static constexpr std::size_t largest = 100;

    FramesTest()
    {
        int both[2];
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, both) != 0) std::abort();
        ours = FileDescriptor(both[0]);
        theirs = FileDescriptor(both[1]);
    }

    Receiving receive() { return receiveFrame(ours.get(), frame, largest); }

    FileDescriptor ours;
    FileDescriptor theirs;
    std::string frame;
};

TEST_F(FramesTest, ReceivesMessagesOneByOne)
{
    const std::string longest(largest, 'x');
    ASSERT_TRUE(sendFrame(theirs.get(), "one"));
    ASSERT_TRUE(sendFrame(theirs.get(), longest));

    EXPECT_EQ(receive(), Receiving::frame);
    EXPECT_EQ(frame, "one");
    EXPECT_EQ(receive(), Receiving::frame);
    EXPECT_EQ(frame, longest);
    EXPECT_EQ(receive(), Receiving::nothing);
}

TEST_F(FramesTest, EndsWhenThePeerDisconnects)
{
    ASSERT_TRUE(sendFrame(theirs.get(), "last"));
    theirs.reset();

    EXPECT_EQ(receive(), Receiving::frame);
    EXPECT_EQ(receive(), Receiving::end);
    EXPECT_FALSE(sendFrame(ours.get(), "unheard"));
}

TEST_F(FramesTest, ReceivesTheLastMessageOfAPeerWithUnreadMessages)
{
    ASSERT_TRUE(sendFrame(ours.get(), "unread"));
    ASSERT_TRUE(sendFrame(theirs.get(), "last"));
    theirs.reset();

    EXPECT_EQ(receive(), Receiving::frame);
    EXPECT_EQ(frame, "last");
    EXPECT_EQ(receive(), Receiving::end);
}

TEST_F(FramesTest, EndsAtAnEmptyMessage)
{
    ASSERT_TRUE(sendFrame(theirs.get(), ""));

    EXPECT_EQ(receive(), Receiving::end);
}

TEST_F(FramesTest, EndsAtAMessageThatIsTooLong)
{
    ASSERT_TRUE(sendFrame(theirs.get(), std::string(largest + 1, 'x')));

    EXPECT_EQ(receive(), Receiving::end);
}

TEST_F(FramesTest, DoesNotWaitForAPeerThatReadsNothing)
{
    const std::string message(largest, 'x');

    int sent = 0;
    while (sent < 1'000'000 && sendFrame(ours.get(), message)) ++sent;

    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, 1'000'000);
}

}  // namespace
}  // namespace vorlane::platform
