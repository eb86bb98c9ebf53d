// Reports that a file, or its folder, may have been written, replaced, removed or created. Also
// watches the file that a symbolic link leads to, unless it is a device, which other processes may
// write to all the time. Reading the file is left to the callback.
#pragma once

#include <sys/inotify.h>

#include <functional>
#include <string>

#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

class FileWatch {
public:
    // Calls `changed` on a later turn of the loop, once for all events that arrived together.
    FileWatch(sd_event* event, std::string path, std::function<void()> changed);

    // False when the system granted no watch; call `renew` to retry.
    bool isWatching() const { return watch_ != nullptr; }

    void renew();

private:
    void watchNearestFolder();
    void watchTarget();
    EventSourcePointer watchFolderOf(const std::string& entry);
    static int onChange(sd_event_source* source, const inotify_event* change, void* self);
    static int onDeferred(sd_event_source* source, void* self);

    sd_event* event_;
    std::string path;
    std::function<void()> changed;
    std::string awaited;  // the entry to wait for: the file, or the first missing folder above it
    std::string target;   // the file that `path` links to; empty if it links to none
    EventSourcePointer watch_;
    EventSourcePointer targetWatch_;
    EventSourcePointer deferred_;
};

}  // namespace vorlane::platform
