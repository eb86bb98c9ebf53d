// A sound player that records what it played.
#pragma once

#include <vector>

#include "App/services/SoundPlayer.h"

namespace vorlane {

class FakeSoundPlayer : public SoundPlayer {
public:
    std::vector<std::string> played;

    void play(const std::string& name) override { played.push_back(name); }
};

}  // namespace vorlane
