// The program's entry point: owns the delegate, launches it and lets it save at quit.
#pragma once

#include <memory>

#include "App/AppDelegate.h"
#include "App/services/Services.h"

namespace vorlane {

class VorlaneApp {
public:
    explicit VorlaneApp(const Services& services)
        : _delegate(std::make_shared<AppDelegate>(services))
    {}

    // Quits when `mainLoop` returns.
    template <typename MainLoop>
    void run(MainLoop&& mainLoop)
    {
        _delegate->applicationDidFinishLaunching();
        mainLoop();
        _delegate->applicationWillTerminate();
    }

    // Whether a restart in place is safe: not soon after a sleep, when readings are suspect.
    // Refreshes first, so that the last change before the restart is not lost.
    bool canRestart()
    {
        _delegate->model->refresh(AppModel::Reason::change);
        return !_delegate->model->isSettling();
    }

    // Call it when the process ends without leaving its main loop.
    void terminate() { _delegate->applicationWillTerminate(); }

private:
    std::shared_ptr<AppDelegate> _delegate;
};

}  // namespace vorlane
