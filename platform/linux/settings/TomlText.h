// Reads the text of a settings file, and changes single values in it; everything else (comments,
// order, layout, unknown keys) stays as its author wrote it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "App/services/DefaultsStore.h"

namespace vorlane::platform {

// The top-level keys. A value that no setting can have (a table, a date, a number that is not
// finite) is absent.
using TomlValues = std::map<std::string, std::optional<DefaultsValue>>;

// Absent when the text is not TOML.
std::optional<TomlValues> tomlValues(std::string_view text);

// The text with the top-level `key` set to `value`. Absent when the text is not TOML, when `key` is
// a table of several lines, and for a value that TOML cannot hold (a number that is not finite, a
// string that is not UTF-8).
std::optional<std::string> withTomlValue(std::string_view text, const std::string& key,
                                         const DefaultsValue& value);

}  // namespace vorlane::platform
