#include "platform/linux/power/PowerSupplyFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/linux/base/FileDescriptor.h"

namespace vorlane::platform {

namespace {

// The kernel writes at most one page; more than this is no supply of the kernel's.
constexpr std::size_t largestFile = 65536;
constexpr std::size_t mostEntries = 1024;

struct FolderCloser {
    void operator()(DIR* folder) const { (void)closedir(folder); }
};

std::string pathIn(std::string folder, std::string_view name)
{
    return folder.append("/").append(name);
}

// Absent for anything but a plain file of a sensible size.
std::optional<std::string> contentsOf(const std::string& path)
{
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file || fstat(file.get(), &status) != 0) return std::nullopt;
    if (!S_ISREG(status.st_mode)) return std::nullopt;

    std::string text;
    std::array<char, 4096> piece{};
    while (text.size() <= largestFile) {
        const auto count = read(file.get(), piece.data(), piece.size());
        if (count < 0) return std::nullopt;
        if (count == 0) return text;
        text.append(piece.data(), static_cast<std::size_t>(count));
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> entriesOf(const std::string& path)
{
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(path.c_str()));
    if (!folder) return std::nullopt;

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
        supply.values.emplace(key, line.substr(equals + 1));  // the first of two TYPE lines
    }
}

// Platform drivers add these to a battery, often without a line of its uevent file.
constexpr std::array besideUevent{"charge_behaviour", "charge_control_end_threshold",
                                  "charge_types"};

void addAttribute(PowerSupply& supply, const std::string& folder, const std::string& name)
{
    std::string key = name;
    for (char& letter : key) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    if (supply.values.contains(key)) return;
    auto value = contentsOf(pathIn(folder, name));
    if (!value) return;
    if (value->ends_with('\n')) value->pop_back();
    supply.values.emplace(std::move(key), *std::move(value));
}

void addAttributes(PowerSupply& supply, const std::string& folder)
{
    for (const auto& name : entriesOf(folder).value_or(std::vector<std::string>{})) {
        if (name != "uevent") addAttribute(supply, folder, name);
    }
}

PowerSupply readSupply(const std::string& folder, const std::string& name)
{
    PowerSupply supply{.name = name, .values = {}};
    const auto path = pathIn(folder, name);
    addUeventLines(supply, contentsOf(pathIn(path, "uevent")).value_or(""));
    // One property that fails makes the kernel fail the whole uevent file, and old kernels leave
    // the type out of it; the properties are there one by one as well.
    if (!supply.text("TYPE")) addAttributes(supply, path);
    if (supply.isMachineBattery()) {
        for (const auto* const attribute : besideUevent) addAttribute(supply, path, attribute);
    }
    return supply;
}

}  // namespace

std::optional<std::vector<PowerSupply>> readPowerSupplies(const std::string& folder)
{
    const auto names = entriesOf(folder);
    if (!names) return std::nullopt;

    std::vector<PowerSupply> supplies;
    for (const auto& name : *names) {
        errno = 0;
        auto supply = readSupply(folder, name);
        if (isWantOfMeans(errno)) return std::nullopt;
        if (!supply.values.empty()) supplies.push_back(std::move(supply));
    }
    return supplies;
}

bool isWantOfMeans(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOMEM;
}

}  // namespace vorlane::platform
