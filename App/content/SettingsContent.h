// What the settings window shows, section by section, and its intents.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "App/content/Color.h"
#include "App/content/TimeOfDay.h"

namespace vorlane {

// Each control names the settings key that it writes. A disabled one still shows its value.
struct ToggleRow {
    std::string key;
    std::string title;
    bool value = false;
    bool enabled = true;

    friend bool operator==(const ToggleRow&, const ToggleRow&) = default;
};

// A whole number with buttons to change it. The title contains the number.
struct StepperRow {
    std::string key;
    std::string title;
    std::int64_t value = 0;  // may be out of range if the file was edited by hand
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t step = 1;
    bool enabled = true;

    friend bool operator==(const StepperRow&, const StepperRow&) = default;
};

struct SoundEntry {
    std::string title;  // empty: a divider
    std::string value;

    friend bool operator==(const SoundEntry&, const SoundEntry&) = default;
};

struct SoundRow {
    std::string key;
    std::string title;
    std::string value;  // if no entry has this value, none is selected
    std::vector<SoundEntry> entries;
    bool enabled = true;

    friend bool operator==(const SoundRow&, const SoundRow&) = default;
};

struct TimeRow {
    std::string key;
    std::string title;
    TimeOfDay time;
    bool enabled = true;

    friend bool operator==(const TimeRow&, const TimeRow&) = default;
};

// A toggle for launch at login, which is not a stored setting.
struct LoginItemRow {
    std::string title;
    bool value = false;

    friend bool operator==(const LoginItemRow&, const LoginItemRow&) = default;
};

struct ResetRow {
    std::string title;

    friend bool operator==(const ResetRow&, const ResetRow&) = default;
};

// A line of small text.
struct NoteRow {
    std::string text;
    std::optional<Color> color;  // absent: secondary

    friend bool operator==(const NoteRow&, const NoteRow&) = default;
};

using SettingsRow =
    std::variant<ToggleRow, StepperRow, SoundRow, TimeRow, LoginItemRow, ResetRow, NoteRow>;

struct SettingsSection {
    std::string header;  // empty: no header
    std::vector<SettingsRow> rows;

    friend bool operator==(const SettingsSection&, const SettingsSection&) = default;
};

struct SettingsContent {
    std::vector<SettingsSection> sections;

    friend bool operator==(const SettingsContent&, const SettingsContent&) = default;
};

// Called on the main thread. No intent is ever empty.
struct SettingsIntents {
    std::function<void(const std::string& key, bool value)> setToggle = [](auto&, bool) {};
    std::function<void(const std::string& key, std::int64_t value)> setNumber = [](auto&, auto) {};
    std::function<void(const std::string& key, TimeOfDay time)> setTime = [](auto&, auto) {};
    std::function<void(const std::string& key, const std::string& sound)> chooseSound =
        [](auto&, auto&) {};
    std::function<void(bool on)> setLaunchAtLogin = [](bool) {};
    std::function<void()> resetHistory = [] {};  // asks for confirmation first
};

}  // namespace vorlane
