// A client that sends forged signals to another client, the victim. The bus delivers every message
// that is addressed to a client, but with the true sender.
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
        roundTrip(loop_, victim_);  // a connection has its unique name once the bus has answered
        roundTrip(loop_, connection.get());
        (void)sd_bus_get_unique_name(victim_, &victimName);
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
    void send(const Signal& forged, const char* types, Arguments... arguments) const
    {
        const auto signal = owned<MessagePointer>([&](sd_bus_message** message) {
            return sd_bus_message_new_signal(connection.get(), message, forged.path,
                                             forged.interface, forged.member);
        });
        EXPECT_GE(sd_bus_message_append(signal.get(), types, arguments...), 0);
        EXPECT_GE(sd_bus_message_set_destination(signal.get(), victimName), 0);
        EXPECT_GE(sd_bus_send(connection.get(), signal.get(), nullptr), 0);
    }

    // A forged NameOwnerChanged, which only the bus may send.
    void sendOwnerChange(const char* service, const char* before, const char* after) const
    {
        send({"/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged"}, "sss", service,
             before, after);
    }

    // Waits until the victim has received all signals and the answers to the calls that they
    // caused.
    void settle() const
    {
        for (int round = 0; round < 3; ++round) {
            roundTrip(loop_, connection.get());
            roundTrip(loop_, victim_);
        }
    }

private:
    const SdEventRunLoop& loop_;
    sd_bus* victim_;
    BusPointer connection;
    const char* victimName = nullptr;
    const char* name_ = nullptr;
};

}  // namespace vorlane::platform
