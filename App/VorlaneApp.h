// The program's entry point: one delegate, told of launch and quit.
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

    // `mainLoop` returns when the program is to quit.
    template <typename MainLoop>
    void run(MainLoop&& mainLoop)
    {
        _delegate->applicationDidFinishLaunching();
        mainLoop();
        _delegate->applicationWillTerminate();
    }

    // Whether a restart in place would believe what this process believes: not soon after a sleep.
    // Refreshes first, so that the last change before a restart is not lost.
    bool canRestart()
    {
        _delegate->model->refresh(AppModel::Reason::change);
        return !_delegate->model->isDoubting();
    }

    // For a process that ends inside its main loop.
    void terminate() { _delegate->applicationWillTerminate(); }

private:
    std::shared_ptr<AppDelegate> _delegate;
};

}  // namespace vorlane
