// A child process whose calls to the kernel its parent stops, one by one, to let one of them fail,
// do less than it was asked to, or be the last thing that the child did.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace vorlane::platform {

class TracedChild {
public:
    enum class Trouble { none, error, shortage, kill, happening };

    struct Plan {
        Trouble trouble = Trouble::none;
        int call = 0;          // which one, from 0
        int error = 0;         // of Trouble::error
        bool onwards = false;  // it and all that follow
    };

    // Why there can be no such child here; empty when there can.
    static std::string impossibleBecause();

    // Runs `work` in a child, which ends after it; how it ended, as waitpid tells. The parent calls
    // `happening` where the plan says so, while the child waits.
    static int statusOf(const std::function<void()>& work, const std::function<void()>& happening);

    // The same; whether it ended by itself with all its expectations met.
    static bool holds(const std::function<void()>& work,
                      const std::function<void()>& happening = nullptr);

    // In the child: interferes with what it calls from here to `end`. Calls for memory and signals
    // do not count, nor do the sanitizers'.
    static void begin(const Plan& plan);

    struct Outcome {
        int calls = 0;
        bool interfered = false;  // it came as far as the plan's call
    };
    static Outcome end();
};

}  // namespace vorlane::platform
