// Power supplies as the kernel would describe them.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/linux/power/PowerSupply.h"

namespace vorlane::platform {

using Values = std::map<std::string, std::string, std::less<>>;

inline PowerSupply supply(std::string name, Values values)
{
    return {.name = std::move(name), .values = std::move(values)};
}

inline PowerSupply battery(Values values, std::string name = "BAT0")
{
    values.emplace("TYPE", "Battery");
    return supply(std::move(name), std::move(values));
}

inline PowerSupply mains(const char* online)
{
    return supply("AC", {{"TYPE", "Mains"}, {"ONLINE", online}});
}

}  // namespace vorlane::platform
