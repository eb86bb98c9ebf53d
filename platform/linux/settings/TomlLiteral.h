// Keys and values as TOML spells them.
#pragma once

#include <string>

#include "App/services/DefaultsStore.h"

namespace vorlane::platform {

// A real number reads back exactly and as a real one; it must be finite.
std::string tomlLiteral(const DefaultsValue& value);

// Quoted when it must be.
std::string tomlKey(const std::string& key);

}  // namespace vorlane::platform
