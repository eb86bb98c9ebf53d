// Stops a failed allocation from ending the program. For callbacks: their callers are C code,
// through which no exception may pass.
#pragma once

#include <new>

namespace vorlane::platform {

// Runs `work`; false when it ran out of memory and was left unfinished.
template <typename Work>
bool hasMemoryFor(Work&& work)
{
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace vorlane::platform
