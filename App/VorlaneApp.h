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

    // For a process that ends inside its main loop.
    void terminate() { _delegate->applicationWillTerminate(); }

private:
    std::shared_ptr<AppDelegate> _delegate;
};

}  // namespace vorlane
