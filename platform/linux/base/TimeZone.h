// Makes the C library follow the system's time zone.
#pragma once

#include <cstdlib>
#include <string_view>

namespace vorlane::platform {

// The C library notices when the system's zone changes, but not when the file named by TZ does.
// Some systems set TZ to the file of the system's zone, which is the default anyway.
inline void followSystemTimeZone()
{
    const char* const named = std::getenv("TZ");
    if (!named) return;

    const std::string_view zone = named;
    if (zone == "/etc/localtime" || zone == ":/etc/localtime") (void)unsetenv("TZ");
}

}  // namespace vorlane::platform
