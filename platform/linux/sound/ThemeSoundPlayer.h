// Plays each sound in a separate process: the audio libraries start threads, keep memory, print,
// and wait for a sound server that may never answer.
#pragma once

#include <string>

#include "App/services/SoundPlayer.h"
#include "platform/linux/base/ChildProcesses.h"
#include "platform/linux/sound/SoundFiles.h"

namespace vorlane::platform {

class ThemeSoundPlayer : public SoundPlayer {
public:
    // `event` must outlive this object. `program` is called with "file" and a path, or "theme" and
    // a name.
    ThemeSoundPlayer(sd_event* event, std::string program, SoundFiles files);

    // Stops a sound that is still playing.
    void play(const std::string& name) override;

private:
    std::string program_;
    SoundFiles files_;
    ChildProcesses players;  // all but the last were killed
};

}  // namespace vorlane::platform
