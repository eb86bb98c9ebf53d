// Stops the process on a programming error. Runtime failures are handled where they occur.
#pragma once

#include <string_view>

namespace vorlane {

// Writes `text` to standard error and aborts the process.
[[noreturn]] void fatalError(std::string_view text);

}  // namespace vorlane
