// What a process that was killed while it wrote a file has left beside it.
#pragma once

#include <string>

namespace vorlane::platform {

// Takes away the user's own regular files in `folder` whose names are `begin` and six letters or
// digits, and that nobody has written to for ten minutes: a younger one may be at work, another
// session's. Trouble is ignored.
void removeStaleTemporaries(const std::string& folder, const std::string& begin);

}  // namespace vorlane::platform
