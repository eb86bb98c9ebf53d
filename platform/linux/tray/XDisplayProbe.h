// Checks that a local X server answers, without blocking. The X libraries would block as long as
// the server hangs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

class XDisplayProbe {
public:
    // `done` is called once, on a later turn of the loop: with true when the server answered, false
    // when it hung up. A server that hangs causes no call. The event loop must outlive this object.
    XDisplayProbe(sd_event* event, const std::string& socket, std::function<void(bool)> done);

    // False when no server listens; `done` is then never called.
    bool isAsking() const { return source != nullptr; }

private:
    static int readable(sd_event_source* source, int descriptor, std::uint32_t events, void* self);

    FileDescriptor connection;
    std::function<void(bool)> done_;
    EventSourcePointer source;
};

}  // namespace vorlane::platform
