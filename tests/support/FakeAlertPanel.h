// A dialog that stays open until the user in the test answers it.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "App/services/AlertPanel.h"

namespace vorlane {

class FakeAlertPanel : public AlertPanel {
public:
    std::optional<AlertPanelContent> open;

    void runModal(const AlertPanelContent& content, std::function<void(std::size_t)> next) override
    {
        open = content;
        answered = std::move(next);
    }

    // The user presses the button `title`. False when no open dialog has such a button.
    bool press(const std::string& title)
    {
        if (!open) return false;
        const auto button = std::ranges::find(open->buttons, title, &AlertButton::title);
        if (button == open->buttons.end()) return false;

        const auto index = std::distance(open->buttons.begin(), button);
        open.reset();
        std::exchange(answered, nullptr)(static_cast<std::size_t>(index));
        return true;
    }

private:
    std::function<void(std::size_t)> answered;
};

}  // namespace vorlane
