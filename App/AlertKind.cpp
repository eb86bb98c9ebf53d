#include "App/AlertKind.h"

#include <algorithm>
#include <cstddef>

namespace vorlane {

namespace {

constexpr std::array<std::string_view, allAlertKinds.size()> rawValues{"chargeLimit", "low",
                                                                       "tooLong", "health"};

}  // namespace

std::string_view rawValue(AlertKind kind)
{
    return rawValues.at(static_cast<std::size_t>(kind));
}

std::optional<AlertKind> alertKind(std::string_view text)
{
    const auto found = std::ranges::find(allAlertKinds, text, rawValue);
    if (found == allAlertKinds.end()) return std::nullopt;
    return *found;
}

}  // namespace vorlane
