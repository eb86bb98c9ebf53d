// A login item that the user in the test may break.
#pragma once

#include "App/services/LoginItem.h"

namespace vorlane {

class FakeLoginItem : public LoginItem {
public:
    bool on = false;
    std::optional<std::string> failure;  // what each change fails with

    bool enabled() const override { return on; }

    std::optional<std::string> setEnabled(bool next) override
    {
        if (!failure) on = next;
        return failure;
    }
};

}  // namespace vorlane
