// What a message says, as text that a test can compare: (1, 'two', [<true>], {'key': <3>}, 4
// bytes).
#pragma once

#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// The whole content; of an error reply its name.
std::string messageText(sd_bus_message* message);

}  // namespace vorlane::platform
