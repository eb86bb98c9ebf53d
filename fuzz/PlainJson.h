// A plain second reader of the history file, strictly by RFC 8259, to compare with the program's.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "App/Sample.h"

namespace vorlane::fuzz {

struct PlainJson {
    // Absent when the text is not an array of samples.
    std::optional<std::vector<Sample>> samples;

    // The text contains something that the standard leaves open (lone surrogate, extreme nesting),
    // so the results are not compared.
    bool isUnspecified = false;
};

PlainJson readPlainJson(std::string_view text);

}  // namespace vorlane::fuzz
