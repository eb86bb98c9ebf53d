#include "tests/platform/linux/support/PrivateBus.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <array>
#include <chrono>

#include "platform/linux/base/FileDescriptor.h"

namespace vorlane::platform {

namespace {

std::string configuration(const std::filesystem::path& folder)
{
    return "<busconfig><type>session</type><auth>EXTERNAL</auth><listen>unix:path=" +
           (folder / "bus").string() + "</listen><servicedir>" + (folder / "services").string() +
           "</servicedir><policy context=\"default\"><allow own=\"*\"/>"
           "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
           "</policy></busconfig>";
}

// Calls only functions that are safe between fork and exec.
[[noreturn]] void runDaemon(const char* config, const char* print)
{
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);  // also when the test crashes
    sigset_t none;
    (void)sigemptyset(&none);
    (void)sigprocmask(SIG_SETMASK, &none, nullptr);                      // SIGHUP makes it reload
    (void)dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);  // it warns of low limits
    (void)execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", "--nosyslog", config,
                 print, nullptr);
    _exit(127);
}

}  // namespace

PrivateBus::PrivateBus(const std::vector<Service>& services)
{
    std::filesystem::create_directory(folder.path() / "services");
    for (const auto& service : services) add(service);
    start();
}

void PrivateBus::start()
{
    folder.write("bus.conf", configuration(folder.path()));
    const auto config = "--config-file=" + (folder.path() / "bus.conf").string();

    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    (void)fcntl(reading.get(), F_SETFD, FD_CLOEXEC);
    const auto print = "--print-address=" + std::to_string(writing.get());
    daemon = fork();
    if (daemon == 0) runDaemon(config.c_str(), print.c_str());
    writing.reset();
    ASSERT_GT(daemon, 0);

    // The daemon prints its address once it listens.
    std::array<char, 512> text{};
    const auto length = read(reading.get(), text.data(), text.size());
    ASSERT_GT(length, 0) << "dbus-daemon did not start";
    address_.assign(text.data(), static_cast<std::size_t>(length));
    address_.resize(address_.find_last_not_of('\n') + 1);
}

PrivateBus::~PrivateBus()
{
    end();
}

void PrivateBus::end()
{
    if (daemon <= 0) return;
    (void)kill(daemon, SIGKILL);
    (void)waitpid(daemon, nullptr, 0);
    daemon = 0;
}

void PrivateBus::stop() const
{
    if (daemon > 0) (void)kill(daemon, SIGSTOP);
}

void PrivateBus::resume() const
{
    if (daemon > 0) (void)kill(daemon, SIGCONT);
}

void PrivateBus::add(const Service& service) const
{
    folder.write("services/" + service.name + ".service",
                 "[D-BUS Service]\nName=" + service.name + "\nExec=" + service.command + "\n");
}

BusPointer PrivateBus::connect(const SdEventRunLoop& loop) const
{
    auto bus = owned<BusPointer>(sd_bus_new);
    if (sd_bus_set_address(bus.get(), address_.c_str()) < 0 ||
        sd_bus_set_bus_client(bus.get(), 1) < 0 || sd_bus_start(bus.get()) < 0 ||
        sd_bus_attach_event(bus.get(), loop.event(), SD_EVENT_PRIORITY_NORMAL) < 0) {
        ADD_FAILURE() << "cannot connect to " << address_;
        return nullptr;
    }
    return bus;
}

bool runUntil(const SdEventRunLoop& loop, const std::function<bool()>& condition)
{
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        const auto left = deadline - std::chrono::steady_clock::now();
        const auto patience = std::chrono::duration_cast<std::chrono::microseconds>(left).count();
        if (patience <= 0) {
            ADD_FAILURE() << "it did not happen";
            return false;
        }
        (void)sd_event_run(loop.event(), static_cast<std::uint64_t>(patience));
    }
    return true;
}

void roundTrip(const SdEventRunLoop& loop, sd_bus* connection)
{
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        return sd_bus_message_new_method_call(connection, message, "org.freedesktop.DBus",
                                              "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                              "GetId");
    });
    EXPECT_TRUE(answer(loop, call.get()));
}

MessagePointer answer(const SdEventRunLoop& loop, sd_bus_message* call)
{
    struct Waiting {
        MessagePointer reply;
        void arrived(sd_bus_message* message) { reply.reset(sd_bus_message_ref(message)); }
    } waiting;
    const auto slot = owned<SlotPointer>([&](sd_bus_slot** handle) {
        return sd_bus_call_async(sd_bus_message_get_bus(call), handle, call,
                                 onMessage<Waiting, &Waiting::arrived>, &waiting, 0);
    });
    EXPECT_TRUE(slot);
    if (slot) runUntil(loop, [&] { return waiting.reply != nullptr; });
    return std::move(waiting.reply);
}

}  // namespace vorlane::platform
