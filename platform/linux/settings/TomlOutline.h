// What must be known of a TOML text before it is parsed or edited.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorlane::platform {

struct TomlOutline {
    // Where a new line of the top-level part belongs: after the line of its last value, or at the
    // end of a text without tables.
    std::size_t topLevelEnd = 0;
};

// Absent for a text with absurdly many dotted keys: the parser descends one level for each dot.
std::optional<TomlOutline> tomlOutline(std::string_view text);

}  // namespace vorlane::platform
