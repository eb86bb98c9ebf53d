// A system whose sleep and wake are triggered by the test.
#pragma once

#include <utility>

#include "App/Listeners.h"
#include "App/services/Workspace.h"

namespace vorlane {

class FakeWorkspace : public Workspace {
public:
    Subscription observeWillSleep(std::function<void()> listener) override
    {
        return sleepers.add(std::move(listener));
    }

    Subscription observeDidWake(std::function<void()> listener) override
    {
        return wakers.add(std::move(listener));
    }

    void willSleep() const { sleepers.call(); }
    void didWake() const { wakers.call(); }

private:
    Listeners sleepers;
    Listeners wakers;
};

}  // namespace vorlane
