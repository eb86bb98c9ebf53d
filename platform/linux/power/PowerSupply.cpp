#include "platform/linux/power/PowerSupply.h"

#include <charconv>

namespace vorlane::platform {

std::optional<std::string> PowerSupply::text(std::string_view key) const
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto found = values.find(key);
    if (found == values.end()) return std::nullopt;

    const auto& value = found->second;
    const auto first = value.find_first_not_of(blanks);
    if (first == std::string::npos) return std::nullopt;
    return value.substr(first, value.find_last_not_of(blanks) - first + 1);
}

std::optional<std::int64_t> PowerSupply::integer(std::string_view key) const
{
    const auto digits = text(key);
    if (!digits) return std::nullopt;

    std::int64_t number = 0;
    const char* const end = digits->data() + digits->size();
    const auto [stopped, error] = std::from_chars(digits->data(), end, number);
    if (error != std::errc{} || stopped != end) return std::nullopt;
    return number;
}

bool PowerSupply::isPeripheral() const
{
    return text("SCOPE") == "Device";
}

bool PowerSupply::isMachineBattery() const
{
    // An empty bay may still claim a capacity.
    return text("TYPE") == "Battery" && !isPeripheral() && integer("PRESENT") != 0;
}

bool PowerSupply::isAdapter() const
{
    return !isPeripheral() && (isMains() || isUsb() || text("TYPE") == "Wireless");
}

bool PowerSupply::isMains() const
{
    return text("TYPE") == "Mains";
}

bool PowerSupply::isUsb() const
{
    // Older kernels add the type of charger: USB_DCP, USB_PD and others.
    return text("TYPE").value_or("").starts_with("USB");
}

}  // namespace vorlane::platform
