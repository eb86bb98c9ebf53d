// A tray with one status item, and the user who clicks it.
#pragma once

#include <algorithm>
#include <set>
#include <utility>

#include "App/services/StatusBar.h"

namespace vorlane {

class FakeStatusItem : public StatusItem {
public:
    std::set<std::string> symbols{"battery.0",   "battery.25",       "battery.50",    "battery.75",
                                  "battery.100", "battery.100.bolt", "powerplug.fill"};
    StatusItemContent content;  // what it shows now
    int drawings = 0;

    bool hasSymbol(const std::string& name) const override { return symbols.contains(name); }

    void show(const StatusItemContent& next) override
    {
        content = next;
        ++drawings;
    }

    void onAction(std::function<void()> callback) override { clicked = std::move(callback); }
    void onMenu(std::function<void(MenuAction)> callback) override { chosen = std::move(callback); }

    void click() const
    {
        if (clicked) clicked();
    }

    // The user chooses the menu line `title`. False when the menu has no such line.
    bool choose(const std::string& title) const
    {
        const auto line = std::ranges::find(content.menu, title, &MenuItem::title);
        if (line == content.menu.end() || !chosen) return false;
        chosen(line->action);
        return true;
    }

private:
    std::function<void()> clicked;
    std::function<void(MenuAction)> chosen;
};

class FakeStatusBar : public StatusBar {
public:
    FakeStatusItem item;
    bool hasRoom = true;

    StatusItem* statusItem() override { return hasRoom ? &item : nullptr; }
};

}  // namespace vorlane
