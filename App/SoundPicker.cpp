#include "App/SoundPicker.h"

#include "App/Prefs.h"

namespace vorlane {

namespace {

constexpr const char* silence = "none";

std::string stored(const DefaultsStore& defaults, const std::string& key)
{
    return defaults.stringForKey(key).value_or(defaultSound);
}

}  // namespace

SoundRow SoundPicker::content(const DefaultsStore& defaults) const
{
    const SoundEntry divider;
    SoundRow row{
        .key = sound,
        .title = "Sound",
        .value = stored(defaults, sound),
        .entries = {{.title = "Default", .value = defaultSound},
                    {.title = "None", .value = silence},
                    divider},
    };
    for (const auto name : Prefs::soundNames) {
        row.entries.push_back({.title = std::string(name), .value = std::string(name)});
    }
    return row;
}

void SoundPicker::choose(const std::string& value, Dependencies dependencies) const
{
    const bool changed = value != stored(dependencies.defaults, sound);
    dependencies.defaults.set(sound, value);
    if (!changed || value == defaultSound || value == silence) return;
    dependencies.player.play(value);
}

}  // namespace vorlane
