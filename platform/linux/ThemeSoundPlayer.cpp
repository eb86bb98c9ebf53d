#include "platform/linux/ThemeSoundPlayer.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>

extern "C" {  // which the C library's header leaves out up to 2.36
#include <sys/pidfd.h>
}

#include "platform/linux/Installation.h"

namespace vorlane::platform {

namespace {

// What is inherited is the main loop's: its mask, and no use for its input and output.
class Surroundings {
public:
    Surroundings()
    {
        (void)posix_spawnattr_init(&attributes_);
        sigset_t none;
        (void)sigemptyset(&none);
        (void)posix_spawnattr_setsigmask(&attributes_, &none);
        (void)posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK);

        (void)posix_spawn_file_actions_init(&files_);
        for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            (void)posix_spawn_file_actions_addopen(&files_, file, "/dev/null", O_RDWR, 0);
        }
    }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    ~Surroundings()
    {
        (void)posix_spawnattr_destroy(&attributes_);
        (void)posix_spawn_file_actions_destroy(&files_);
    }

    const posix_spawnattr_t* attributes() const { return &attributes_; }
    const posix_spawn_file_actions_t* files() const { return &files_; }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

FileDescriptor start(std::string program, std::string kind, std::string sound)
{
    const std::array<char*, 4> arguments{program.data(), kind.data(), sound.data(), nullptr};
    const Surroundings surroundings;
    pid_t process = 0;
    if (posix_spawn(&process, program.c_str(), surroundings.files(), surroundings.attributes(),
                    arguments.data(), environ) != 0) {
        return {};
    }
    FileDescriptor handle(pidfd_open(process, 0));
    if (!handle) {  // nobody could be told of its end
        (void)kill(process, SIGKILL);
        (void)waitpid(process, nullptr, 0);
    }
    return handle;
}

void bury(int process)
{
    siginfo_t how{};
    (void)waitid(P_PIDFD, static_cast<id_t>(process), &how, WEXITED | WNOHANG);
}

void cut(const FileDescriptor& process)
{
    (void)pidfd_send_signal(process.get(), SIGKILL, nullptr, 0);
}

// Where the loop will not tell of the end: one that is cut off ends within moments.
void cutAndBury(const FileDescriptor& process)
{
    constexpr int patience = 1000;  // milliseconds
    cut(process);
    pollfd end{.fd = process.get(), .events = POLLIN, .revents = 0};
    (void)poll(&end, 1, patience);
    bury(process.get());
}

}  // namespace

ThemeSoundPlayer::ThemeSoundPlayer(sd_event* event, std::string program, SoundFiles files)
    : event_(event), program_(std::move(program)), files_(std::move(files))
{}

ThemeSoundPlayer::~ThemeSoundPlayer()
{
    for (const auto& player : players) cutAndBury(player.process);
}

std::string ThemeSoundPlayer::usualProgram()
{
    return installedPath("lib/vorlane/vorlane-play");
}

void ThemeSoundPlayer::play(const std::string& name)
{
    cutOff();
    const auto file = files_.path(name);
    auto process =
        file ? start(program_, "file", *file) : start(program_, "theme", soundThemeName(name));
    if (process) watch(std::move(process));
}

void ThemeSoundPlayer::cutOff()
{
    for (const auto& player : players) cut(player.process);
}

void ThemeSoundPlayer::watch(FileDescriptor process)
{
    auto& player = players.emplace_back(Player{std::move(process), nullptr, this});
    player.ended = owned<EventSourcePointer>([&](sd_event_source** source) {
        return sd_event_add_io(event_, source, player.process.get(), EPOLLIN, onEnd, &player);
    });
    if (player.ended) return;
    cutAndBury(player.process);
    players.pop_back();
}

int ThemeSoundPlayer::onEnd(sd_event_source* /*source*/, int process, std::uint32_t /*events*/,
                            void* player)
{
    bury(process);
    auto* const ended = static_cast<Player*>(player);
    ended->owner->players.remove_if([ended](const Player& one) { return &one == ended; });
    return 0;
}

}  // namespace vorlane::platform
