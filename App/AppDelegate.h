// Connects the model to the status item and the two windows, and handles launch and quit.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "App/AppModel.h"
#include "App/PopoverView.h"
#include "App/SettingsView.h"
#include "App/Subscription.h"
#include "App/content/StatusItemContent.h"
#include "App/services/Services.h"

namespace vorlane {

class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    std::shared_ptr<AppModel> model;
    StatusItem* statusItem = nullptr;                // created at launch
    std::unique_ptr<Popover> popover;                // created at launch
    std::unique_ptr<SettingsWindow> settingsWindow;  // created when first opened, then kept
    std::vector<Subscription> bag;

    explicit AppDelegate(const Services& services);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    void togglePopover();

    // Reads the battery, then shows the popover in front of all other windows.
    void openPopover();

    // Closes the popover and shows the settings window.
    void openSettings();

    // Redraws the status item from the current state and settings.
    void updateStatusItem();

private:
    void withdrawReminders();
    void makeStatusItem();
    void makePopover();
    void makeSettingsWindow();
    void subscribe();
    void perform(MenuAction action);
    void updateWindowsSoon();
    void updateWindows();
    bool settingsAreShown() const;
    std::function<void()> weakly(void (AppDelegate::*operation)());

    std::shared_ptr<PopoverView> popoverView;
    std::shared_ptr<SettingsView> settingsView;
    bool windowsAreStale = false;  // an update is pending for the next turn
    Services services_;
};

}  // namespace vorlane
