// Builds the settings window's content and stores what the user changes there.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "App/AppModel.h"
#include "App/Prefs.h"
#include "App/Published.h"
#include "App/content/PlatformTexts.h"
#include "App/content/SettingsContent.h"
#include "App/services/AlertPanel.h"
#include "App/services/BatteryRegistry.h"
#include "App/services/Calendar.h"
#include "App/services/Clock.h"
#include "App/services/DefaultsStore.h"
#include "App/services/LoginItem.h"
#include "App/services/SoundPlayer.h"

namespace vorlane {

// The rest of the program reads the settings from the store, not from here.
class SettingsView : public std::enable_shared_from_this<SettingsView> {
public:
    struct Dependencies {
        DefaultsStore& defaults;
        BatteryRegistry& batteryRegistry;
        LoginItem& loginItem;
        SoundPlayer& soundPlayer;
        AlertPanel& alertPanel;
        const Clock& clock;
        const Calendar& calendar;
        const PlatformTexts& texts;
    };

    std::shared_ptr<AppModel> model;
    Published<bool> launchAtLogin;  // as last read from the system
    Published<std::optional<std::string>> loginError;
    bool confirmReset = false;  // true while the dialog is open

    SettingsView(std::shared_ptr<AppModel> model, Dependencies dependencies);

    SettingsContent content() const;

    // The intents do nothing once the view is destroyed.
    SettingsIntents intents();

private:
    SettingsSection quietHours(const Prefs& prefs) const;
    SettingsSection general() const;
    TimeOfDay minutesBinding(std::int64_t minutes) const;

    void setToggle(const std::string& key, bool value);
    void setNumber(const std::string& key, std::int64_t value);
    void setTime(const std::string& key, TimeOfDay time);
    void chooseSound(const std::string& key, const std::string& sound);
    void setLaunchAtLogin(bool on);
    void resetHistory();

    Dependencies dependencies_;
};

}  // namespace vorlane
