#pragma once

#include <optional>
#include <string>

namespace vorlane {

// Whether the program starts with the user's session.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    // Read from the system at each call.
    virtual bool enabled() const = 0;

    // Returns the error, worded for the user, or nothing on success.
    virtual std::optional<std::string> setEnabled(bool on) = 0;
};

}  // namespace vorlane
