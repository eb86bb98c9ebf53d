#include "tests/platform/linux/session/FakeLogind.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.login1";
constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";

}  // namespace

const sd_bus_vtable FakeLogind::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Inhibit", "ssss", "h", &FakeLogind::inhibit, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

FakeLogind::FakeLogind(const PrivateBus& bus, const SdEventRunLoop& loop)
    : connection(bus.connect(loop)), object(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_object_vtable(connection.get(), slot, path, manager, vtable, this);
      }))
{
    own();
}

bool FakeLogind::isLockHeld() const
{
    if (!ourEnd) return false;
    pollfd end{.fd = ourEnd.get(), .events = 0, .revents = 0};
    (void)poll(&end, 1, 0);
    return (end.revents & POLLHUP) == 0;  // set once the last holder has closed it
}

void FakeLogind::prepareForSleep(bool goingToSleep)
{
    EXPECT_GE(sd_bus_emit_signal(connection.get(), path, manager, "PrepareForSleep", "b",
                                 static_cast<int>(goingToSleep)),
              0);
}

void FakeLogind::restart()
{
    EXPECT_GE(sd_bus_release_name(connection.get(), service), 0);
    own();
}

int FakeLogind::inhibit(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    auto* const logind = static_cast<FakeLogind*>(self);
    if (!logind->hangs) return logind->give(call);
    logind->unanswered.emplace_back(sd_bus_message_ref(call));
    return 1;
}

void FakeLogind::answerLate()
{
    hangs = false;
    for (const auto& call : std::exchange(unanswered, {})) EXPECT_GE(give(call.get()), 0);
}

int FakeLogind::give(sd_bus_message* call)
{
    std::array<const char*, 4> words{};
    std::array<int, 2> ends{};
    if (sd_bus_message_read(call, "ssss", &words[0], &words[1], &words[2], &words[3]) < 0 ||
        pipe2(ends.data(), O_CLOEXEC) < 0) {
        return -1;
    }
    ourEnd = FileDescriptor(ends[0]);
    const FileDescriptor lock(ends[1]);
    ++locksGiven;
    lastLock.clear();
    for (const auto* const word : words) lastLock += std::string(word) + "/";
    return sd_bus_reply_method_return(call, "h", lock.get());
}

void FakeLogind::own()
{
    EXPECT_GT(sd_bus_request_name(connection.get(), service, 0), 0);
}

}  // namespace vorlane::platform
