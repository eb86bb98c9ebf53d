// What must hold whatever the input was; where it does not, the run ends and the case is kept.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vorlane::fuzz {

inline void require(bool holds, const char* what)
{
    if (holds) return;
    (void)std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

}  // namespace vorlane::fuzz
