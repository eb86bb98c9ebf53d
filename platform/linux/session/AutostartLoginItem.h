// Starts Vorlane with the session through XDG autostart files: a file in the user's folder
// overrides those of the same name in the system's folders.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "App/services/LoginItem.h"
#include "platform/linux/session/DesktopEntry.h"

namespace vorlane::platform {

class AutostartLoginItem : public LoginItem {
public:
    struct Places {
        std::string own;                    // the user's file; empty without a home folder
        std::vector<std::string> systems;   // the system's files; the first that exists counts
        std::string program;                // the path of the program to start
        std::vector<std::string> desktops;  // the names of the session's desktop

        // From the environment and the path of the running program. Call it before an upgrade can
        // replace the program's file.
        static Places usual();
    };
    explicit AutostartLoginItem(Places places);

    // Reads the files each time.
    bool enabled() const override;

    // Edits a file that the user has changed instead of replacing or removing it.
    std::optional<std::string> setEnabled(bool on) override;

private:
    bool starts(const DesktopEntry& entry) const;
    bool isForThisDesktop(const DesktopEntry& entry) const;
    bool startsBySystem() const;
    bool startsBy(const std::optional<DesktopEntry>& own) const;
    bool isOurs(DesktopEntry entry) const;
    DesktopEntry fresh() const;
    void setProgram(DesktopEntry& entry) const;
    std::optional<std::string> turnOn(DesktopEntry entry) const;
    std::optional<std::string> turnOff(DesktopEntry entry) const;

    Places places_;
};

}  // namespace vorlane::platform
