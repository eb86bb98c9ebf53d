// The symbols that the program ships: icons of a theme.
#pragma once

#include <string>

namespace vorlane::platform {

class SymbolIcons {
public:
    // In share/icons beside the folder of the running program, installed or in its build tree.
    SymbolIcons();

    // The folder of icon themes; empty when there is none.
    const std::string& themePath() const { return themePath_; }

    bool hasSymbol(const std::string& name) const;

    // "battery.100.bolt" is drawn by "vorlane-battery-100-bolt-symbolic".
    std::string iconName(const std::string& symbol) const;

private:
    std::string themePath_;
};

}  // namespace vorlane::platform
