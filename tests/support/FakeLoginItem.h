// A login item whose changes a test can make fail.
#pragma once

#include "App/services/LoginItem.h"

namespace vorlane {

class FakeLoginItem : public LoginItem {
public:
    bool on = false;
    std::optional<std::string> failure;  // what setEnabled returns; absent: it succeeds

    bool enabled() const override { return on; }

    std::optional<std::string> setEnabled(bool next) override
    {
        if (!failure) on = next;
        return failure;
    }
};

}  // namespace vorlane
