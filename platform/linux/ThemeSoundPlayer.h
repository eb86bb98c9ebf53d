// Plays a sound in a process of its own, which ends with it: the audio libraries start threads,
// keep memory, print, and wait for a sound server that may never answer.
#pragma once

#include <list>
#include <string>

#include "App/services/SoundPlayer.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SdBus.h"
#include "platform/linux/SoundFiles.h"

namespace vorlane::platform {

class ThemeSoundPlayer : public SoundPlayer {
public:
    // `event` outlives it. `program` is called with "file" and a path, or "theme" and a name.
    ThemeSoundPlayer(sd_event* event, std::string program, SoundFiles files);
    ~ThemeSoundPlayer() override;

    // In lib/vorlane beside the folder of the running program.
    static std::string usualProgram();

    // Cuts off a sound that still plays.
    void play(const std::string& name) override;

private:
    struct Player {
        FileDescriptor process;
        EventSourcePointer ended;
        ThemeSoundPlayer* owner;
    };

    void cutOff();
    void watch(FileDescriptor process);
    static int onEnd(sd_event_source* source, int process, std::uint32_t events, void* player);

    sd_event* event_;
    std::string program_;
    SoundFiles files_;
    std::list<Player> players;  // all but the last were cut off
};

}  // namespace vorlane::platform
