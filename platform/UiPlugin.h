// What the resident program and the plugin with its windows know of each other. The plugin is
// opened when the first window is shown and stays for the life of the process.
#pragma once

#include <cstdint>
#include <optional>

#include "App/services/AlertPanel.h"
#include "App/services/Windows.h"

namespace vorlane::platform {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Rgb&, const Rgb&) = default;
};

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

    // Readable when there may be something to dispatch.
    virtual int descriptor() const = 0;

    // Dispatches one thing that is due, without waiting. False when nothing was, and when the
    // call comes from inside something that is being dispatched.
    virtual bool step() = 0;
};

// Every operation may be called while the resident loop dispatches: what opens, changes or closes
// a window does so on a later turn of the plugin's own loop.
class UiPlugin : public Windows, public AlertPanel {
public:
    // Drives both loops until `leave`.
    virtual void exec() = 0;
    virtual void leave() = 0;

    virtual void setAppearance(const Appearance& appearance) = 0;
};

struct UiHost {
    const char* build;  // must be the plugin's own
    DrivenLoop& loop;
    Appearance appearance;
};

// What the plugin exports by the name "vorlaneUi". Null when the plugin is of another build, or
// no display can be reached. The plugin keeps what it returns.
using UiEntry = UiPlugin*(const UiHost& host);

}  // namespace vorlane::platform
