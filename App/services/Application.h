#pragma once

#include <functional>

#include "App/content/StatusItemContent.h"

namespace vorlane {

// The process as the desktop sees it.
class Application {
public:
    virtual ~Application() = default;

    // Shows no dock icon and no main window.
    virtual void setAccessory() = 0;

    // Brings the program's windows to the front, before those of other programs.
    virtual void activate() = 0;

    // Ends the main loop on its next turn.
    virtual void terminate() = 0;

    // Whether the program quits only to restart immediately, for example after an upgrade.
    virtual bool isRestarting() const = 0;

    // Called when the user starts the program while it is already running.
    virtual void onReopen(std::function<void()> callback) = 0;

    // Called when the user chooses one of the program's actions in a launcher.
    virtual void onAction(std::function<void(MenuAction)> callback) = 0;
};

}  // namespace vorlane
