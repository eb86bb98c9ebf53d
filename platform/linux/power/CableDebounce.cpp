#include "platform/linux/power/CableDebounce.h"

namespace vorlane::platform {

namespace {

constexpr Seconds quiet{10};

}  // namespace

CableDebounce::Shown CableDebounce::filter(const PowerSituation& raw, Seconds uptime)
{
    const bool wasQuiet = !lastChange || uptime - *lastChange >= quiet;
    if (shown && raw.pluggedIn != rawPluggedIn) lastChange = uptime;
    rawPluggedIn = raw.pluggedIn;

    if (!shown || wasQuiet || raw.pluggedIn == shown->pluggedIn) {
        shown = raw;
        return {.situation = raw, .lookAgain = std::nullopt};
    }
    return {.situation = *shown, .lookAgain = *lastChange + quiet};
}

}  // namespace vorlane::platform
