#include "platform/linux/settings/FileDefaultsStore.h"

#include <cmath>
#include <ctime>
#include <utility>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFolders.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t longestFile = 1U << 20U;  // a thousand times what is needed

template <typename Kind>
const Kind* valueOf(const DefaultsValue* value)
{
    return value != nullptr ? std::get_if<Kind>(value) : nullptr;
}

// Rounds toward zero; 0 if the number does not fit.
std::int64_t truncated(double real)
{
    constexpr double tooLarge = 9223372036854775808.0;  // 2^63
    return std::abs(real) < tooLarge ? static_cast<std::int64_t>(real) : 0;
}

bool isStorable(const DefaultsValue& value)
{
    const auto* real = std::get_if<double>(&value);
    return real == nullptr || std::isfinite(*real);
}

// Creates the folder of `path` and returns the path.
std::string withFolder(std::string path)
{
    makeFolders(folderOf(path));
    return path;
}

// `text` with those `values` that TOML can hold; absent if one of the keys holds a table of several
// lines.
std::optional<std::string> withValues(std::string text,
                                      const std::map<std::string, DefaultsValue>& values)
{
    for (const auto& [key, value] : values) {
        auto edited = withTomlValue(text, key, value);
        if (!edited && withTomlValue("", key, value)) return std::nullopt;
        if (edited) text = std::move(*edited);
    }
    return text;
}

}  // namespace

FileDefaultsStore::FileDefaultsStore(sd_event* event, std::string file, Seconds interval)
    : event_(event),
      path(withFolder(std::move(file))),
      retryInterval(interval),
      watch(event, path, [this] { fileChanged(); }),
      // Created up front: later there may be no file descriptor left.
      retryTimer_(owned<EventSourcePointer>([this](sd_event_source** source) {
          return sd_event_add_time(event_, source, CLOCK_MONOTONIC, 0, 0, onRetry, this);
      }))
{
    if (retryTimer_) (void)sd_event_source_set_enabled(retryTimer_.get(), SD_EVENT_OFF);
    (void)load();
    if (!watch.isWatching()) scheduleRetry();
}

FileDefaultsStore::~FileDefaultsStore()
{
    saveUnsaved();
}

void FileDefaultsStore::saveUnsaved() noexcept
{
    if (unsaved.empty()) return;
    try {
        (void)load();
        (void)save();
    } catch (...) {
        // Out of memory: the file stays as it is.
    }
}

std::string FileDefaultsStore::usualPath()
{
    const auto folder = xdgConfigHome();
    return folder ? *folder + "/vorlane/settings.toml" : "";
}

void FileDefaultsStore::registerDefaults(const std::map<std::string, DefaultsValue>& defaults)
{
    if (registered != defaults) registered = defaults;
}

bool FileDefaultsStore::boolForKey(const std::string& key) const
{
    const auto* flag = valueOf<bool>(find(key));
    return flag != nullptr && *flag;
}

std::int64_t FileDefaultsStore::integerForKey(const std::string& key) const
{
    const auto* value = find(key);
    if (const auto* number = valueOf<std::int64_t>(value)) return *number;
    const auto* real = valueOf<double>(value);
    return real != nullptr ? truncated(*real) : 0;
}

double FileDefaultsStore::doubleForKey(const std::string& key) const
{
    const auto* value = find(key);
    if (const auto* real = valueOf<double>(value)) return *real;
    const auto* number = valueOf<std::int64_t>(value);
    return number != nullptr ? static_cast<double>(*number) : 0;
}

std::optional<std::string> FileDefaultsStore::stringForKey(const std::string& key) const
{
    const auto* words = valueOf<std::string>(find(key));
    if (words == nullptr) return std::nullopt;
    return *words;
}

