#include "platform/linux/sound/ThemeSoundPlayer.h"

#include <utility>

namespace vorlane::platform {

ThemeSoundPlayer::ThemeSoundPlayer(sd_event* event, std::string program, SoundFiles files)
    : program_(std::move(program)), files_(std::move(files)), players(event)
{}

void ThemeSoundPlayer::play(const std::string& name)
{
    players.killAll();
    const auto file = files_.path(name);
    (void)players.start(
        {.words = {program_, file ? "file" : "theme", file ? *file : soundThemeName(name)},
         .isQuiet = true},
        nullptr);
}

}  // namespace vorlane::platform
