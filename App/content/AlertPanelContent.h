// A question to the user in a modal dialog.
#pragma once

#include <string>
#include <vector>

namespace vorlane {

struct AlertPanelContent {
    std::string message;
    std::string informativeText;
    std::vector<std::string> buttons;  // the first is the default
};

}  // namespace vorlane
