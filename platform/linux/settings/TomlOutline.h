// Scans a TOML text without parsing it: finds where to insert a key, and rejects a text that would
// overflow the parser's stack.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorlane::platform {

// Where a new top-level line belongs: after the line of the last top-level value, or at the end of
// a text without tables. Absent for absurdly many dotted keys: the parser recurses once per dot.
std::optional<std::size_t> tomlTopLevelEnd(std::string_view text);

}  // namespace vorlane::platform
