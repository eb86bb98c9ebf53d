// Finds out the kind of the desktop's tray, again whenever the tray is replaced.
#pragma once

#include <functional>
#include <string_view>

#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace vorlane::platform {

// `process` is as in /proc/PID/comm, which the kernel cuts after 15 characters.
TrayKind trayKind(std::string_view process);

// Asks the bus for the process that owns org.kde.StatusNotifierWatcher, on construction and for
// each new owner.
class TrayHost {
public:
    // `changed` is called from the loop when the kind has changed. The bus must outlive this
    // object.
    TrayHost(sd_bus* session, std::function<void()> changed);

    // `labels` before the first tray is found; the last tray's kind while there is none.
    TrayKind kind() const { return kind_; }

private:
    void watcherChanged(const char* owner);
    void ask(const char* owner);
    void answered(sd_bus_message* reply);

    sd_bus* session_;
    std::function<void()> changed_;
    TrayKind kind_ = TrayKind::labels;
    NameWatch watcher;
    SlotPointer request;
};

}  // namespace vorlane::platform
