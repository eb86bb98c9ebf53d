#pragma once

#include <memory>

#include "App/content/PopoverContent.h"
#include "App/content/SettingsContent.h"

namespace vorlane {

// The panel at the status item. It closes when it loses the focus.
class Popover {
public:
    virtual ~Popover() = default;

    // Stays true briefly after a mouse press closes the popover, because the same press may also be
    // reported as a click on the status item.
    virtual bool isShown() const = 0;

    // Opens the popover at the status item, or raises an open one, and gives it the keyboard focus.
    // Does nothing when no window can be shown.
    virtual void show(const PopoverContent& content) = 0;

    // Call it only while the popover is shown.
    virtual void update(const PopoverContent& content) = 0;

    virtual void performClose() = 0;
};

// A titled, closable window of fixed size. Closing only hides it.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;

    virtual bool isShown() const = 0;

    // Shows the window, centred the first time, and gives it the keyboard focus.
    virtual void makeKeyAndOrderFront(const SettingsContent& content) = 0;

    // Call it only while the window is shown.
    virtual void update(const SettingsContent& content) = 0;
};

// The size is that of the content, in device-independent pixels.
struct SettingsWindowFrame {
    const char* title;
    int width;
    int height;
};

// Creates the program's windows. Starts no process before the first window is shown.
class Windows {
public:
    virtual ~Windows() = default;

    virtual std::unique_ptr<Popover> makePopover(PopoverIntents intents) = 0;
    virtual std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                               SettingsIntents intents) = 0;
};

}  // namespace vorlane
