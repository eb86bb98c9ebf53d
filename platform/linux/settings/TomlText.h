// A settings file's text: what it says, and single values changed in it while everything else
// (comments, order, layout, unknown keys) stays as its author wrote it.
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

// The text with `key` at the top level set to `value`. Absent when the text is not TOML or has a
// table of several lines at `key`, and for a value that cannot stand in TOML (a number that is not
// finite, a string that is not UTF-8).
std::optional<std::string> withTomlValue(std::string_view text, const std::string& key,
                                         const DefaultsValue& value);

}  // namespace vorlane::platform
