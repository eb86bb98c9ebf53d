// Formats keys and values as TOML.
#pragma once

#include <string>

#include "App/services/DefaultsStore.h"

namespace vorlane::platform {

// A real number must be finite; it reads back exactly, and as a real number.
std::string tomlLiteral(const DefaultsValue& value);

// Quoted if necessary.
std::string tomlKey(const std::string& key);

}  // namespace vorlane::platform
