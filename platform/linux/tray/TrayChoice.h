// Decides whether the item needs an X icon. The owner looks for trays and runs the timer.
#pragma once

#include "App/Date.h"

namespace vorlane::platform {

// A tray on the bus shows the item better, and a panel that has both often starts its X tray a
// moment earlier. So the icon is shown only after a while without a watcher, and withdrawn as soon
// as there is one.
class TrayChoice {
public:
    // A panel that starts with the session, or restarts after a crash, has a watcher by then.
    static constexpr Seconds watcherTimeout{3};

    enum class Step {
        nothing,
        wait,  // start a timer that calls `waited`
        show,
        withdraw,  // and cancel the timer
    };

    // May be called repeatedly with the same value.
    Step watcher(bool present)
    {
        watched = present;
        if (present) return state == State::none ? Step::nothing : withdraw();
        return state == State::none ? startWaiting() : Step::nothing;
    }

    Step waited()
    {
        if (state != State::waiting) return Step::nothing;
        state = State::shown;
        return Step::show;
    }

    // The display that showed the icon is gone.
    Step lost() { return state == State::shown ? withdraw() : Step::nothing; }

    // Tries a lost display again, for example after sleep.
    Step retry() { return state == State::none && !watched ? startWaiting() : Step::nothing; }

private:
    enum class State { none, waiting, shown };

    Step startWaiting()
    {
        state = State::waiting;
        return Step::wait;
    }

    Step withdraw()
    {
        state = State::none;
        return Step::withdraw;
    }

    State state = State::none;
    bool watched = true;  // until `watcher` is called
};

}  // namespace vorlane::platform
