#include "platform/qt/Room.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>

namespace vorlane::platform {
namespace {

// What each thread that is started without a word about it gets for its stack.
class StackSize {
public:
    explicit StackSize(std::size_t bytes)
    {
        (void)pthread_getattr_default_np(&before);
        pthread_attr_t huge;
        (void)pthread_attr_init(&huge);
        (void)pthread_attr_setstacksize(&huge, bytes);
        (void)pthread_setattr_default_np(&huge);
        (void)pthread_attr_destroy(&huge);
    }
    StackSize(const StackSize&) = delete;
    StackSize& operator=(const StackSize&) = delete;
    ~StackSize()
    {
        (void)pthread_setattr_default_np(&before);
        (void)pthread_attr_destroy(&before);
    }

private:
    pthread_attr_t before{};
};

constexpr std::size_t moreThanThereIs = std::size_t{1} << 48U;

TEST(RoomTest, IsThereAsAlways)
{
    EXPECT_TRUE(hasRoom({.threads = 3, .bytes = 1 << 20}));
}

TEST(RoomTest, IsNotThereWhenMemoryIsShort)
{
    EXPECT_FALSE(hasRoom({.threads = 0, .bytes = moreThanThereIs}));
}

TEST(RoomTest, IsNotThereWhenNoThreadCanStart)
{
    {
        const StackSize huge(moreThanThereIs);
        EXPECT_FALSE(hasRoom({.threads = 1, .bytes = 4096}));
    }
    EXPECT_TRUE(hasRoom({.threads = 1, .bytes = 4096}));
}

}  // namespace
}  // namespace vorlane::platform
