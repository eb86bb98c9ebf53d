// Which time zone the C library tells the time in.
#pragma once

#include <cstdlib>
#include <string_view>

namespace vorlane::platform {

// The C library looks whether the system's zone was changed, but not whether the file that TZ names
// was. Some systems name the system's own there, which means the same as nothing.
inline void followSystemTimeZone()
{
    const char* const named = std::getenv("TZ");
    if (!named) return;

    const std::string_view zone = named;
    if (zone == "/etc/localtime" || zone == ":/etc/localtime") (void)unsetenv("TZ");
}

}  // namespace vorlane::platform
