// post_notification TITLE BODY: posts a notification as the program does, for tests with real
// servers. Runs until it is killed.
#include <string>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/notifications/FreedesktopNotificationCenter.h"
#include "tests/support/FakeSoundPlayer.h"

int main(int argc, char** argv)
{
    using namespace vorlane;
    using namespace vorlane::platform;
    if (argc != 3) return 2;

    SdEventRunLoop loop;
    const auto session = owned<BusPointer>(sd_bus_open_user);
    if (!session || sd_bus_attach_event(session.get(), loop.event(), 0) < 0) return 1;

    FakeSoundPlayer player;
    FreedesktopNotificationCenter center(
        {.session = session.get(), .sounds = SoundFiles(), .player = player});
    center.add({.identifier = "test",
                .title = argv[1],
                .body = argv[2],
                .categoryIdentifier = "",
                .sound = std::nullopt});
    loop.run();
    return 0;
}
