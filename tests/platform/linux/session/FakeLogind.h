// A login manager that hands out delay locks and announces sleep.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/Systemd.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {

class FakeLogind {
public:
    FakeLogind(const PrivateBus& bus, const SdEventRunLoop& loop);

    int locksGiven = 0;
    bool hangs = false;    // leaves requests unanswered until `answerLate`
    std::string lastLock;  // "what who why mode" of the last request

    // Whether the last lock is still held.
    bool isLockHeld() const;

    void prepareForSleep(bool goingToSleep);

    void answerLate();

    // Releases the name and acquires it again.
    void restart();

private:
    static int inhibit(sd_bus_message* call, void* self, sd_bus_error* error);
    int give(sd_bus_message* call);
    void own();

    static const sd_bus_vtable vtable[];

    BusPointer connection;
    SlotPointer object;
    std::vector<MessagePointer> unanswered;
    FileDescriptor ourEnd;  // of a pipe whose other end is the lock
};

}  // namespace vorlane::platform
