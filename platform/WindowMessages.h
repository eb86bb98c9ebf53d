// The messages between the resident program and the process that shows its windows.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "App/content/AlertPanelContent.h"
#include "App/content/PopoverContent.h"
#include "App/content/SettingsContent.h"
#include "App/content/StatusItemContent.h"
#include "platform/Appearance.h"
#include "platform/Wire.h"

namespace vorlane::platform {

// Messages to the windows process. `opening` counts how often a window was shown, so that a late
// close report for an earlier opening is ignored.
struct ShowPopover {
    PopoverContent content;
    std::string token;  // for XDG activation, on X11 the startup id; may be empty
    std::uint64_t opening = 0;
};
struct UpdatePopover {
    PopoverContent content;
};
struct ClosePopover {
    std::string token;  // used up by the closing, or GNOME shows a busy pointer until it expires
};
struct ShowSettings {
    std::string title;
    int width = 0;
    int height = 0;
    SettingsContent content;
    std::string token;
    std::uint64_t opening = 0;
};
struct UpdateSettings {
    SettingsContent content;
};
struct Ask {
    std::int64_t id = 0;
    AlertPanelContent content;
};
struct PopUpMenu {
    std::vector<MenuItem> items;
};
using ToWindows = std::variant<Appearance, ShowPopover, UpdatePopover, ClosePopover, ShowSettings,
                               UpdateSettings, Ask, PopUpMenu>;

// Messages from the windows process.
struct PopoverClosed {
    std::uint64_t opening = 0;
    bool byPress = false;  // a press outside the popover may have closed it
};
struct SettingsClosed {
    std::uint64_t opening = 0;
};
struct OpenSettings {};
struct Quit {};
struct CancelSnooze {};
struct SelectRange {
    std::int64_t range = 0;
};
struct SetSetting {
    std::string key;
    std::variant<bool, std::int64_t, TimeOfDay, std::string> value;  // a string is a sound's name
};
struct SetLaunchAtLogin {
    bool on = false;
};
struct ResetHistory {};
struct Answered {
    std::int64_t id = 0;
    std::uint64_t button = 0;
};
struct Chosen {
    MenuAction action = MenuAction::none;
};
struct Idle {};  // no window has been visible for a while
struct Handled {
    std::uint64_t messages = 0;  // handled since the process was started
};
using FromWindows =
    std::variant<PopoverClosed, SettingsClosed, OpenSettings, Quit, CancelSnooze, SelectRange,
                 SetSetting, SetLaunchAtLogin, ResetHistory, Answered, Chosen, Idle, Handled>;

namespace wire {

template <>
inline constexpr Appearance::Scheme last<Appearance::Scheme> = Appearance::Scheme::light;
template <>
inline constexpr ButtonRole last<ButtonRole> = ButtonRole::cancel;
template <>
inline constexpr Color last<Color> = Color::red;
template <>
inline constexpr MenuAction last<MenuAction> = MenuAction::quit;

}  // namespace wire

// Exit code of a windows process whose build differs from the resident program's.
constexpr int otherBuildExit = 3;

// File descriptor of the socket in the windows process.
constexpr int windowsSocket = 3;

}  // namespace vorlane::platform
