// What the status item shows: all that a tray needs to know.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorlane {

enum class ImagePosition { imageOnly, imageLeading };

// What choosing a line of the status item's menu asks for.
enum class MenuAction { none, open, snooze, cancelSnooze, settings, quit };

// One line of the menu; a line without an action only informs.
struct MenuItem {
    MenuAction action = MenuAction::none;
    std::string title;  // empty: a separator

    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

struct StatusItemContent {
    std::optional<std::string> symbol;     // absent: no image
    std::string accessibilityDescription;  // what a screen reader says of the item
    ImagePosition imagePosition = ImagePosition::imageOnly;
    std::string title;  // empty, or a space and the text
    // What the title shows, for trays that draw or measure it.
    std::optional<std::int64_t> percent;
    std::optional<std::string> time;  // "1:23"
    std::string toolTip;
    std::vector<MenuItem> menu;
    bool needsAttention = false;  // the battery is low

    friend bool operator==(const StatusItemContent&, const StatusItemContent&) = default;
};

}  // namespace vorlane
