#pragma once

#include <functional>

#include "App/Subscription.h"

namespace vorlane {

// The system's sleep and wake. Callbacks come on the main thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    // The system waits for the callback to return, for a few seconds at most.
    [[nodiscard]] virtual Subscription observeWillSleep(std::function<void()> willSleep) = 0;
    [[nodiscard]] virtual Subscription observeDidWake(std::function<void()> didWake) = 0;
};

}  // namespace vorlane
