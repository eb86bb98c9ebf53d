// The history file read a second time, slowly and by the letter of RFC 8259, to compare with.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "App/Sample.h"

namespace vorlane::fuzz {

struct PlainJson {
    // Absent when the text is no array of samples.
    std::optional<std::vector<Sample>> samples;

    // Holds what the standard leaves open (half a surrogate pair, absurd nesting): no comparison.
    bool isOpen = false;
};

PlainJson readPlainJson(std::string_view text);

}  // namespace vorlane::fuzz
