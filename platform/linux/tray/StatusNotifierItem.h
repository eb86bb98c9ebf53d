// The tray item on D-Bus: the object of org.kde.StatusNotifierItem.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "App/services/RunLoop.h"
#include "App/services/StatusBar.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/tray/StatusMenu.h"
#include "platform/linux/tray/TrayFace.h"
#include "platform/linux/tray/TrayHost.h"
#include "platform/linux/tray/TrayRegistration.h"
#include "platform/linux/tray/icon/SymbolMask.h"

namespace vorlane::platform {

class StatusNotifierItem : public StatusItem {
public:
    // Registers with the tray at once. The tray reads the content on a later turn of the loop; call
    // `show` before that. The session bus must outlive this object.
    StatusNotifierItem(sd_bus* session, RunLoop& loop);

    bool hasSymbol(const std::string& name) const override { return hasSymbolMask(name); }
    // Emits signals only for differences.
    void show(const StatusItemContent& fresh) override;
    void onAction(std::function<void()> callback) override { *action = std::move(callback); }
    void onMenu(std::function<void(MenuAction)> callback) override
    {
        menu.onMenu(std::move(callback));
    }

    // Call when the tray may have dropped the item, as after sleep.
    void registerAgain() { registration.registerAgain(); }
    void onWatcher(std::function<void(bool present)> callback)
    {
        registration.onWatcher(std::move(callback));
    }

private:
    using Action = std::function<void()>;

    void showContent();
    void announce(const TrayFace& before);
    void redraw() const;
    void emit(const char* signal) const;
    std::string text(std::string_view property) const;
    int activate(sd_bus_message* call);

    static int getText(sd_bus* bus, const char* path, const char* interface, const char* property,
                       sd_bus_message* reply, void* self, sd_bus_error* error);
    static int getPixmaps(sd_bus* bus, const char* path, const char* interface,
                          const char* property, sd_bus_message* reply, void* self,
                          sd_bus_error* error);
    static int getToolTip(sd_bus* bus, const char* path, const char* interface,
                          const char* property, sd_bus_message* reply, void* self,
                          sd_bus_error* error);

    static const sd_bus_vtable vtable[];

    sd_bus* session_;
    RunLoop& loop_;
    std::string themePath;  // empty when no icon themes are installed
    StatusMenu menu;
    StatusItemContent content;
    std::shared_ptr<Action> action;
    SlotPointer object;
    TrayFace face;
    bool shown = false;
    TrayHost host;  // before `registration`: the kind must be known when the tray reads the item
    TrayRegistration registration;
};

}  // namespace vorlane::platform
