#include "platform/linux/files/FileWatch.h"

#include <unistd.h>

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/files/Files.h"

namespace vorlane::platform {

namespace {

constexpr std::uint32_t goneMask = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t watchMask = IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM |
                                    IN_DELETE | IN_ATTRIB | goneMask | IN_ONLYDIR;
constexpr std::uint32_t lostMask = goneMask | IN_IGNORED | IN_UNMOUNT | IN_Q_OVERFLOW;

constexpr int mostLinks = 40;  // the limit of the kernel

std::string_view nameOf(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

// The file that the symbolic link at `path` leads to, even if that file does not exist. Empty if
// `path` is not a link or leads to something other than a file.
std::string targetOf(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code trouble;
    fs::path target = path;
    for (int links = 0; fs::is_symlink(target, trouble); ++links) {
        const auto next = fs::read_symlink(target, trouble);
        if (trouble || links == mostLinks) return {};
        target = target.parent_path() / next;
    }
    const auto kind = fs::status(target, trouble).type();
    const bool mayBeFile = kind == fs::file_type::regular || kind == fs::file_type::not_found;
    return mayBeFile && target != path ? target.string() : "";
}

}  // namespace

FileWatch::FileWatch(sd_event* event, std::string file, std::function<void()> callback)
    : event_(event), path(std::move(file)), changed(std::move(callback))
{
    deferred_ = owned<EventSourcePointer>([this](sd_event_source** source) {
        return sd_event_add_defer(event_, source, onDeferred, this);
    });
    if (!deferred_) return;
    (void)sd_event_source_set_enabled(deferred_.get(), SD_EVENT_OFF);
    // Runs after all pending inotify events: a watch renewed earlier would receive the same events
    // again, endlessly.
    (void)sd_event_source_set_priority(deferred_.get(), SD_EVENT_PRIORITY_NORMAL + 1);
    renew();
}

void FileWatch::renew()
{
    watchNearestFolder();
    // The folder may have been created just before its parent was watched.
    if (awaited != path && access(awaited.c_str(), F_OK) == 0) watchNearestFolder();
    watchTarget();
}

void FileWatch::watchNearestFolder()
{
    watch_.reset();
    for (awaited = path; awaited != "/" && awaited != "."; awaited = folderOf(awaited)) {
        watch_ = watchFolderOf(awaited);
        if (watch_) return;
    }
}

void FileWatch::watchTarget()
{
    targetWatch_.reset();
    target = targetOf(path);
    if (!target.empty()) targetWatch_ = watchFolderOf(target);
}

EventSourcePointer FileWatch::watchFolderOf(const std::string& entry)
{
    return owned<EventSourcePointer>([&](sd_event_source** source) {
        return sd_event_add_inotify(event_, source, folderOf(entry).c_str(), watchMask, onChange,
                                    this);
    });
}

int FileWatch::onChange(sd_event_source* /*source*/, const inotify_event* change, void* self)
{
    const auto* const watch = static_cast<FileWatch*>(self);
    const std::string_view name = change->len > 0 ? change->name : "";
    const bool isAwaited =
        name == nameOf(watch->awaited) || (!watch->target.empty() && name == nameOf(watch->target));
    if (!isAwaited && (change->mask & lostMask) == 0) return 0;

    // A watch cannot be renewed inside its own callback.
    (void)sd_event_source_set_enabled(watch->deferred_.get(), SD_EVENT_ONESHOT);
    return 0;
}

int FileWatch::onDeferred(sd_event_source* /*source*/, void* self)
{
    auto* const watch = static_cast<FileWatch*>(self);
    watch->renew();
    watch->changed();
    return 0;
}

}  // namespace vorlane::platform
