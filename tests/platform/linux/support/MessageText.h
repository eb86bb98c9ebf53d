// A message's content as text for comparison: (1, 'two', [<true>], {'key': <3>}, 4 bytes).
#pragma once

#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// All arguments; of an error reply, its name.
std::string messageText(sd_bus_message* message);

}  // namespace vorlane::platform
