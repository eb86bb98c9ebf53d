#pragma once

#include <functional>
#include <string>

#include "App/content/StatusItemContent.h"

namespace vorlane {

// The program's item in the desktop's tray.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual bool hasSymbol(const std::string& name) const = 0;
    virtual void show(const StatusItemContent& content) = 0;

    // The item itself was clicked.
    virtual void onAction(std::function<void()> callback) = 0;

    // A line of its menu was chosen.
    virtual void onMenu(std::function<void(MenuAction)> callback) = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;

    // Makes the item on the first call; the bar owns it. Null when it cannot be made.
    virtual StatusItem* statusItem() = 0;
};

}  // namespace vorlane
