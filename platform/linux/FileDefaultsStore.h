// The user's settings in a TOML file that may be edited by hand, also while the program runs.
#pragma once

#include "App/Listeners.h"
#include "App/services/DefaultsStore.h"
#include "platform/linux/FileWatch.h"
#include "platform/linux/TomlText.h"

namespace vorlane::platform {

// A file that cannot be read or understood counts as empty; the first write keeps it aside.
class FileDefaultsStore : public DefaultsStore {
public:
    // Makes the file's folder when it is missing.
    FileDefaultsStore(sd_event* event, std::string path);

    // The file's place in the user's config folder; empty when there is no home.
    static std::string usualPath();

    void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) override;
    bool boolForKey(const std::string& key) const override;
    std::int64_t integerForKey(const std::string& key) const override;
    double doubleForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;

    // A number that is not finite is ignored. When the file cannot be written the value is kept in
    // memory, before whatever the file says, and written with the next one.
    void set(const std::string& key, const DefaultsValue& value) override;

    Subscription observe(std::function<void()> changed) override;

private:
    const DefaultsValue* find(const std::string& key) const;
    bool holds(const std::string& key, const DefaultsValue& value) const;
    bool load();
    void save();
    void fileChanged();

    std::string path;
    std::optional<std::string> text;  // of the file; absent when there is none that is understood
    TomlValues stored;
    std::map<std::string, DefaultsValue> unsaved;
    std::map<std::string, DefaultsValue> registered;
    Listeners listeners;
    FileWatch watch;
};

}  // namespace vorlane::platform
