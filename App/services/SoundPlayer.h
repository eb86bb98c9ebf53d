#pragma once

#include <string>

namespace vorlane {

class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    // Plays one of the sounds on offer once, and returns at once. A failure is silent.
    virtual void play(const std::string& name) = 0;
};

}  // namespace vorlane
