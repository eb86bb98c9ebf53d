// The four reminders that the system knows.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vorlane {

// In the order in which reminders of one moment are given.
enum class AlertKind {
    chargeLimit,  // the charge has reached the chosen limit while on power
    low,          // the charge has fallen to the chosen low level while on battery
    tooLong,      // on power above the limit for too many hours
    health,       // the capacity has fallen below 80% of the design capacity
};

inline constexpr std::array allAlertKinds{AlertKind::chargeLimit, AlertKind::low,
                                          AlertKind::tooLong, AlertKind::health};

// The kind's stable name, which also identifies its notification.
std::string_view rawValue(AlertKind kind);

// The kind with exactly that name; absent for any other text.
std::optional<AlertKind> alertKind(std::string_view rawValue);

}  // namespace vorlane
