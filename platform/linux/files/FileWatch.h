// Tells when a file may have changed: written, replaced, removed or come back, and also when its
// folder goes or comes. A link to a file is watched at both ends; what is no file, as a device that
// others write to all the time, is not. It does not look into the file.
#pragma once

#include <sys/inotify.h>

#include <functional>
#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

class FileWatch {
public:
    // Calls `changed` on a later turn of the loop, once for what happened together.
    FileWatch(sd_event* event, std::string path, std::function<void()> changed);

    // False while the system grants no watch.
    bool watches() const { return watch_ != nullptr; }

    // Asks the system once more.
    void renew();

private:
    void watchNearestFolder();
    void watchTarget();
    EventSourcePointer watchFolderOf(const std::string& entry);
    static int onChange(sd_event_source* source, const inotify_event* change, void* self);
    static int onTurn(sd_event_source* source, void* self);

    sd_event* event_;
    std::string path;
    std::function<void()> changed;
    std::string awaited;  // what must change in the watched folder: the file, or a folder above it
    std::string target;   // what the file is a link to; empty while it is none
    EventSourcePointer watch_;
    EventSourcePointer targetWatch_;
    EventSourcePointer turn_;
};

}  // namespace vorlane::platform
