// The tray item as an X icon: probes the display, loads the plugin that speaks X, runs it in the
// main loop and passes it the pictures to show.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/content/StatusItemContent.h"
#include "platform/XTrayPlugin.h"
#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/tray/XDisplayProbe.h"

namespace vorlane::platform {

// Loads nothing before `open`. The plugin follows the display's trays as they come and go.
class XTrayItem {
public:
    // Opens a menu at the pointer and calls `chosen` with the action that the user chose.
    using MenuOpener =
        std::function<void(const std::vector<MenuItem>&, std::function<void(MenuAction)> chosen)>;

    struct Dependencies {
        std::string plugin;  // path of the plugin's file
        std::string socket;  // path of the X server's socket
        MenuOpener openMenu;
    };

    // The loop must outlive this object.
    XTrayItem(SdEventRunLoop& loop, Dependencies dependencies);
    XTrayItem(const XTrayItem&) = delete;
    XTrayItem& operator=(const XTrayItem&) = delete;
    ~XTrayItem();

    // Shows nothing while the display does not answer; a display that hangs up counts as lost.
    void open();
    void close();

    void show(const StatusItemContent& fresh);

    // Called on a later turn of the loop.
    void onAction(std::function<void()> callback) { *action = std::move(callback); }
    void onMenu(std::function<void(MenuAction)> callback) { *chosen = std::move(callback); }

    // Called when the display has gone or cannot be reached, but never from within `open`.
    void onLost(std::function<void()> callback) { lost = std::move(callback); }

private:
    void answered(bool answers);
    void check(bool alive);
    void reportLost();
    XTrayHost host();
    void clicked();
    void menuWanted();
    static int readable(sd_event_source* source, int descriptor, std::uint32_t events, void* self);

    SdEventRunLoop& loop_;
    Dependencies dependencies_;
    StatusItemContent content;
    std::shared_ptr<std::function<void()>> action;
    std::shared_ptr<std::function<void(MenuAction)>> chosen;
    std::function<void()> lost = [] {};
    std::optional<XDisplayProbe> probe;
    XTrayEntry* entry = nullptr;
    std::unique_ptr<XTray> tray;
    EventSourcePointer source;
    Subscription lossReport;
};

}  // namespace vorlane::platform
