#include "App/DecimalText.h"

#include <array>
#include <charconv>

namespace vorlane {

std::string decimalText(double value, int places)
{
    std::array<char, 400> text{};  // the longest real number has 309 digits before the point
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, places);
    return {text.data(), written.ptr};
}

}  // namespace vorlane
