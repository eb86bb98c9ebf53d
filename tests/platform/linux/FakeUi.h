// A plugin without windows: it notes what it is asked for, and drives the loop with poll().
#pragma once

#include <string>
#include <vector>

#include "platform/UiPlugin.h"

namespace vorlane::platform {

// The plugin's own, shared with the test that loaded it.
struct FakeUi {
    bool displayAnswers = true;
    int entries = 0;  // calls of the entry
    std::vector<std::string> events;
};

// Exported beside the entry.
using FakeUiAccess = FakeUi*();
constexpr const char* fakeUiName = "fakeUi";

}  // namespace vorlane::platform
