// Starting with the session, by the desktops' autostart folders: a file in the user's own stands
// before those of the same name in the system's.
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
        std::string own;                    // the user's file; empty when there is no home
        std::vector<std::string> systems;   // the system's files, the first before the others
        std::string program;                // what to start
        std::vector<std::string> desktops;  // which the session calls itself

        // From the environment and the running program, which an upgrade may replace later.
        static Places usual();
    };
    explicit AutostartLoginItem(Places places);

    // What the files say now.
    bool enabled() const override;

    // Keeps what the user wrote into the file: a file that is not as we make it is changed, not
    // removed.
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
