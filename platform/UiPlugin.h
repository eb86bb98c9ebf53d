// What the resident program and the plugin with its windows know of each other. The plugin is
// opened when the first window is shown and stays for the life of the process.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "App/content/StatusItemContent.h"
#include "App/services/AlertPanel.h"
#include "App/services/Windows.h"
#include "platform/Rgb.h"

namespace vorlane::platform {

// How the user wants windows to look, as the desktop's settings portal tells it.
struct Appearance {
    enum class Scheme { noPreference, dark, light };

    Scheme scheme = Scheme::noPreference;
    std::optional<Rgb> accent;

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

// The resident program's event loop, while the plugin's own loop drives it. One thread, and one
// driver at a time.
class DrivenLoop {
public:
    virtual ~DrivenLoop() = default;

    enum class Step {
        dispatched,
        idle,    // nothing is due; whatever was asked for until now is being watched
        nested,  // the call comes from inside something that is being dispatched
    };

    // Readable when there may be something to dispatch.
    virtual int descriptor() const = 0;

    // Dispatches one thing that is due, without waiting. What the loop's own users ask for
    // between two steps becomes visible to `descriptor` only by the next step.
    virtual Step step() = 0;
};

// Every operation may be called while the resident loop dispatches: what opens, changes or closes
// a window does so on a later turn of the plugin's own loop.
class UiPlugin : public Windows, public AlertPanel {
public:
    // Drives both loops until `leave`, or until the display's session ends.
    virtual void exec() = 0;
    virtual void leave() = 0;

    virtual void setAppearance(const Appearance& appearance) = 0;

    // Opens the status item's menu at the pointer, for trays that open none themselves. Closed
    // without a choice it answers nothing.
    virtual void popUpMenu(const std::vector<MenuItem>& items,
                           std::function<void(MenuAction)> chosen) = 0;
};

struct UiHost {
    std::string_view build;  // must be the plugin's own
    DrivenLoop& loop;

    // The display has gone, and the process ends at once without running its exit handlers.
    void (*displayLost)();
};

// What the plugin exports by the name "vorlaneUi". Null when the plugin is of another build, or
// no display can be reached now; a later call may find one. The plugin keeps what it returns.
using UiEntry = UiPlugin*(const UiHost& host);
constexpr const char* uiEntryName = "vorlaneUi";

}  // namespace vorlane::platform
