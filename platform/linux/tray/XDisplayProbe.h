// Asks an X server of this machine whether it answers, without waiting for the answer: the X
// libraries wait for it, however long a server hangs.
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
    // Calls `told` once, on a later turn of the loop: true when the server answered, false when it
    // hung up. Never, when it does neither. The event loop outlives this object.
    XDisplayProbe(sd_event* event, const std::string& socket, std::function<void(bool)> told);

    // False when nobody listens; `told` is not called then.
    bool isAsking() const { return source != nullptr; }

private:
    static int readable(sd_event_source* source, int descriptor, std::uint32_t events, void* self);

    FileDescriptor connection;
    std::function<void(bool)> told_;
    EventSourcePointer source;
};

}  // namespace vorlane::platform
