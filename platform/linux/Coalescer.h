// Makes one call out of a burst of them.
#pragma once

#include <functional>
#include <utility>

#include "App/services/RunLoop.h"

namespace vorlane::platform {

// The first of a burst starts the span; at its end the work is done once. Later calls do not
// prolong it, so that a burst without end is still heard.
class Coalescer {
public:
    Coalescer(RunLoop& runLoop, Seconds burst, std::function<void()> job)
        : runLoop_(runLoop), span(burst), work(std::move(job))
    {}

    void call()
    {
        if (pending) return;
        pending = runLoop_.after(span, [this] {
            pending = {};
            work();
        });
    }

private:
    RunLoop& runLoop_;
    Seconds span;
    std::function<void()> work;
    Subscription pending;
};

}  // namespace vorlane::platform
