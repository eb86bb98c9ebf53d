#pragma once

#include <functional>

#include "App/Date.h"
#include "App/Subscription.h"

namespace vorlane {

// The main thread's event loop. Call it from that thread only.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    // Calls `work` on the next turn of the loop, in order of the calls.
    virtual void async(std::function<void()> work) = 0;

    // Calls `work` once, `delay` from now, unless the subscription ends first.
    [[nodiscard]] virtual Subscription after(Seconds delay, std::function<void()> work) = 0;

    struct Rhythm {
        Seconds interval;
        Seconds tolerance;  // how late a call may come, so that wake-ups can be shared
    };

    // Calls `work` every interval, starting one interval from now.
    [[nodiscard]] virtual Subscription repeat(Rhythm rhythm, std::function<void()> work) = 0;

    virtual bool isMainThread() const = 0;
};

}  // namespace vorlane
