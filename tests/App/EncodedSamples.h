// Encodes samples into one string.
#pragma once

#include <string>
#include <vector>

#include "App/SampleJson.h"

namespace vorlane {

inline std::string encode(const std::vector<Sample>& samples)
{
    SampleEncoder encoder(samples);
    std::string text;
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) text += piece;
    return text;
}

}  // namespace vorlane
