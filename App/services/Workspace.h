#pragma once

#include <functional>

#include "App/Subscription.h"

namespace vorlane {

// Signals sleep and wake, on the main thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    // The system waits a few seconds at most for the callback to return.
    [[nodiscard]] virtual Subscription observeWillSleep(std::function<void()> willSleep) = 0;
    [[nodiscard]] virtual Subscription observeDidWake(std::function<void()> didWake) = 0;
};

}  // namespace vorlane
