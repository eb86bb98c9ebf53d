// Builds the list of sounds for one kind of alert and stores the choice.
#pragma once

#include <string>

#include "App/content/SettingsContent.h"
#include "App/services/DefaultsStore.h"
#include "App/services/SoundPlayer.h"

namespace vorlane {

struct SoundPicker {
    std::string sound;  // the settings key

    SoundRow content(const DefaultsStore& defaults) const;

    struct Dependencies {
        DefaultsStore& defaults;
        SoundPlayer& player;
    };

    // Stores the choice and plays a newly chosen sound once.
    void choose(const std::string& value, Dependencies dependencies) const;
};

}  // namespace vorlane
