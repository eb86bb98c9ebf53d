// The shell around the model: launch, the status item, the two windows, quit.
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
    StatusItem* statusItem = nullptr;                // made at launch
    std::unique_ptr<Popover> popover;                // likewise
    std::unique_ptr<SettingsWindow> settingsWindow;  // made when it is first opened, then kept
    std::vector<Subscription> bag;

    explicit AppDelegate(const Services& services);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // Opens the popover, or closes it.
    void togglePopover();

    // Shows the popover with a fresh reading, before all other windows.
    void openPopover();

    // Shows the settings in the place of the popover.
    void openSettings();

    // Shows the model's state and the settings as they are now.
    void updateStatusItem();

private:
    void withdrawSituations();
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
    bool windowsAreStale = false;  // an update is due on the next turn
    Services services_;
};

}  // namespace vorlane
