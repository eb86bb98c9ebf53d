// The chooser of one reminder's sound.
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

    // Stores the choice. A sound that was not chosen before is played once.
    void choose(const std::string& value, Dependencies dependencies) const;
};

}  // namespace vorlane
