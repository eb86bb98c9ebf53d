// The end of the road for a programming error; trouble at run time never comes here.
#pragma once

#include <string_view>

namespace vorlane {

// Writes `text` to standard error and aborts the process.
[[noreturn]] void fatalError(std::string_view text);

}  // namespace vorlane
