#include "platform/linux/power/PowerSupplyFolder.h"

#include <dirent.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/linux/base/Systemd.h"
#include "platform/linux/files/Files.h"

namespace vorlane::platform {

namespace {

// The kernel writes at most one page.
constexpr std::size_t largestFile = 65'536;
constexpr std::size_t mostEntries = 1024;

std::string pathIn(std::string folder, std::string_view name)
{
    return folder.append("/").append(name);
}

template <typename Value>
bool hadShortage(const Expected<Value>& outcome)
{
    return !outcome && isShortage(outcome.error());
}

Expected<std::vector<std::string>> entriesOf(const std::string& path)
{
    const std::unique_ptr<DIR, Releaser<closedir>> folder(opendir(path.c_str()));
    if (!folder) return lastError();

    std::vector<std::string> names;
    while (const auto* const entry = readdir(folder.get())) {
        const std::string_view name = static_cast<const char*>(entry->d_name);
        if (!name.starts_with('.')) names.emplace_back(name);
        if (names.size() == mostEntries) break;
    }
    std::ranges::sort(names);
    return names;
}

void addUeventLines(PowerSupply& supply, std::string_view text)
{
    constexpr std::string_view prefix = "POWER_SUPPLY_";
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto equals = line.find('=');
        if (!line.starts_with(prefix) || equals == std::string_view::npos) continue;

        const auto key = line.substr(prefix.size(), equals - prefix.size());
        supply.values.emplace(key, line.substr(equals + 1));  // the first of two TYPE lines wins
    }
}

// Platform drivers add these to a battery, often without listing them in its uevent file.
const std::vector<std::string> driverAttributes{"charge_behaviour", "charge_control_end_threshold",
                                                "charge_types"};

Expected<> addAttribute(PowerSupply& supply, const std::string& folder, const std::string& name)
{
    std::string key = name;
    for (char& letter : key) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    if (name == "uevent" || supply.values.contains(key)) return {};
    auto value = readFile(pathIn(folder, name), largestFile);
    if (!value) return value.error();
    if (value->ends_with('\n')) value->pop_back();
    supply.values.emplace(std::move(key), std::move(*value));
    return {};
}

// Skips attributes that cannot be read.
Expected<> addAttributes(PowerSupply& supply, const std::string& folder,
                         const std::vector<std::string>& names)
{
    for (const auto& name : names) {
        const auto added = addAttribute(supply, folder, name);
        if (hadShortage(added)) return added;
    }
    return {};
}

Expected<PowerSupply> readSupply(const std::string& folder, const std::string& name)
{
    PowerSupply supply{.name = name, .values = {}};
    const auto path = pathIn(folder, name);
    const auto uevent = readFile(pathIn(path, "uevent"), largestFile);
    if (hadShortage(uevent)) return uevent.error();
    if (uevent) addUeventLines(supply, *uevent);

    // If a single property fails, the kernel fails the whole uevent file, and old kernels omit the
    // type from it. Each property also has a file.
    if (!supply.text("TYPE")) {
        const auto names = entriesOf(path);
        const auto added = names ? addAttributes(supply, path, *names) : names.error();
        if (hadShortage(added)) return added.error();
    }
    if (supply.isMachineBattery()) {
        const auto added = addAttributes(supply, path, driverAttributes);
        if (hadShortage(added)) return added.error();
    }
    return supply;
}

}  // namespace

Expected<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder)
{
    const auto names = entriesOf(folder);
    if (!names) return names.error();

    std::vector<PowerSupply> supplies;
    for (const auto& name : *names) {
        auto supply = readSupply(folder, name);
        if (!supply) return supply.error();
        if (!supply->values.empty()) supplies.push_back(std::move(*supply));
    }
    return supplies;
}

bool isShortage(std::errc error)
{
    return error == std::errc::too_many_files_open ||
           error == std::errc::too_many_files_open_in_system ||
           error == std::errc::not_enough_memory;
}

}  // namespace vorlane::platform
