// One power supply as the kernel describes it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vorlane::platform {

// Keys are those of the kernel's `uevent` file without their POWER_SUPPLY_ prefix; the file
// Documentation/ABI/testing/sysfs-class-power of the kernel says what they mean.
struct PowerSupply {
    std::string name;
    std::map<std::string, std::string, std::less<>> values;

    // Trimmed; absent when empty.
    std::optional<std::string> text(std::string_view key) const;

    // Absent unless the whole value is a number that fits.
    std::optional<std::int64_t> integer(std::string_view key) const;

    // Belongs to a mouse or headset, so it is neither the laptop's battery nor its adapter.
    // `PowerSupplyEvents` applies the same test to events.
    bool isPeripheral() const;

    // A battery in a bay of the machine itself.
    bool isMachineBattery() const;

    // Can power the machine from outside.
    bool isAdapter() const;
    bool isMains() const;
    bool isUsb() const;
};

}  // namespace vorlane::platform
