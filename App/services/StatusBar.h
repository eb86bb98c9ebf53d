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

    // Called when the item is clicked.
    virtual void onAction(std::function<void()> callback) = 0;

    // Called when a menu item is chosen.
    virtual void onMenu(std::function<void(MenuAction)> callback) = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;

    // Creates the item on the first call and keeps it. Null when that fails.
    virtual StatusItem* statusItem() = 0;
};

}  // namespace vorlane
