// A fake notification server that answers, hangs, replies with an error or nonsense, or dies.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/base/Systemd.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {

class FakeNotificationServer {
public:
    struct Notification {
        std::string applicationName;
        std::uint32_t replaces = 0;
        std::string icon;
        std::string title;
        std::string body;
        std::vector<std::string> actions;
        std::map<std::string, std::string> hints;  // "type value"
        std::int32_t timeout = 0;
    };

    enum class Answer { proper, none, error, nonsense, death };

    FakeNotificationServer(const PrivateBus& bus, SdEventRunLoop& loop) : bus_(bus), loop_(loop) {}

    std::vector<std::string> capabilities{"actions", "body"};
    Answer aboutCapabilities = Answer::proper;
    Answer aboutNotifications = Answer::proper;
    const char* error = "org.freedesktop.DBus.Error.Failed";
    std::uint32_t lastId = 0;

    int capabilityCalls = 0;
    std::vector<Notification> received;
    std::vector<std::uint32_t> closed;
    std::vector<std::string> calls;  // "Notify" and "CloseNotification", in order

    void start();
    void stop() { connection.reset(); }

    // Answers all unanswered calls in order.
    void answerLate();

    void invoke(std::uint32_t id, const char* action) const;
    void emit(const char* signal, const char* types, std::uint32_t id, std::uint32_t reason) const;

    sd_bus* bus() const { return connection.get(); }

private:
    static int getCapabilities(sd_bus_message* call, void* self, sd_bus_error* error);
    static int notify(sd_bus_message* call, void* self, sd_bus_error* error);
    static int closeNotification(sd_bus_message* call, void* self, sd_bus_error* error);
    int replyWithCapabilities(sd_bus_message* call) const;
    int answerBadly(Answer answer, sd_bus_message* call);

    static const sd_bus_vtable vtable[];

    const PrivateBus& bus_;
    SdEventRunLoop& loop_;
    BusPointer connection;
    std::vector<MessagePointer> unanswered;
};

}  // namespace vorlane::platform
