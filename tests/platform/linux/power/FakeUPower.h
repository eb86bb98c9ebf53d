// A fake UPower, which can also send wrong and malformed messages, and hang.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {

class FakeUPower {
public:
    struct Property {
        std::string name;
        char type = 'x';  // a D-Bus type: of a number, 's', or 'a' for an array
        std::int64_t value = 0;
    };

    FakeUPower(const PrivateBus& bus, const SdEventRunLoop& loop);

    std::vector<Property> properties;
    bool hangs = false;      // receives calls and never replies
    bool isGarbled = false;  // replies with something other than a dictionary
    int questions = 0;

    // Emits PropertiesChanged; does not touch `properties`.
    void say(const std::vector<Property>& changed, const char* interface = usualInterface);
    void sayGarbage();

    static constexpr const char* usualInterface = "org.freedesktop.UPower.Device";

private:
    static int onCall(sd_bus_message* call, void* self, sd_bus_error* error);
    int answer(sd_bus_message* call);
    MessagePointer changeSignal();

    BusPointer bus_;
    SlotPointer object;
};

}  // namespace vorlane::platform
