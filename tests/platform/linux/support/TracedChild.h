// A child process whose parent stops it at its system calls, to make one of them fail, do less than
// requested, or be the last one.
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
        int call = 0;          // index of the call, from 0
        int error = 0;         // errno for Trouble::error
        bool onwards = false;  // interferes with all later calls, too
    };

    // Why no child can be traced here; empty when it can.
    static std::string impossibleBecause();

    // Runs `work` in a child that exits afterwards; returns its status as from waitpid. The parent
    // calls `happening` at the call that the plan names, while the child waits.
    static int statusOf(const std::function<void()>& work, const std::function<void()>& happening);

    // The same; true when the child exited normally with all its expectations met.
    static bool holds(const std::function<void()>& work,
                      const std::function<void()>& happening = nullptr);

    // In the child: interferes with its system calls until `end`. Calls for memory and signals do
    // not count, nor do those of the sanitizers.
    static void begin(const Plan& plan);

    struct Outcome {
        int calls = 0;
        bool interfered = false;  // the plan's call was reached
    };
    static Outcome end();
};

}  // namespace vorlane::platform
