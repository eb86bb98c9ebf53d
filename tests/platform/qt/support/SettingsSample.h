// The settings window's content before the user has changed anything.
#pragma once

#include "App/content/SettingsContent.h"

namespace vorlane::platform {

inline std::vector<SoundEntry> sampleSounds()
{
    std::vector<SoundEntry> entries{{"Default", "default"}, {"None", "none"}, {"", ""}};
    for (const auto* name : {"Glass", "Ping", "Hero", "Submarine", "Funk", "Basso", "Blow",
                             "Bottle", "Frog", "Morse", "Pop", "Purr", "Sosumi", "Tink"}) {
        entries.push_back({name, name});
    }
    return entries;
}

inline SoundRow sampleSound(const char* key, bool enabled)
{
    return {.key = key,
            .title = "Sound",
            .value = "default",
            .entries = sampleSounds(),
            .enabled = enabled};
}

inline SettingsSection sampleAlerts(bool enabled)
{
    return {.header = "Alerts",
            .rows = {ToggleRow{.key = "limitEnabled", .title = "Charge limit", .value = enabled},
                     StepperRow{.key = "limit",
                                .title = "Alert when charging reaches 80%",
                                .value = 80,
                                .minimum = 50,
                                .maximum = 100,
                                .enabled = enabled},
                     ToggleRow{.key = "repeatReminder",
                               .title = "Repeat every 5 minutes, up to 3 times",
                               .value = true,
                               .enabled = enabled},
                     sampleSound("limitSound", enabled)}};
}

inline SettingsSection sampleQuietHours(bool enabled)
{
    return {.header = "Quiet hours",
            .rows = {ToggleRow{.key = "quietEnabled",
                               .title = "Hold alerts during quiet hours",
                               .value = enabled},
                     TimeRow{.key = "quietStart",
                             .title = "From",
                             .time = {.hour = 22, .minute = 0},
                             .enabled = enabled},
                     TimeRow{.key = "quietEnd",
                             .title = "Until",
                             .time = {.hour = 7, .minute = 0},
                             .enabled = enabled}}};
}

inline SettingsContent sampleSettings()
{
    return {
        .sections = {
            sampleAlerts(true),
            {.header = "",
             .rows = {ToggleRow{.key = "lowEnabled", .title = "Low battery", .value = true},
                      StepperRow{.key = "low",
                                 .title = "Alert on battery at 20% or less",
                                 .value = 20,
                                 .minimum = 5,
                                 .maximum = 50},
                      sampleSound("lowSound", true)}},
            {.header = "",
             .rows = {ToggleRow{
                          .key = "longEnabled", .title = "Plugged in too long", .value = true},
                      StepperRow{.key = "longHours",
                                 .title = "Alert after 8 h plugged in above the charge limit",
                                 .value = 8,
                                 .minimum = 1,
                                 .maximum = 48},
                      sampleSound("longSound", true)}},
            {.header = "",
             .rows = {ToggleRow{.key = "healthEnabled",
                                .title = "Battery health below 80% (once)",
                                .value = true},
                      sampleSound("healthSound", true)}},
            sampleQuietHours(false),
            {.header = "Tray",
             .rows = {ToggleRow{.key = "showPercent",
                                .title = "Show percentage in the tray",
                                .value = true},
                      ToggleRow{.key = "showTime", .title = "Show time remaining"}}},
            {.header = "General",
             .rows = {LoginItemRow{.title = "Launch at Login"},
                      ResetRow{.title = "Reset History…"}}},
            {.header = "",
             .rows = {NoteRow{
                 .text = "The laptop's firmware or desktop may also hold the charge at a limit of "
                         "its own. Vorlane can only remind you; it cannot control charging.",
                 .color = std::nullopt}}}}};
}

// The same content with every warning shown and every optional part off.
inline SettingsContent sampleTroubledSettings()
{
    auto content = sampleSettings();
    content.sections[0] = sampleAlerts(false);
    content.sections[0].rows.insert(
        content.sections[0].rows.begin() + 2,
        NoteRow{.text = "This laptop stops charging at 80% by itself. A limit of 81% reminds you "
                        "only if it does not.",
                .color = std::nullopt});
    content.sections[4] = sampleQuietHours(true);
    auto& general = content.sections[6].rows;
    general.insert(general.begin() + 1,
                   NoteRow{.text = "Could not change Launch at Login: Permission denied",
                           .color = Color::red});
    general.push_back(NoteRow{.text = "Reminders need a notification service, and none answers on "
                                      "the session bus. Desktops bring one along; elsewhere a "
                                      "notification daemon has to run.",
                              .color = Color::orange});
    return content;
}

}  // namespace vorlane::platform
