// The tray item's menu on D-Bus: the object of com.canonical.dbusmenu.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "App/content/StatusItemContent.h"
#include "App/services/RunLoop.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/tray/MenuLayout.h"

namespace vorlane::platform {

// Exported at `path` on construction; empty until the first `show`.
class StatusMenu {
public:
    static constexpr const char* path = "/StatusNotifierItem/Menu";

    // The session bus must outlive this object.
    StatusMenu(sd_bus* session, RunLoop& loop);

    // Emits signals only for differences.
    void show(const std::vector<MenuItem>& items);

    // Called on a later turn of the loop, never inside a bus call. Repeated choices of an entry
    // count once per turn.
    void onMenu(std::function<void(MenuAction)> callback);

private:
    void announceLabels(const MenuLayout& before);
    bool handle(std::int32_t id, std::string_view event);

    int getLayout(sd_bus_message* call);
    int getGroupProperties(sd_bus_message* call);
    int getProperty(sd_bus_message* call);
    int event(sd_bus_message* call);
    int eventGroup(sd_bus_message* call);
    int aboutToShow(sd_bus_message* call);
    int aboutToShowGroup(sd_bus_message* call);

    static const sd_bus_vtable vtable[];

    sd_bus* session_;
    RunLoop& loop_;
    MenuLayout layout;
    std::uint32_t revision = 1;  // of the layout's shape
    struct Choices {
        std::function<void(MenuAction)> callback = [](MenuAction) {};
        std::set<MenuAction> pending;  // called back on the next turn
    };
    std::shared_ptr<Choices> choices = std::make_shared<Choices>();
    SlotPointer object;
};

}  // namespace vorlane::platform
