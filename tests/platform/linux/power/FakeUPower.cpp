#include "tests/platform/linux/power/FakeUPower.h"

#include <gtest/gtest.h>

#include <string_view>

namespace vorlane::platform {

namespace {

constexpr const char* path = "/org/freedesktop/UPower/devices/DisplayDevice";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

void appendVariant(sd_bus_message* message, const FakeUPower::Property& property)
{
    switch (property.type) {
        case 'u':
            sd_bus_message_append(message, "v", "u", static_cast<std::uint32_t>(property.value));
            return;
        case 't':
            sd_bus_message_append(message, "v", "t", static_cast<std::uint64_t>(property.value));
            return;
        case 'd':
            sd_bus_message_append(message, "v", "d", static_cast<double>(property.value));
            return;
        case 's':
            sd_bus_message_append(message, "v", "s", "soon");
            return;
        case 'a':  // an array
            sd_bus_message_append(message, "v", "ai", 2, 1, 2);
            return;
        default:
            sd_bus_message_append(message, "v", "x", property.value);
    }
}

void append(sd_bus_message* message, const std::vector<FakeUPower::Property>& properties)
{
    sd_bus_message_open_container(message, 'a', "{sv}");
    for (const auto& property : properties) {
        sd_bus_message_open_container(message, 'e', "sv");
        sd_bus_message_append(message, "s", property.name.c_str());
        appendVariant(message, property);
        sd_bus_message_close_container(message);
    }
    sd_bus_message_close_container(message);
}

}  // namespace

FakeUPower::FakeUPower(const PrivateBus& bus, const SdEventRunLoop& loop) : bus_(bus.connect(loop))
{
    object = owned<SlotPointer>([this](sd_bus_slot** slot) {
        return sd_bus_add_object(bus_.get(), slot, path, onCall, this);
    });
    EXPECT_GE(sd_bus_request_name(bus_.get(), "org.freedesktop.UPower", 0), 0);
}

void FakeUPower::say(const std::vector<Property>& changed, const char* interface)
{
    const auto signal = changeSignal();
    sd_bus_message_append(signal.get(), "s", interface);
    append(signal.get(), changed);
    sd_bus_message_append(signal.get(), "as", 0);
    EXPECT_GE(sd_bus_send(bus_.get(), signal.get(), nullptr), 0);
}

void FakeUPower::sayGarbage()
{
    const auto empty = changeSignal();
    EXPECT_GE(sd_bus_send(bus_.get(), empty.get(), nullptr), 0);

    const auto wrong = changeSignal();
    sd_bus_message_append(wrong.get(), "sai", usualInterface, 2, 1, 2);
    EXPECT_GE(sd_bus_send(bus_.get(), wrong.get(), nullptr), 0);
}

int FakeUPower::onCall(sd_bus_message* call, void* self, sd_bus_error* /*error*/)
{
    return static_cast<FakeUPower*>(self)->answer(call);
}

int FakeUPower::answer(sd_bus_message* call)
{
    if (!sd_bus_message_is_method_call(call, propertiesInterface, "GetAll")) return 0;
    ++questions;
    if (hangs) return 1;
    if (isGarbled) return sd_bus_reply_method_return(call, "su", "what?", 7);

    const auto reply = owned<MessagePointer>(
        [&](sd_bus_message** message) { return sd_bus_message_new_method_return(call, message); });
    append(reply.get(), properties);
    return sd_bus_send(bus_.get(), reply.get(), nullptr);
}

MessagePointer FakeUPower::changeSignal()
{
    return owned<MessagePointer>([this](sd_bus_message** message) {
        return sd_bus_message_new_signal(bus_.get(), message, path, propertiesInterface,
                                         "PropertiesChanged");
    });
}

}  // namespace vorlane::platform
