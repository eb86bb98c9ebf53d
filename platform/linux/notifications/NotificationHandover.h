// The ids of the notifications on the screen, passed from one process image to the next when the
// program restarts in place.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vorlane::platform {

// Passed in an environment variable. The ids are valid only for the server that issued them.
struct NotificationHandover {
    std::string server;                          // its unique name on the bus
    std::map<std::string, std::uint32_t> shown;  // by identifier

    // The record as text: ":1.23 chargeLimit=5 health=9". Malformed text gives an empty record.
    std::string text() const;
    static NotificationHandover from(std::string_view text);

    // Sets the variable for the next process image.
    void leave() const;

    // Reads and removes the variable, so that no child process inherits it.
    static NotificationHandover take();

    friend bool operator==(const NotificationHandover&, const NotificationHandover&) = default;
};

}  // namespace vorlane::platform
