// A program without a voice.
#pragma once

#include "App/services/SoundPlayer.h"

namespace vorlane::platform {

class NoSoundPlayer : public SoundPlayer {
public:
    void play(const std::string& /*name*/) override {}
};

}  // namespace vorlane::platform
