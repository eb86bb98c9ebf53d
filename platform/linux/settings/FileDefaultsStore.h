// The user's settings in a TOML file that may be edited by hand, also while the program runs.
#pragma once

#include "App/Date.h"
#include "App/Listeners.h"
#include "App/services/DefaultsStore.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/files/FileWatch.h"
#include "platform/linux/settings/TomlText.h"

namespace vorlane::platform {

// A file that is not understood, is none, or is another user's counts as empty; one that cannot be
// read leaves the values as they were. The first write keeps either aside, and so does one of a key
// that is a table of several lines; the other values are then written again.
class FileDefaultsStore : public DefaultsStore {
public:
    // Makes the file's folder when it is missing.
    FileDefaultsStore(sd_event* event, std::string path, Seconds untilNextTry = Seconds{60});

    // As the last thing, `writeWhatWaits`.
    ~FileDefaultsStore() override;

    FileDefaultsStore(const FileDefaultsStore&) = delete;
    FileDefaultsStore& operator=(const FileDefaultsStore&) = delete;

    // The file's place in the user's config folder; empty when there is no home.
    static std::string usualPath();

    void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) override;
    bool boolForKey(const std::string& key) const override;
    std::int64_t integerForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;

    // A number that is not finite is ignored. When the file cannot be written the value is kept in
    // memory, before whatever the file says, and tried again a minute later, with the next value,
    // and at the end.
    void set(const std::string& key, const DefaultsValue& value) override;

    // Writes what could not be written before, if it can be now.
    void writeWhatWaits() noexcept;

    Subscription observe(std::function<void()> changed) override;

private:
    const DefaultsValue* find(const std::string& key) const;
    bool holds(const std::string& key, const DefaultsValue& value) const;
    std::map<std::string, DefaultsValue> allValues() const;
    bool load();
    bool save();
    void forgetWhatIsStored();
    void fileChanged();
    void tryAgainLater();
    static int onNextTry(sd_event_source* source, std::uint64_t due, void* self);

    sd_event* event_;
    std::string path;
    Seconds untilNextTry;
    std::optional<std::string> text;  // of the file when it was understood last; absent: empty
    bool isText = false;              // whether it is what stands in the file
    TomlValues stored;
    std::map<std::string, DefaultsValue> unsaved;
    std::map<std::string, DefaultsValue> registered;
    Listeners listeners;
    FileWatch watch;
    EventSourcePointer nextTry_;  // after trouble
};

}  // namespace vorlane::platform
