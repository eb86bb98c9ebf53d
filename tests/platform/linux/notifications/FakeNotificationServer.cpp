#include "tests/platform/linux/notifications/FakeNotificationServer.h"

#include <gtest/gtest.h>

#include <string_view>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

std::string readString(sd_bus_message* call)
{
    const char* text = nullptr;
    EXPECT_GT(sd_bus_message_read(call, "s", &text), 0);
    return text ? text : "";
}

// Reads a hint as "type value".
std::string readVariant(sd_bus_message* call)
{
    const char* type = "";
    EXPECT_GT(sd_bus_message_peek_type(call, nullptr, &type), 0);
    const std::string kind = type;
    EXPECT_GT(sd_bus_message_enter_container(call, 'v', type), 0);
    const char* text = "";
    std::uint8_t byte = 0;
    int flag = 0;
    void* const value =
        kind == "s" ? static_cast<void*>(&text) : (kind == "y" ? static_cast<void*>(&byte) : &flag);
    EXPECT_GT(sd_bus_message_read_basic(call, kind[0], value), 0);
    EXPECT_GT(sd_bus_message_exit_container(call), 0);
    if (kind == "s") return kind + " " + text;
    return kind + " " + std::to_string(kind == "y" ? byte : flag);
}

FakeNotificationServer::Notification readNotification(sd_bus_message* call)
{
    FakeNotificationServer::Notification read;
    read.applicationName = readString(call);
    EXPECT_GT(sd_bus_message_read(call, "u", &read.replaces), 0);
    read.icon = readString(call);
    read.title = readString(call);
    read.body = readString(call);

    EXPECT_GT(sd_bus_message_enter_container(call, 'a', "s"), 0);
    while (sd_bus_message_at_end(call, 0) == 0) read.actions.push_back(readString(call));
    EXPECT_GT(sd_bus_message_exit_container(call), 0);

    EXPECT_GT(sd_bus_message_enter_container(call, 'a', "{sv}"), 0);
    while (sd_bus_message_enter_container(call, 'e', "sv") > 0) {
        const auto name = readString(call);
        read.hints[name] = readVariant(call);
        EXPECT_GT(sd_bus_message_exit_container(call), 0);
    }
    EXPECT_GT(sd_bus_message_exit_container(call), 0);
    EXPECT_GT(sd_bus_message_read(call, "i", &read.timeout), 0);
    return read;
}

}  // namespace

const sd_bus_vtable FakeNotificationServer::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("GetCapabilities", "", "as", &FakeNotificationServer::getCapabilities,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", &FakeNotificationServer::notify,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("CloseNotification", "u", "", &FakeNotificationServer::closeNotification,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

void FakeNotificationServer::start()
{
    connection = bus_.connect(loop_);
    ASSERT_TRUE(connection);
    ASSERT_GE(sd_bus_add_object_vtable(connection.get(), nullptr, path, service, vtable, this), 0);
    ASSERT_GE(sd_bus_request_name(connection.get(), service,
                                  SD_BUS_NAME_REPLACE_EXISTING | SD_BUS_NAME_ALLOW_REPLACEMENT),
              0);
}

void FakeNotificationServer::answerLate()
{
    for (const auto& call : std::exchange(unanswered, {})) {
        const std::string_view member = sd_bus_message_get_member(call.get());
        if (member == "Notify") {
            EXPECT_GE(sd_bus_reply_method_return(call.get(), "u", ++lastId), 0);
        } else {
            EXPECT_GE(replyWithCapabilities(call.get()), 0);
        }
    }
}

void FakeNotificationServer::invoke(std::uint32_t id, const char* action) const
{
    EXPECT_GE(
        sd_bus_emit_signal(connection.get(), path, service, "ActionInvoked", "us", id, action), 0);
}

void FakeNotificationServer::emit(const char* signal, const char* types, std::uint32_t id,
                                  std::uint32_t reason) const
{
    EXPECT_GE(sd_bus_emit_signal(connection.get(), path, service, signal, types, id, reason), 0);
}

int FakeNotificationServer::getCapabilities(sd_bus_message* call, void* self, sd_bus_error*)
{
    auto* const server = static_cast<FakeNotificationServer*>(self);
    ++server->capabilityCalls;
    if (server->aboutCapabilities != Answer::proper) {
        return server->answerBadly(server->aboutCapabilities, call);
    }
    return server->replyWithCapabilities(call);
}

int FakeNotificationServer::notify(sd_bus_message* call, void* self, sd_bus_error*)
{
    auto* const server = static_cast<FakeNotificationServer*>(self);
    server->calls.emplace_back("Notify");
    server->received.push_back(readNotification(call));
    if (server->aboutNotifications != Answer::proper) {
        return server->answerBadly(server->aboutNotifications, call);
    }
    return sd_bus_reply_method_return(call, "u", ++server->lastId);
}

int FakeNotificationServer::closeNotification(sd_bus_message* call, void* self, sd_bus_error*)
{
    auto* const server = static_cast<FakeNotificationServer*>(self);
    std::uint32_t id = 0;
    EXPECT_GT(sd_bus_message_read(call, "u", &id), 0);
    server->calls.emplace_back("CloseNotification");
    server->closed.push_back(id);
    return sd_bus_reply_method_return(call, "");
}

int FakeNotificationServer::replyWithCapabilities(sd_bus_message* call) const
{
    const auto reply = owned<MessagePointer>(
        [&](sd_bus_message** message) { return sd_bus_message_new_method_return(call, message); });
    EXPECT_GE(sd_bus_message_open_container(reply.get(), 'a', "s"), 0);
    for (const auto& name : capabilities) {
        EXPECT_GE(sd_bus_message_append(reply.get(), "s", name.c_str()), 0);
    }
    EXPECT_GE(sd_bus_message_close_container(reply.get()), 0);
    return sd_bus_send(nullptr, reply.get(), nullptr);
}

int FakeNotificationServer::answerBadly(Answer answer, sd_bus_message* call)
{
    if (answer == Answer::error) return sd_bus_reply_method_errorf(call, error, "as requested");
    if (answer == Answer::nonsense) return sd_bus_reply_method_return(call, "d", 0.5);

    unanswered.emplace_back(sd_bus_message_ref(call));
    if (answer == Answer::death) {
        loop_.async([this] {
            unanswered.clear();
            stop();
        });
    }
    return 1;
}

}  // namespace vorlane::platform
