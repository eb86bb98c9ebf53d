// Checks a condition that must hold for any input; a failure aborts and the case is saved.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vorlane::fuzz {

inline void require(bool holds, const char* requirement)
{
    if (holds) return;
    (void)std::fprintf(stderr, "Violated: %s\n", requirement);
    std::abort();
}

}  // namespace vorlane::fuzz