void FileDefaultsStore::set(const std::string& key, const DefaultsValue& value)
{
    if (!isStorable(value)) return;

    // Reads the file first: an editor may have just written it.
    const bool editedOutside = load();
    const bool differs = !holds(key, value);
    if (differs) unsaved.insert_or_assign(key, value);
    if (!save()) scheduleRetry();
    if (editedOutside || differs) listeners.call();
}

Subscription FileDefaultsStore::observe(std::function<void()> changed)
{
    return listeners.add(std::move(changed));
}

const DefaultsValue* FileDefaultsStore::find(const std::string& key) const
{
    if (const auto found = unsaved.find(key); found != unsaved.end()) return &found->second;
    if (const auto found = stored.find(key); found != stored.end()) {
        return found->second ? &*found->second : nullptr;  // of a type that no setting has
    }
    const auto found = registered.find(key);
    return found != registered.end() ? &found->second : nullptr;
}

bool FileDefaultsStore::holds(const std::string& key, const DefaultsValue& value) const
{
    if (const auto found = unsaved.find(key); found != unsaved.end()) return found->second == value;
    const auto found = stored.find(key);
    return found != stored.end() && found->second == value;
}

// True when the values have changed.
bool FileDefaultsStore::load()
{
    auto content = readOwnFile(path, longestFile);
    if (!content && !countsAsEmpty(content.error())) {
        fileHoldsText = false;
        scheduleRetry();
        return false;
    }
    fileHoldsText = content && *content == text;
    if (fileHoldsText) return false;

    auto fresh = content ? tomlValues(*content) : std::nullopt;
    fileHoldsText = fresh.has_value();
    text = fresh ? std::optional(std::move(*content)) : std::nullopt;
    const auto before = std::exchange(stored, std::move(fresh).value_or(TomlValues()));
    return stored != before;
}

std::map<std::string, DefaultsValue> FileDefaultsStore::allValues() const
{
    auto all = unsaved;
    for (const auto& [key, value] : stored) {
        if (value) all.emplace(key, *value);
    }
    return all;
}

// False when the caller should retry later.
bool FileDefaultsStore::save()
{
    auto edited = withValues(text.value_or(""), unsaved);
    if (!edited) fileHoldsText = false;  // so that the file is kept aside
    auto next = edited ? std::move(*edited) : withValues("", allValues()).value_or("");
    if (next != text.value_or("")) {
        if (!fileHoldsText && !keepFileAside(path)) return false;
        if (!replaceFile(path, next)) return false;
        stored = tomlValues(next).value_or(TomlValues());
        text = std::move(next);
        fileHoldsText = true;
    }
    if (fileHoldsText) discardSaved();
    return true;
}

// Discards the unsaved values that the file now has, so that they do not overwrite later edits of
// the file.
void FileDefaultsStore::discardSaved()
{
    std::erase_if(unsaved, [this](const auto& entry) {
        const auto found = stored.find(entry.first);
        return found != stored.end() && found->second == entry.second;
    });
}

void FileDefaultsStore::fileChanged()
{
    const bool differs = load();
    if (!save() || !watch.isWatching()) scheduleRetry();
    if (differs) listeners.call();
}

// The watch does not report that the disk has room again, and the system may have run out of
// watches.
void FileDefaultsStore::scheduleRetry()
{
    if (path.empty() || !retryTimer_) return;
    const auto microseconds = static_cast<std::uint64_t>(retryInterval.count() * 1e6);
    (void)sd_event_source_set_time_relative(retryTimer_.get(), microseconds);
    (void)sd_event_source_set_time_accuracy(retryTimer_.get(), microseconds / 4);
    (void)sd_event_source_set_enabled(retryTimer_.get(), SD_EVENT_ONESHOT);
}

int FileDefaultsStore::onRetry(sd_event_source* /*source*/, std::uint64_t /*due*/, void* self)
{
    auto* const store = static_cast<FileDefaultsStore*>(self);
    if (!store->watch.isWatching()) store->watch.renew();
    store->fileChanged();
    return 0;
}

}  // namespace vorlane::platform
