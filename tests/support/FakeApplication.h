// Records what the program asks of its process, and plays the desktop.
#pragma once

#include <utility>

#include "App/services/Application.h"

namespace vorlane {

class FakeApplication : public Application {
public:
    bool accessory = false;
    bool terminating = false;
    bool restarting = false;
    int activations = 0;
    std::function<void()> activated;  // called at each activation

    void setAccessory() override { accessory = true; }
    void activate() override
    {
        ++activations;
        if (activated) activated();
    }

    void terminate() override { terminating = true; }
    bool isRestarting() const override { return restarting; }
    void onReopen(std::function<void()> callback) override { reopened = std::move(callback); }

    void onAction(std::function<void(MenuAction)> callback) override
    {
        acted = std::move(callback);
    }

    // The user starts the program a second time.
    void reopen() const
    {
        if (reopened) reopened();
    }

    // The user chooses an action in a launcher.
    void choose(MenuAction action) const
    {
        if (acted) acted(action);
    }

private:
    std::function<void()> reopened;
    std::function<void(MenuAction)> acted;
};

}  // namespace vorlane
