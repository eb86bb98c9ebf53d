// Escapes any UTF-8 text as ASCII, and back: "~" and two hexadecimal digits for each non-ASCII byte
// and for "~" itself. For parsers that cannot be trusted with other characters.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorlane::platform {

// Absent when the text is not UTF-8.
std::optional<std::string> asciiOf(std::string_view text);

std::string textOfAscii(std::string_view ascii);

}  // namespace vorlane::platform
