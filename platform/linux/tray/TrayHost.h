// Knows the kind of the desktop's tray, also when another one takes its place.
#pragma once

#include <functional>
#include <string_view>

#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace vorlane::platform {

// The kind of a tray by its process's name in /proc/PID/comm, which is cut after 15 letters.
TrayKind trayKind(std::string_view process);

// Asks the bus for the process that owns org.kde.StatusNotifierWatcher, now and for each new owner.
class TrayHost {
public:
    // Calls `changed` from the loop when the kind has become another one. The bus outlives this
    // object.
    TrayHost(sd_bus* session, std::function<void()> changed);

    // `labels` until the bus has told of a tray; of one that has gone, what it was.
    TrayKind kind() const { return kind_; }

private:
    void watcherChanged(const char* owner);
    void ask(const char* owner);
    void answered(sd_bus_message* reply);

    sd_bus* session_;
    std::function<void()> changed_;
    TrayKind kind_ = TrayKind::labels;
    NameWatch watcher;
    SlotPointer question;
};

}  // namespace vorlane::platform
