// A fake tray: reads the properties of an object, calls its methods and receives its signals.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/base/Systemd.h"
#include "tests/platform/linux/support/MessageText.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {

class TrayClient {
public:
    struct Target {
        sd_bus* owner;
        const char* path;
        const char* interface;
    };

    std::vector<std::string> signals;  // with their arguments

    TrayClient(const SdEventRunLoop& loop, sd_bus* connection, Target target)
        : loop_(loop), connection_(connection), target_(target)
    {
        (void)sd_bus_get_unique_name(target_.owner, &destination);
        slot = owned<SlotPointer>([this](sd_bus_slot** handle) {
            return sd_bus_match_signal(connection_, handle, destination, target_.path, nullptr,
                                       nullptr, onMessage<TrayClient, &TrayClient::heard>, this);
        });
    }

    // The text of the reply, or the name of the error.
    template <typename... Arguments>
    std::string call(const char* method, const char* types, Arguments... arguments) const
    {
        return send(target_.interface, method, types, arguments...);
    }

    std::string property(const char* name) const
    {
        return send("org.freedesktop.DBus.Properties", "Get", "ss", target_.interface, name);
    }

    std::string properties() const
    {
        return send("org.freedesktop.DBus.Properties", "GetAll", "s", target_.interface);
    }

    // Waits until all signals sent so far have arrived.
    void settle() const { (void)send("org.freedesktop.DBus.Peer", "Ping", ""); }

    std::vector<std::string> newSignals()
    {
        settle();
        return std::exchange(signals, {});
    }

private:
    template <typename... Arguments>
    std::string send(const char* interface, const char* method, const char* types,
                     Arguments... arguments) const
    {
        const auto message = owned<MessagePointer>([&](sd_bus_message** handle) {
            return sd_bus_message_new_method_call(connection_, handle, destination, target_.path,
                                                  interface, method);
        });
        EXPECT_TRUE(message);
        EXPECT_GE(sd_bus_message_append(message.get(), types, arguments...), 0) << method;
        const auto reply = answer(loop_, message.get());
        return messageText(reply.get());
    }

    void heard(sd_bus_message* signal)
    {
        signals.push_back(sd_bus_message_get_member(signal) + messageText(signal));
    }

    const SdEventRunLoop& loop_;
    sd_bus* connection_;
    Target target_;
    const char* destination = nullptr;
    SlotPointer slot;
};

}  // namespace vorlane::platform
