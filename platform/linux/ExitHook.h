// Work that must not be lost when a library ends the process by exit(), as toolkits do when their
// display goes away.
#pragma once

#include <functional>

namespace vorlane::platform {

// Only one at a time. The destructor calls it off.
class ExitHook {
public:
    explicit ExitHook(std::function<void()> work);
    ExitHook(const ExitHook&) = delete;
    ExitHook& operator=(const ExitHook&) = delete;
    ~ExitHook();

    // For who knows of an end that calls no exit handlers. Does the work unless it is done.
    static void runNow();
};

}  // namespace vorlane::platform
