#pragma once

#include <memory>

#include "App/content/PopoverContent.h"
#include "App/content/SettingsContent.h"

namespace vorlane {

// The panel that belongs to the status item. It closes when its user turns elsewhere.
class Popover {
public:
    virtual ~Popover() = default;

    // Still true for the moment in which the press that closed the popover may also be reported
    // as a click on the status item.
    virtual bool isShown() const = 0;

    // Opens at the status item; brings a popover that is open to the front. Gives it the keyboard.
    // Does nothing where no window can be shown.
    virtual void show(const PopoverContent& content) = 0;

    // Shows newer content; the popover must be shown.
    virtual void update(const PopoverContent& content) = 0;

    virtual void performClose() = 0;
};

// A titled, closable window of fixed size. Closing only hides it.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;

    virtual bool isShown() const = 0;

    // Shows the window, in the middle of the screen the first time, and gives it the keyboard.
    virtual void makeKeyAndOrderFront(const SettingsContent& content) = 0;

    // Shows newer content; the window must be shown.
    virtual void update(const SettingsContent& content) = 0;
};

struct SettingsWindowFrame {
    const char* title;
    int width;   // of the content, in device-independent pixels
    int height;  // likewise
};

// Makes the program's windows. Nothing is started before the first one is shown.
class Windows {
public:
    virtual ~Windows() = default;

    virtual std::unique_ptr<Popover> makePopover(PopoverIntents intents) = 0;
    virtual std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                               SettingsIntents intents) = 0;
};

}  // namespace vorlane
