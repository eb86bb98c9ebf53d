// The status item's menu as trays read it and choose from it: the object of com.canonical.dbusmenu.
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

// Offered at `path` from the start, empty until the first `show`.
class StatusMenu {
public:
    static constexpr const char* path = "/StatusNotifierItem/Menu";

    // The session bus outlives this object.
    StatusMenu(sd_bus* session, RunLoop& loop);

    // Tells the trays what differs; nothing when nothing does.
    void show(const std::vector<MenuItem>& items);

    // A line was chosen, however often since the last turn. Called on a turn of the loop of its
    // own, never inside a bus call.
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
        std::function<void(MenuAction)> told = [](MenuAction) {};
        std::set<MenuAction> waiting;  // for their turn of the loop
    };
    std::shared_ptr<Choices> choices = std::make_shared<Choices>();
    SlotPointer object;
};

}  // namespace vorlane::platform
