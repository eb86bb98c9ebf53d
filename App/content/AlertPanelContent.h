// A question to the user in a modal dialog.
#pragma once

#include <string>
#include <vector>

namespace vorlane {

enum class ButtonRole { standard, destructive, cancel };

struct AlertButton {
    std::string title;
    ButtonRole role = ButtonRole::standard;

    friend bool operator==(const AlertButton&, const AlertButton&) = default;
};

struct AlertPanelContent {
    std::string message;
    std::string informativeText;
    std::vector<AlertButton> buttons;  // the first is the default, unless it is destructive
};

}  // namespace vorlane
