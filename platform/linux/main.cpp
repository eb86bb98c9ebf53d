// Starts the resident program: claims the single instance, creates the platform's services and runs
// the main loop.
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "App/VorlaneApp.h"
#include "platform/linux/CommandLine.h"
#include "platform/linux/LinuxServices.h"
#include "platform/linux/base/Installation.h"
#include "platform/linux/base/TimeZone.h"

namespace vorlane::platform {
namespace {

BusPointer openBus(int (*opening)(sd_bus**), sd_event* event)
{
    auto bus = owned<BusPointer>(opening);
    if (bus && sd_bus_attach_event(bus.get(), event, SD_EVENT_PRIORITY_NORMAL) < 0) return nullptr;
    return bus;
}

// Makes the C library return blocks of 128 KiB and more to the system when they are freed. By
// default it raises that threshold with the first such block, and the memory that loading the
// history took would be kept for weeks.
void returnFreedMemory()
{
    (void)mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

// If a standard stream were closed, the first socket would get its number, and output of libraries
// would go to a bus.
void openStandardStreams()
{
    int lowest = open("/dev/null", O_RDWR);
    while (lowest >= 0 && lowest <= STDERR_FILENO) lowest = dup(lowest);
    if (lowest > STDERR_FILENO) (void)close(lowest);
}

// Makes a write beyond the limit on file sizes fail, as on a full disk. By default, the kernel
// kills the program.
void outliveFileSizeLimits()
{
    (void)std::signal(SIGXFSZ, SIG_IGN);
}

enum class End { failed, done, restart, restartAndOpen };

End refuse(const char* reason)
{
    (void)std::fprintf(stderr, "vorlane: %s\n", reason);
    return End::failed;
}

End endOf(const DesktopApplication& application)
{
    const auto action = application.restarting();
    if (!action) return End::done;
    return *action == MenuAction::open ? End::restartAndOpen : End::restart;
}

// Call after `run`, which has closed the connection to the session bus.
int restartInPlace(const std::string& program, bool open)
{
    (void)execl(program.c_str(), program.c_str(), open ? "--open" : nullptr, nullptr);
    (void)refuse("cannot restart");
    return EXIT_FAILURE;
}

End run(MenuAction action)
{
    openStandardStreams();
    outliveFileSizeLimits();
    returnFreedMemory();
    followSystemTimeZone();
    SdEventRunLoop loop;
    const auto session = openBus(sd_bus_open_user, loop.event());
    if (!session) return refuse("no session bus; start it from a desktop session");

    DesktopApplication application(loop, session.get());
    switch (application.claim(action)) {
        case DesktopApplication::Claim::first:
            break;
        case DesktopApplication::Claim::activated:
            return End::done;
        case DesktopApplication::Claim::failed:
            return refuse("the session bus or the running instance does not answer");
    }

    if (action == MenuAction::quit) return End::done;  // no instance was running

    LinuxServices platform(
        {.loop = loop,
         .session = session.get(),
         .openSystem = [&loop] { return openBus(sd_bus_open_system, loop.event()); },
         .application = application});
    VorlaneApp app(platform.services());
    application.waitToRestartUntil([&] { return app.canRestart() && platform.showsLastReading(); });
    application.perform(action);
    app.run([&loop] { loop.run(); });
    platform.finish();
    if (application.isRestarting()) platform.handOver();
    return endOf(application);
}

int start(const CommandLine& commandLine)
{
    const auto program = programPath().string();  // read now, before an upgrade replaces the file
    switch (run(commandLine.action)) {
        case End::failed:
            return EXIT_FAILURE;
        case End::done:
            return EXIT_SUCCESS;
        case End::restart:
            return restartInPlace(program, false);
        case End::restartAndOpen:
            return restartInPlace(program, true);
    }
    return EXIT_FAILURE;
}

int print(const char* text)
{
    const bool arrived = std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
    return arrived ? EXIT_SUCCESS : EXIT_FAILURE;
}

int follow(const CommandLine& commandLine)
{
    switch (commandLine.kind) {
        case CommandLine::Kind::start:
            return start(commandLine);
        case CommandLine::Kind::help:
            return print(commandLineHelp);
        case CommandLine::Kind::version:
            return print("vorlane " VORLANE_VERSION "\n");
        case CommandLine::Kind::unknown:
            (void)std::fputs(commandLineHelp, stderr);
            return 2;
    }
    return EXIT_FAILURE;
}

}  // namespace
}  // namespace vorlane::platform

int main(int count, char** words)
{
    using namespace vorlane::platform;
    return follow(readCommandLine({words + (count > 0), words + count}));
}
