// Keeps a lack of memory from ending the program. No exception may pass through the callers in C.
#pragma once

#include <new>

namespace vorlane::platform {

// Runs `work`; false when memory ran out, and `work` stopped where it was.
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
