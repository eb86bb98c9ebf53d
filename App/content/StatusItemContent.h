// What the status item shows: symbol, title, tooltip and menu.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlane {

enum class ImagePosition { imageOnly, imageLeading };

// What a menu item of the status item does.
enum class MenuAction { none, open, snooze, cancelSnooze, settings, quit };

// One entry of the menu. With the action `none`, it is plain text or a separator.
struct MenuItem {
    MenuAction action = MenuAction::none;
    std::string title;  // empty: a separator

    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

struct StatusItemContent {
    std::optional<std::string> symbol;     // absent: no image
    std::string accessibilityDescription;  // for screen readers
    ImagePosition imagePosition = ImagePosition::imageOnly;
    std::string title;  // empty, or a space and the text
    // The parts of the title, for trays that draw or measure them.
    std::optional<std::int64_t> percent;
    std::optional<std::string> time;  // "1:23"
    std::string toolTip;
    std::vector<MenuItem> menu;
    bool needsAttention = false;  // the battery is low

    friend bool operator==(const StatusItemContent&, const StatusItemContent&) = default;
};

}  // namespace vorlane
