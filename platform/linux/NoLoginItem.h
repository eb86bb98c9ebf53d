// A program that does not start by itself.
#pragma once

#include "App/services/LoginItem.h"

namespace vorlane::platform {

class NoLoginItem : public LoginItem {
public:
    bool enabled() const override { return false; }
    std::optional<std::string> setEnabled(bool /*on*/) override
    {
        return "this build cannot start at login";
    }
};

}  // namespace vorlane::platform
