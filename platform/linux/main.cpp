// Starts the resident program: one instance, the platform's services, the rules, the loop.
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "App/VorlaneApp.h"
#include "platform/linux/ExitHook.h"
#include "platform/linux/LinuxServices.h"

namespace vorlane::platform {
namespace {

int refuse(const char* reason)
{
    (void)std::fprintf(stderr, "vorlane: %s\n", reason);
    return EXIT_FAILURE;
}

BusPointer openBus(int (*opening)(sd_bus**), sd_event* event)
{
    auto bus = owned<BusPointer>(opening);
    if (bus && sd_bus_attach_event(bus.get(), event, SD_EVENT_PRIORITY_NORMAL) < 0) return nullptr;
    return bus;
}

// Blocks from 128 KiB go back to the system when they are freed. Unless told, the C library stops
// doing so after the first one, and what loading the history took would stay for weeks.
void returnFreedMemory()
{
    (void)mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

// Started with a standard stream closed, the first socket would take its number, and whatever a
// library prints would go to a bus.
void openStandardStreams()
{
    int lowest = open("/dev/null", O_RDWR);
    while (lowest >= 0 && lowest <= STDERR_FILENO) lowest = dup(lowest);
    if (lowest > STDERR_FILENO) (void)close(lowest);
}

int run()
{
    openStandardStreams();
    returnFreedMemory();
    SdEventRunLoop loop;
    const auto session = openBus(sd_bus_open_user, loop.event());
    if (!session) return refuse("no session bus; start it from a desktop session");

    DesktopApplication application(loop, session.get());
    switch (application.claim()) {
        case DesktopApplication::Claim::first:
            break;
        case DesktopApplication::Claim::activated:
            return EXIT_SUCCESS;
        case DesktopApplication::Claim::failed:
            return refuse("the session bus, or the Vorlane that runs already, does not answer");
    }

    const auto system = openBus(sd_bus_open_system, loop.event());
    LinuxServices platform({.loop = loop,
                            .session = session.get(),
                            .system = system.get(),
                            .application = application});
    VorlaneApp app(platform.services());
    const ExitHook saving([&app] { app.terminate(); });
    app.run([&loop] { loop.run(); });
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace vorlane::platform

int main()
{
    return vorlane::platform::run();
}
