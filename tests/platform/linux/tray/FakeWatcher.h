// A fake org.kde.StatusNotifierWatcher, the desktop's registry of tray items.
#pragma once

#include <cerrno>
#include <string>
#include <vector>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

class FakeWatcher {
public:
    static constexpr const char* name = "org.kde.StatusNotifierWatcher";
    static constexpr const char* path = "/StatusNotifierWatcher";

    std::vector<std::string> items;  // in the order of registration
    int refusals = 0;                // how many more registrations to reject
    bool silent = false;             // registrations are never answered
    bool hostComesAtOnce = false;    // the host registers before a registration is answered

    explicit FakeWatcher(sd_bus* connection)
        : connection_(connection), object(owned<SlotPointer>([this](sd_bus_slot** slot) {
              return sd_bus_add_object_vtable(connection_, slot, path, name, vtable, this);
          }))
    {}

    void appear() { (void)sd_bus_request_name(connection_, name, 0); }
    void vanish() { (void)sd_bus_release_name(connection_, name); }
    void hostComes()
    {
        (void)sd_bus_emit_signal(connection_, path, name, "StatusNotifierHostRegistered", "");
    }

private:
    int registered(sd_bus_message* call)
    {
        const char* item = nullptr;
        if (sd_bus_message_read(call, "s", &item) < 0) return -EINVAL;
        items.emplace_back(item);
        if (hostComesAtOnce) hostComes();
        if (silent) return 1;
        if (refusals-- > 0) return -EAGAIN;
        return sd_bus_reply_method_return(call, "");
    }

    static inline const sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "",
                      (onCall<FakeWatcher, &FakeWatcher::registered>), SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
        SD_BUS_VTABLE_END,
    };

    sd_bus* connection_;
    SlotPointer object;
};

}  // namespace vorlane::platform
