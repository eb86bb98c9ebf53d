// Stores the user's settings in a TOML file, which may be edited by hand while the program runs.
#pragma once

#include "App/Date.h"
#include "App/Listeners.h"
#include "App/services/DefaultsStore.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/files/FileWatch.h"
#include "platform/linux/settings/TomlText.h"

namespace vorlane::platform {

// A file that is malformed, not a regular file, or another user's counts as empty; one that cannot
// be read leaves the values unchanged. The first write keeps either file aside. Writing a key that
// is a table of several lines also keeps the file aside, and writes the other values again.
class FileDefaultsStore : public DefaultsStore {
public:
    // Creates the file's folder if it is missing.
    FileDefaultsStore(sd_event* event, std::string path, Seconds retryInterval = Seconds{60});

    // Calls `saveUnsaved`.
    ~FileDefaultsStore() override;

    FileDefaultsStore(const FileDefaultsStore&) = delete;
    FileDefaultsStore& operator=(const FileDefaultsStore&) = delete;

    // The file's path in the user's config folder; empty without a home folder.
    static std::string usualPath();

    void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) override;
    bool boolForKey(const std::string& key) const override;
    std::int64_t integerForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;

    // Ignores a number that is not finite. While the file cannot be written, the value in memory
    // overrides the file, and the store tries to write again every minute, with the next value, and
    // when it is destroyed.
    void set(const std::string& key, const DefaultsValue& value) override;

    // Tries again to write pending values.
    void saveUnsaved() noexcept;

    Subscription observe(std::function<void()> changed) override;

private:
    const DefaultsValue* find(const std::string& key) const;
    bool holds(const std::string& key, const DefaultsValue& value) const;
    std::map<std::string, DefaultsValue> allValues() const;
    bool load();
    bool save();
    void discardSaved();
    void fileChanged();
    void scheduleRetry();
    static int onRetry(sd_event_source* source, std::uint64_t due, void* self);

    sd_event* event_;
    std::string path;
    Seconds retryInterval;
    std::optional<std::string> text;  // the file's last content; absent if missing or malformed
    bool fileHoldsText = false;       // at the last read or write
    TomlValues stored;
    std::map<std::string, DefaultsValue> unsaved;
    std::map<std::string, DefaultsValue> registered;
    Listeners listeners;
    FileWatch watch;
    EventSourcePointer retryTimer_;
};

}  // namespace vorlane::platform
