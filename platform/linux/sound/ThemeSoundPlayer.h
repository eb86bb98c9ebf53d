// Plays a sound in a process of its own, which ends with it: the audio libraries start threads,
// keep memory, print, and wait for a sound server that may never answer.
#pragma once

#include <string>

#include "App/services/SoundPlayer.h"
#include "platform/linux/base/ChildProcesses.h"
#include "platform/linux/sound/SoundFiles.h"

namespace vorlane::platform {

class ThemeSoundPlayer : public SoundPlayer {
public:
    // `event` outlives it. `program` is called with "file" and a path, or "theme" and a name.
    ThemeSoundPlayer(sd_event* event, std::string program, SoundFiles files);

    // In lib/vorlane beside the folder of the running program.
    static std::string usualProgram();

    // Cuts off a sound that still plays.
    void play(const std::string& name) override;

private:
    std::string program_;
    SoundFiles files_;
    ChildProcesses players;  // all but the last were killed
};

}  // namespace vorlane::platform
