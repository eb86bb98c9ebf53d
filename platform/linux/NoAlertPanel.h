// No dialogs: outside a sandbox the desktop asks nobody's permission to notify, so the one dialog
// that the program has cannot come up; should it be asked for, it is declined.
#pragma once

#include "App/services/AlertPanel.h"

namespace vorlane::platform {

class NoAlertPanel : public AlertPanel {
public:
    void runModal(const AlertPanelContent& content,
                  std::function<void(std::size_t button)> answered) override
    {
        if (!content.buttons.empty()) answered(content.buttons.size() - 1);
    }
};

}  // namespace vorlane::platform
