// One alert that is due, with its texts.
#pragma once

#include <string>

#include "App/AlertKind.h"

namespace vorlane {

struct PendingAlert {
    AlertKind kind{};
    std::string title;
    std::string body;

    friend bool operator==(const PendingAlert&, const PendingAlert&) = default;
};

}  // namespace vorlane
