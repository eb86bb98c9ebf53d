#pragma once

#include <cstddef>
#include <functional>

#include "App/content/AlertPanelContent.h"

namespace vorlane {

// Modal dialogs.
class AlertPanel {
public:
    virtual ~AlertPanel() = default;

    // Calls `answered` on the main thread with the index of the chosen button. It does not wait:
    // on a platform whose event loop cannot be nested the dialog runs after this call returns.
    virtual void runModal(const AlertPanelContent& content,
                          std::function<void(std::size_t button)> answered) = 0;
};

}  // namespace vorlane
