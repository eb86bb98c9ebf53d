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

// Toward zero; the neutral value for what does not fit.
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

// The path, with a folder for the file to stand in.
std::string inItsFolder(std::string path)
{
    makeFolders(folderOf(path));
    return path;
}

// Those of `values` that a file can hold, in `text`; absent when a table is in the way of one.
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

bool replaceWith(const std::string& path, std::string_view content)
{
    return static_cast<bool>(replaceFile(path, [&] { return std::exchange(content, {}); }));
}

}  // namespace

FileDefaultsStore::FileDefaultsStore(sd_event* event, std::string file, Seconds interval)
    : event_(event),
      path(inItsFolder(std::move(file))),
      untilNextTry(interval),
      watch(event, path, [this] { fileChanged(); }),
      // Now: in trouble there may be no descriptors left for one.
      nextTry_(owned<EventSourcePointer>([this](sd_event_source** source) {
          return sd_event_add_time(event_, source, CLOCK_MONOTONIC, 0, 0, onNextTry, this);
      }))
{
    if (nextTry_) (void)sd_event_source_set_enabled(nextTry_.get(), SD_EVENT_OFF);
    (void)load();
    if (!watch.watches()) tryAgainLater();
}

FileDefaultsStore::~FileDefaultsStore()
{
    writeWhatWaits();
}

void FileDefaultsStore::writeWhatWaits() noexcept
{
    if (unsaved.empty()) return;
    try {
        (void)load();
        (void)save();
    } catch (...) {
        // Out of memory at the very end: what is in the file stays whole.
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

    // Read the file first: an editor may have just changed it.
    const bool editedOutside = load();
    const bool differs = !holds(key, value);
    if (differs) unsaved.insert_or_assign(key, value);
    if (!save()) tryAgainLater();
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
        return found->second ? &*found->second : nullptr;  // of a kind that no setting has
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

// True when the values differ from those read before.
bool FileDefaultsStore::load()
{
    auto content = readOwnFile(path, longestFile);
    if (!content && !countsAsEmpty(content.error())) {
        isText = false;
        tryAgainLater();
        return false;
    }
    isText = content && *content == text;
    if (isText) return false;

    auto fresh = content ? tomlValues(*content) : std::nullopt;
    isText = fresh.has_value();
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

// False when it should be tried again.
bool FileDefaultsStore::save()
{
    auto edited = withValues(text.value_or(""), unsaved);
    if (!edited) isText = false;  // to be kept aside
    auto next = edited ? std::move(*edited) : withValues("", allValues()).value_or("");
    if (next != text.value_or("")) {
        if (!isText && !keepFileAside(path)) return false;
        if (!replaceWith(path, next)) return false;
        stored = tomlValues(next).value_or(TomlValues());
        text = std::move(next);
        isText = true;
    }
    if (isText) forgetWhatIsStored();
    return true;
}

// Or it would be written over what the file is to say later.
void FileDefaultsStore::forgetWhatIsStored()
{
    std::erase_if(unsaved, [this](const auto& entry) {
        const auto found = stored.find(entry.first);
        return found != stored.end() && found->second == entry.second;
    });
}

void FileDefaultsStore::fileChanged()
{
    const bool differs = load();
    if (!save() || !watch.watches()) tryAgainLater();
    if (differs) listeners.call();
}

// A file tells when it changes, but not when its disk has room again; nor at all while the system
// has no watches left.
void FileDefaultsStore::tryAgainLater()
{
    if (path.empty() || !nextTry_) return;
    const auto microseconds = static_cast<std::uint64_t>(untilNextTry.count() * 1e6);
    (void)sd_event_source_set_time_relative(nextTry_.get(), microseconds);
    (void)sd_event_source_set_time_accuracy(nextTry_.get(), microseconds / 4);
    (void)sd_event_source_set_enabled(nextTry_.get(), SD_EVENT_ONESHOT);
}

int FileDefaultsStore::onNextTry(sd_event_source* /*source*/, std::uint64_t /*due*/, void* self)
{
    auto* const store = static_cast<FileDefaultsStore*>(self);
    if (!store->watch.watches()) store->watch.renew();
    store->fileChanged();
    return 0;
}

}  // namespace vorlane::platform
