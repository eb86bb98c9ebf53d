// The settings file: a value that is set reads back and everything else stays; a malformed text is
// never overwritten without a backup; a value of the wrong type reads as absent.
#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "App/Prefs.h"
#include "fuzz/PlainSettings.h"
#include "fuzz/Require.h"
#include "fuzz/Scratch.h"
#include "fuzz/Targets.h"
#include "fuzz/Utf8.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "platform/linux/settings/TomlText.h"

namespace vorlane::fuzz {

namespace {

using platform::FileDefaultsStore;
using platform::tomlValues;
using platform::TomlValues;
using platform::withTomlValue;

constexpr const char* fileName = "settings.toml";

struct Setting {
    std::string key;
    DefaultsValue value;
};

DefaultsValue anyValue(Input& input)
{
    constexpr std::array reals{0.0,  -0.0,  0.1,    1.5,          1e-7,    123456789.25, 1e16,
                               1e15, 1e300, 5e-324, 1767603600.5, -2.5e-6, 9e15};
    const auto form = input.below(5);
    if (form == 0) return input.flag();
    if (form == 1) return input.number();
    if (form == 2) return input.oneOf(reals);
    if (form == 3) return std::string("Glass");
    return input.text(12);
}

Setting anySetting(Input& input)
{
    if (input.byte() % 4 > 0) return {input.oneOf(PlainSettings::keys), anyValue(input)};
    auto key = input.text(6);
    return {std::move(key), anyValue(input)};
}

bool isPlain(const TomlValues& values, const std::string& key)
{
    const auto found = values.find(key);
    return found == values.end() || found->second.has_value();
}

std::size_t commonStart(std::string_view one, std::string_view other)
{
    const auto [a, b] = std::ranges::mismatch(one, other);
    return static_cast<std::size_t>(a - one.begin());
}

std::size_t commonEnd(std::string_view one, std::string_view other)
{
    std::size_t same = 0;
    while (same < std::min(one.size(), other.size()) &&
           one[one.size() - 1 - same] == other[other.size() - 1 - same]) {
        ++same;
    }
    return same;
}

// Replacing or adding a plain value removes nothing from the text except the old value.
void compareTexts(const std::string& text, const std::string& edited, const TomlValues& before,
                  const Setting& setting)
{
    const auto found = before.find(setting.key);
    if (found != before.end() && !found->second) return;  // a table or a date was replaced

    const auto start = commonStart(text, edited);
    const auto end =
        std::min(commonEnd(text, edited), std::min(text.size(), edited.size()) - start);
    const auto gone = std::string_view(text).substr(start, text.size() - start - end);
    if (found == before.end()) return require(gone.empty(), "adding a value removes nothing");
    if (std::holds_alternative<std::string>(*found->second)) return;  // may contain anything
    require(
        gone.find('#') == gone.npos && gone.find('\n') == gone.npos && gone.find('=') == gone.npos,
        "replacing a value keeps comments, lines and keys");
}

void editText(const std::string& text, const Setting& setting)
{
    const auto before = tomlValues(text);
    const auto edited = withTomlValue(text, setting.key, setting.value);
    require(before || !edited, "a malformed text is not edited");
    const auto* const string = std::get_if<std::string>(&setting.value);
    const bool isStorable = isUtf8(setting.key) && (string == nullptr || isUtf8(*string));
    if (before && isStorable && isPlain(*before, setting.key)) {
        require(edited.has_value(), "a plain value can be set in every valid text");
    }
    if (!edited) return;

    auto expected = *before;
    expected.insert_or_assign(setting.key, setting.value);
    require(tomlValues(*edited) == expected, "the value reads back and all others are unchanged");
    require(withTomlValue(*edited, setting.key, setting.value) == edited,
            "setting the same value again changes nothing");
    compareTexts(text, *edited, *before, setting);
}

void comparePrefs(FileDefaultsStore& store, const std::optional<TomlValues>& values)
{
    PlainSettings plain;
    for (const auto& [key, value] : values.value_or(TomlValues())) {
        // A value of an unsupported type reads like a string: false or 0.
        plain.written.emplace(key, value.value_or(DefaultsValue(std::string())));
    }
    const auto expected = plain.prefs();
    const auto found = Prefs::current(store);
    require(found.sounds.size() == allAlertKinds.size(), "every kind has a sound");
    for (const auto& row : switchKeys) {
        require(found.*row.field == expected.*row.field, "switches read as they are, or as off");
    }
    for (const auto& row : numberKeys) {
        require(found.*row.field == expected.*row.field, "numbers read as they are, or as 0");
    }
}

bool reads(const FileDefaultsStore& store, const Setting& setting)
{
    if (const auto* flag = std::get_if<bool>(&setting.value)) {
        return store.boolForKey(setting.key) == *flag;
    }
    if (const auto* number = std::get_if<std::int64_t>(&setting.value)) {
        return store.integerForKey(setting.key) == *number;
    }
    if (const auto* real = std::get_if<double>(&setting.value)) {
        return store.doubleForKey(setting.key) == *real;
    }
    return store.stringForKey(setting.key) == std::get<std::string>(setting.value);
}

// One loop for all cases with one permanent watch: removing the last inotify watch takes 12 ms.
sd_event* loop()
{
    static const auto event = platform::owned<platform::EventPointer>(sd_event_new);
    static const auto watch =
        platform::owned<platform::EventSourcePointer>([](sd_event_source** source) {
            const auto ignore = [](sd_event_source*, const inotify_event*, void*) { return 0; };
            return sd_event_add_inotify(event.get(), source, "/", IN_DELETE_SELF, ignore, nullptr);
        });
    require(watch != nullptr, "folders can be watched");
    return event.get();
}

void settle()
{
    while (sd_event_run(loop(), 0) > 0) continue;
}

void editFile(const std::string& text, const Setting& setting)
{
    const Scratch scratch;
    scratch.write(fileName, text);
    FileDefaultsStore store(loop(), scratch.path(fileName));
    const auto before = tomlValues(text);
    comparePrefs(store, before);
    require(scratch.read(fileName) == text, "reading does not write");

    store.set(setting.key, setting.value);

    require(reads(store, setting), "a set value reads back at once");
    settle();
    require(reads(store, setting), "a set value reads back after the file event");
    const auto after = scratch.read(fileName);
    if (before && withTomlValue(text, setting.key, setting.value)) return;
    require(after == text || scratch.read(std::string(fileName) + ".bad") == text,
            "a malformed file, or one with a table in the way, is backed up before it is replaced");
}

}  // namespace

void settings(Input input)
{
    const bool onDisk = input.byte() % 8 == 0;
    const auto setting = anySetting(input);
    const auto text = input.rest();
    editText(text, setting);
    if (onDisk) editFile(text, setting);
}

}  // namespace vorlane::fuzz
