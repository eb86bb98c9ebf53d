#pragma once

#include <optional>
#include <string>

namespace vorlane {

// Whether the program starts with the user's session.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    // The real state, read now.
    virtual bool enabled() const = 0;

    // The reason for the user when it fails.
    virtual std::optional<std::string> setEnabled(bool on) = 0;
};

}  // namespace vorlane
