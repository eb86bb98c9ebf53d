#include <gtest/gtest.h>

#include "platform/linux/power/UPowerEstimates.h"
#include "platform/linux/session/LogindWorkspace.h"
#include "platform/linux/tray/TrayRegistration.h"
#include "platform/linux/windows/PortalAppearance.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {
namespace {

constexpr std::uint64_t patience = 20'000;  // microseconds

class StoppedBusTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer connection = bus.connect(loop);
    int unanswered = 0;

    // Calls a bus that does not answer, and returns once the call has timed out. All earlier calls
    // have then timed out, too.
    void waitForTimeouts()
    {
        const auto slot = owned<SlotPointer>([this](sd_bus_slot** made) {
            return sd_bus_call_method_async(connection.get(), made, "org.freedesktop.DBus", "/",
                                            "org.freedesktop.DBus", "GetId", timedOut, this, "");
        });
        ASSERT_TRUE(slot);
        ASSERT_TRUE(runUntil(loop, [this] { return unanswered == 1; }));
    }

private:
    static int timedOut(sd_bus_message* reply, void* self, sd_bus_error* /*error*/)
    {
        if (sd_bus_message_is_method_error(reply, SD_BUS_ERROR_NO_REPLY)) {
            ++static_cast<StoppedBusTest*>(self)->unanswered;
        }
        return 0;
    }
};

TEST_F(StoppedBusTest, KeepsTheConnectionWhenMatchesAreNotAnswered)
{
    ASSERT_TRUE(runUntil(loop, [this] { return sd_bus_is_ready(connection.get()) > 0; }));
    ASSERT_GE(sd_bus_set_method_call_timeout(connection.get(), patience), 0);
    bus.stop();

    const LogindWorkspace workspace(connection.get());
    const UPowerEstimates estimates(connection.get(), [] { return Seconds{0}; });
    const TrayRegistration registration(connection.get(), loop);
    const PortalAppearance appearance(connection.get(), [](const Appearance&) {});
    waitForTimeouts();

    EXPECT_GT(sd_bus_is_open(connection.get()), 0);
    bus.resume();
}

}  // namespace
}  // namespace vorlane::platform
