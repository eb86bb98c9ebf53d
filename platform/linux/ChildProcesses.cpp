#include "platform/linux/ChildProcesses.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <utility>

extern "C" {  // which the C library's header leaves out up to 2.36
#include <sys/pidfd.h>
}

namespace vorlane::platform {

namespace {

// A child would otherwise inherit the signals that the main loop blocks, and all its streams.
class SpawnOptions {
public:
    explicit SpawnOptions(const ChildProcesses::Program& program)
    {
        (void)posix_spawnattr_init(&attributes_);
        sigset_t none;
        (void)sigemptyset(&none);
        (void)posix_spawnattr_setsigmask(&attributes_, &none);
        (void)posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK);

        (void)posix_spawn_file_actions_init(&files_);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            if (!program.isQuiet) break;
            (void)posix_spawn_file_actions_addopen(&files_, stream, "/dev/null", O_RDWR, 0);
        }
        if (program.passed < 0) return;
        (void)posix_spawn_file_actions_adddup2(&files_, program.passed, ChildProcesses::passedAs);
    }
    SpawnOptions(const SpawnOptions&) = delete;
    SpawnOptions& operator=(const SpawnOptions&) = delete;
    ~SpawnOptions()
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

FileDescriptor spawn(ChildProcesses::Program program)
{
    std::vector<char*> arguments;
    for (auto& word : program.words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const SpawnOptions options(program);
    pid_t id = 0;
    if (posix_spawn(&id, arguments[0], options.files(), options.attributes(), arguments.data(),
                    environ) != 0) {
        return {};
    }
    FileDescriptor process(pidfd_open(id, 0));
    if (!process) {  // its exit could not be noticed
        (void)kill(id, SIGKILL);
        (void)waitpid(id, nullptr, 0);
    }
    return process;
}

int reap(int process)
{
    siginfo_t result{};
    (void)waitid(P_PIDFD, static_cast<id_t>(process), &result, WEXITED | WNOHANG);
    return result.si_code == CLD_EXITED ? result.si_status : -1;
}

void killOnly(const FileDescriptor& process)
{
    (void)pidfd_send_signal(process.get(), SIGKILL, nullptr, 0);
}

// Without the loop. A killed process exits within moments.
void killAndReap(const FileDescriptor& process)
{
    constexpr int longest = 1000;  // milliseconds
    killOnly(process);
    pollfd exit{.fd = process.get(), .events = POLLIN, .revents = 0};
    (void)poll(&exit, 1, longest);
    (void)reap(process.get());
}

}  // namespace

ChildProcesses::~ChildProcesses()
{
    for (const auto& child : children) killAndReap(child.process);
}

bool ChildProcesses::start(Program program, Exited exited)
{
    auto process = spawn(std::move(program));
    if (!process) return false;
    auto& child =
        children.emplace_back(Child{std::move(process), nullptr, std::move(exited), this});
    child.exit = owned<EventSourcePointer>([&](sd_event_source** source) {
        return sd_event_add_io(event_, source, child.process.get(), EPOLLIN, onExit, &child);
    });
    if (child.exit) return true;
    killAndReap(child.process);
    children.pop_back();
    return false;
}

void ChildProcesses::killAll()
{
    for (const auto& child : children) killOnly(child.process);
}

int ChildProcesses::onExit(sd_event_source* /*source*/, int process, std::uint32_t /*events*/,
                           void* child)
{
    const int code = reap(process);
    auto* const gone = static_cast<Child*>(child);
    const auto exited = std::move(gone->exited);
    gone->owner->children.remove_if([gone](const Child& one) { return &one == gone; });
    if (exited) exited(code);
    return 0;
}

}  // namespace vorlane::platform
