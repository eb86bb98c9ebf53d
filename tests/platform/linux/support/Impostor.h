// A client that says to one other what only the bus or a service may say. The bus delivers what is
// addressed to somebody whatever he listens to, and writes the true sender on it alone.
#pragma once

#include <gtest/gtest.h>

#include "platform/linux/base/Systemd.h"
#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {

class Impostor {
public:
    Impostor(const PrivateBus& bus, const SdEventRunLoop& loop, sd_bus* victim)
        : loop_(loop), victim_(victim), connection(bus.connect(loop))
    {
        ping(victim_);  // it has its name then
        ping(connection.get());
        (void)sd_bus_get_unique_name(victim_, &whom);
        (void)sd_bus_get_unique_name(connection.get(), &name_);
    }

    const char* name() const { return name_; }
    sd_bus* bus() const { return connection.get(); }

    struct Signal {
        const char* path;
        const char* interface;
        const char* member;
    };

    template <typename... Arguments>
    void say(const Signal& what, const char* types, Arguments... arguments) const
    {
        const auto signal = owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_signal(connection.get(), message, what.path, what.interface,
                                             what.member);
        });
        EXPECT_GE(sd_bus_message_append(signal.get(), types, arguments...), 0);
        EXPECT_GE(sd_bus_message_set_destination(signal.get(), whom), 0);
        EXPECT_GE(sd_bus_send(connection.get(), signal.get(), nullptr), 0);
    }

    // As the bus would tell of it.
    void tellOfOwner(const char* service, const char* before, const char* after) const
    {
        say({"/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged"}, "sss", service,
            before, after);
    }

    // Until the victim has heard all that was said, and the answers to what it asked then.
    void settle() const
    {
        for (int round = 0; round < 3; ++round) {
            ping(connection.get());
            ping(victim_);
        }
    }

private:
    void ping(sd_bus* end) const
    {
        const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_method_call(end, message, "org.freedesktop.DBus", "/",
                                                  "org.freedesktop.DBus.Peer", "Ping");
        });
        EXPECT_TRUE(answer(loop_, call.get()));
    }

    const SdEventRunLoop& loop_;
    sd_bus* victim_;
    BusPointer connection;
    const char* whom = nullptr;
    const char* name_ = nullptr;
};

}  // namespace vorlane::platform
