#include "fuzz/LoneBus.h"

#include <sys/socket.h>

#include <array>
#include <string_view>
#include <utility>

#include "fuzz/Require.h"

namespace vorlane::fuzz {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";

BusPointer newBus()
{
    return platform::owned<BusPointer>(sd_bus_new);
}

}  // namespace

LoneBus::LoneBus(Listener callback) : listener(std::move(callback)), near(newBus()), far(newBus())
{
    std::array<int, 2> ends{};
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0,
            "a socket pair can be created");
    constexpr sd_id128_t id = {.bytes = {0x5c, 0x3a, 0x10, 0x2e, 0x77, 0x0b, 0x4d, 0x1f, 0x8a, 0x66,
                                         0x21, 0x90, 0x0f, 0x4e, 0xb1, 0x7d}};
    const bool made = sd_bus_set_fd(far.get(), ends[1], ends[1]) >= 0 &&
                      sd_bus_set_server(far.get(), 1, id) >= 0 &&
                      sd_bus_set_anonymous(far.get(), 1) >= 0 && sd_bus_start(far.get()) >= 0 &&
                      sd_bus_set_fd(near.get(), ends[0], ends[0]) >= 0 &&
                      sd_bus_set_bus_client(near.get(), 1) >= 0 && sd_bus_start(near.get()) >= 0;
    require(made, "both ends can be started");
    filter = platform::owned<SlotPointer>(
        [this](sd_bus_slot** slot) { return sd_bus_add_filter(far.get(), slot, onCall, this); });
    settle();
    require(sd_bus_is_ready(near.get()) > 0, "the program has joined the bus");
}

void LoneBus::settle() const
{
    bool busy = true;
    while (busy) {
        busy = sd_bus_process(near.get(), nullptr) > 0;
        busy = sd_bus_process(far.get(), nullptr) > 0 || busy;
    }
    requireOpen();
}

void LoneBus::serve() const
{
    constexpr std::uint64_t moment = 300;  // microseconds
    while (sd_bus_process(far.get(), nullptr) > 0) continue;
    (void)sd_bus_wait(far.get(), moment);
    while (sd_bus_process(far.get(), nullptr) > 0) continue;
}

MessagePointer LoneBus::signal(const char* sender, const char* path, const char* interface,
                               const char* member) const
{
    auto message = platform::owned<MessagePointer>([&](sd_bus_message** signal) {
        return sd_bus_message_new_signal(far.get(), signal, path, interface, member);
    });
    if (message) (void)sd_bus_message_set_sender(message.get(), sender);
    return message;
}

MessagePointer LoneBus::reply(sd_bus_message* call, const std::string& sender)
{
    auto message = platform::owned<MessagePointer>(
        [&](sd_bus_message** made) { return sd_bus_message_new_method_return(call, made); });
    if (message) (void)sd_bus_message_set_sender(message.get(), sender.c_str());
    return message;
}

void LoneBus::send(const MessagePointer& message) const
{
    if (message) (void)sd_bus_send(far.get(), message.get(), nullptr);
}

void LoneBus::requireOpen() const
{
    require(sd_bus_is_open(near.get()) > 0, "no message ends the connection");
}

int LoneBus::onCall(sd_bus_message* call, void* userdata, sd_bus_error* /*error*/)
{
    const auto& self = *static_cast<LoneBus*>(userdata);
    if (sd_bus_message_is_method_call(call, nullptr, nullptr) <= 0) return 0;
    if (!self.answerAsBus(call)) self.listener(call);
    return 1;
}

bool LoneBus::answerAsBus(sd_bus_message* call) const
{
    const char* const destination = sd_bus_message_get_destination(call);
    const std::string_view member = sd_bus_message_get_member(call);
    if (destination == nullptr || std::string_view(destination) != busName) return false;
    if (member == "GetNameOwner" || member == "ListActivatableNames") return false;

    const auto answer = reply(call, busName);
    if (member == "Hello") (void)sd_bus_message_append(answer.get(), "s", ":1.1");
    if (member == "RequestName") (void)sd_bus_message_append(answer.get(), "u", 1U);
    send(answer);
    return true;
}

}  // namespace vorlane::fuzz
