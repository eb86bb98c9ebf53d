// The item as an icon in an X tray: asks whether the display answers, loads the plugin that speaks
// X, serves it in the main loop, and gives it what to show.
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

// Nothing is loaded before `open`. Whether there is a tray on the display, and which, is the
// plugin's: it follows them as they come and go.
class XTrayItem {
public:
    // Opens a menu at the pointer, and tells what was chosen in it.
    using MenuOpener =
        std::function<void(const std::vector<MenuItem>&, std::function<void(MenuAction)> chosen)>;

    struct Dependencies {
        std::string plugin;  // the path of its file
        std::string socket;  // of the display's server
        MenuOpener openMenu;
    };

    // The loop outlives this object.
    XTrayItem(SdEventRunLoop& loop, Dependencies dependencies);
    XTrayItem(const XTrayItem&) = delete;
    XTrayItem& operator=(const XTrayItem&) = delete;
    ~XTrayItem();

    // Where the display does not answer nothing is seen, and it counts as lost.
    void open();
    void close();

    void show(const StatusItemContent& fresh);

    // Called on a turn of the loop of its own.
    void onAction(std::function<void()> callback) { *action = std::move(callback); }
    void onMenu(std::function<void(MenuAction)> callback) { *chosen = std::move(callback); }

    // The display has gone since `open`, or was not there. Not called by `open` itself.
    void onLost(std::function<void()> callback) { lost = std::move(callback); }

private:
    void answered(bool answers);
    void check(bool alive);
    void loseSoon();
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
    Subscription losing;
};

}  // namespace vorlane::platform
