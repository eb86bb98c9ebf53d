#pragma once

#include <string>

namespace vorlane {

class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    // Plays one of `Prefs::soundNames` without waiting for its end. A failure is silent.
    virtual void play(const std::string& name) = 0;
};

}  // namespace vorlane
