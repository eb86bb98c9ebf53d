#pragma once

#include <cstddef>
#include <functional>

#include "App/content/AlertPanelContent.h"

namespace vorlane {

// Modal dialogs.
class AlertPanel {
public:
    virtual ~AlertPanel() = default;

    // Calls `answered` on the main thread with the index of the chosen button. This may return
    // before the dialog is shown.
    virtual void runModal(const AlertPanelContent& content,
                          std::function<void(std::size_t button)> answered) = 0;
};

}  // namespace vorlane
