#include "tests/platform/linux/support/PrivateBus.h"

#include <gtest/gtest.h>

namespace vorlane::platform {
namespace {

TEST(PrivateBusTest, OffersNoInstalledServices)
{
    SdEventRunLoop loop;
    const PrivateBus bus;
    const auto connection = bus.connect(loop);
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(connection.get(), message, "org.freedesktop.DBus",
                                              "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                              "ListActivatableNames");
    });

    const auto reply = answer(loop, call.get());

    ASSERT_TRUE(reply);
    ASSERT_GT(sd_bus_message_enter_container(reply.get(), 'a', "s"), 0);
    const char* name = nullptr;
    ASSERT_GT(sd_bus_message_read(reply.get(), "s", &name), 0);
    EXPECT_STREQ(name, "org.freedesktop.DBus");
    EXPECT_GT(sd_bus_message_at_end(reply.get(), 0), 0);
}

}  // namespace
}  // namespace vorlane::platform
