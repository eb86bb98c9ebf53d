// Encodes and decodes the history file: a JSON array with one object per sample. Reading and
// writing the file is left to `HistoryStore`.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "App/Sample.h"

namespace vorlane {

// The samples in the file's order. Absent unless the whole text is an array of objects with the
// keys "t" (number), "p" (whole number), "c" and "a" (booleans), in any order.
std::optional<std::vector<Sample>> decodeSamples(std::string json);

// Whether every sample can be written: JSON has no infinities or NaN.
bool canEncode(std::span<const Sample> samples);

// Encodes samples as compact JSON in pieces, to save memory. The samples must outlive the encoder.
class SampleEncoder {
public:
    explicit SampleEncoder(std::span<const Sample> all) : samples(all) {}

    // The next piece, valid until the next call; empty at the end.
    std::string_view next();

private:
    std::span<const Sample> samples;
    std::size_t written = 0;  // samples so far
    bool finished = false;
    std::string piece;
};

}  // namespace vorlane
