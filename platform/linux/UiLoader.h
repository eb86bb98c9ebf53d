// The program's windows, dialogs and menu, which are a plugin's: it is loaded when the first one is
// shown, and from then on its loop drives ours.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/Date.h"
#include "App/services/AlertPanel.h"
#include "App/services/Windows.h"
#include "platform/UiPlugin.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/SdEventDrivenLoop.h"
#include "platform/linux/SdEventRunLoop.h"

namespace vorlane::platform {

// Where no plugin can be loaded, windows do not show and dialogs are answered by their cancel
// button. Each asking tries again: the display or the plugin may have come meanwhile.
class UiLoader : public Windows, public AlertPanel {
public:
    struct Origin {
        std::string plugin;  // the path of its file
        sd_bus* session;     // tells how windows are to look, once there are some; may be null
        std::function<void()> refused = [] {};  // told of each plugin that is not ours
        Seconds patience{2};  // with a display that takes its time; the program waits meanwhile
    };

    // The loop and the session's bus outlive this object, which outlives what it makes.
    UiLoader(SdEventRunLoop& loop, Origin origin);

    std::unique_ptr<Popover> makePopover(PopoverIntents intents) override;
    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                       SettingsIntents intents) override;
    void runModal(const AlertPanelContent& content,
                  std::function<void(std::size_t button)> answered) override;

    // At the pointer; nothing where no window can be shown.
    void popUpMenu(const std::vector<MenuItem>& items, std::function<void(MenuAction)> chosen);

    // Loads the plugin unless it is loaded; null when it cannot be.
    UiPlugin* plugin();

private:
    bool displayHangs() const;

    SdEventRunLoop& loop_;
    SdEventDrivenLoop driven;
    Origin origin_;
    UiEntry* entry = nullptr;
    UiPlugin* loaded = nullptr;
    std::optional<PortalAppearance> appearance;
};

}  // namespace vorlane::platform
