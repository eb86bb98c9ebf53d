// The four kinds of alert, and their stable names.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vorlane {

// In the order in which alerts due at the same time are posted.
enum class AlertKind {
    chargeLimit,  // the charge has reached the chosen limit while on power
    low,          // the charge has fallen to the chosen low level while on battery
    tooLong,      // on power above the limit for too many hours
    health,       // the capacity has fallen below 80% of the design capacity
};

inline constexpr std::array allAlertKinds{AlertKind::chargeLimit, AlertKind::low,
                                          AlertKind::tooLong, AlertKind::health};

// The kind's name, also used as the notification's identifier.
std::string_view rawValue(AlertKind kind);

// The kind with exactly that name; absent for any other text.
std::optional<AlertKind> alertKind(std::string_view rawValue);

}  // namespace vorlane
