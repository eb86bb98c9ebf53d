#include "platform/linux/session/AutostartLoginItem.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/Installation.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/XdgFolders.h"

namespace vorlane::platform {

namespace {

constexpr std::size_t largest = 65'536;
constexpr const char* fileName = "/autostart/org.vorlane.Vorlane.desktop";

constexpr const char* oddPath =
    "The path of Vorlane has characters that an autostart file cannot hold.";

// The key that turns an entry off in GNOME and the desktops derived from it.
constexpr const char* gnomeSwitch = "X-GNOME-Autostart-enabled";

bool exists(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0;
}

using MaybeEntry = std::optional<DesktopEntry>;

// Absent without a file; an error if it cannot be read. A file that is not regular or is too large
// gives an invalid entry, which starts nothing.
Expected<MaybeEntry> read(const std::string& path)
{
    auto text = readFile(path, largest);
    if (text) return MaybeEntry(*text);
    if (!countsAsEmpty(text.error())) return text.error();
    return exists(path) ? MaybeEntry("") : std::nullopt;
}

// The error message for the user.
std::optional<std::string> reasonOf(const Expected<>& outcome)
{
    if (outcome) return std::nullopt;
    return std::make_error_code(outcome.error()).message();
}

std::optional<std::string> write(const std::string& path, const std::string& text)
{
    return reasonOf(replaceFile(path, text));
}

bool isExecutable(const std::string& program)
{
    if (program.find('/') != std::string::npos) return access(program.c_str(), X_OK) == 0;
    if (program.empty()) return false;
    return std::ranges::any_of(split(environment("PATH"), ':'), [&](const std::string& folder) {
        return access((folder + "/" + program).c_str(), X_OK) == 0;
    });
}

}  // namespace

AutostartLoginItem::Places AutostartLoginItem::Places::usual()
{
    Places places;
    if (const auto config = xdgConfigHome()) places.own = *config + fileName;
    // Does not ask libsystemd, which defaults to /etc and accepts relative folders.
    const auto listed = environment("XDG_CONFIG_DIRS");
    for (const auto& folder : split(listed.empty() ? "/etc/xdg" : listed, ':')) {
        if (folder.starts_with('/')) places.systems.push_back(folder + fileName);
    }
    places.program = programPath();
    places.desktops = currentDesktops();
    return places;
}

AutostartLoginItem::AutostartLoginItem(Places places) : places_(std::move(places)) {}

bool AutostartLoginItem::enabled() const
{
    return startsBy(read(places_.own).value_or(std::nullopt));
}

std::optional<std::string> AutostartLoginItem::setEnabled(bool on)
{
    const auto own = read(places_.own);
    if (!own) return reasonOf(own.error());
    if (on == startsBy(*own)) return std::nullopt;
    if (on && !execCommand(places_.program)) return oddPath;
    return on ? turnOn(own->value_or(DesktopEntry(""))) : turnOff(own->value_or(fresh()));
}

bool AutostartLoginItem::startsBy(const std::optional<DesktopEntry>& own) const
{
    return own ? starts(*own) : startsBySystem();
}

bool AutostartLoginItem::startsBySystem() const
{
    const auto file = std::ranges::find_if(places_.systems, exists);
    return file != places_.systems.end() &&
           starts(read(*file).value_or({}).value_or(DesktopEntry("")));
}

bool AutostartLoginItem::starts(const DesktopEntry& entry) const
{
    const auto attempt = entry.value("TryExec");
    return entry.isValid() && entry.value("Hidden") != "true" &&
           entry.value(gnomeSwitch) != "false" && isForThisDesktop(entry) &&
           (!attempt || isExecutable(*attempt)) &&
           isExecutable(programOf(entry.value("Exec").value_or("")));
}

bool AutostartLoginItem::isForThisDesktop(const DesktopEntry& entry) const
{
    const auto names = [&](const char* key) {
        const auto listed = split(entry.value(key).value_or(""), ';');
        return std::ranges::any_of(places_.desktops, [&](const std::string& desktop) {
            return std::ranges::find(listed, desktop) != listed.end();
        });
    };
    if (entry.value("OnlyShowIn") && !names("OnlyShowIn")) return false;
    return !names("NotShowIn");
}

DesktopEntry AutostartLoginItem::fresh() const
{
    DesktopEntry entry(
        "[Desktop Entry]\n"
        "Type=Application\n"
        "Name=Vorlane\n"
        "Icon=org.vorlane.Vorlane\n"
        "Terminal=false\n");
    setProgram(entry);
    return entry;
}

void AutostartLoginItem::setProgram(DesktopEntry& entry) const
{
    if (const auto command = execCommand(places_.program)) entry.set("Exec", *command);
}

// Whether the file is as the program wrote it, apart from the program's path, which may be
// outdated, and from the key that turns the item off.
bool AutostartLoginItem::isOurs(DesktopEntry entry) const
{
    if (!entry.isValid()) return false;
    entry.remove("Hidden");
    setProgram(entry);
    return entry.text() == fresh().text();
}

std::optional<std::string> AutostartLoginItem::turnOn(DesktopEntry entry) const
{
    if (!entry.isValid()) {
        if (auto reason = reasonOf(keepFileAside(places_.own))) return reason;
    }
    if (!entry.isValid() || isOurs(entry)) return write(places_.own, fresh().text());

    entry.remove("Hidden");
    entry.remove(gnomeSwitch);
    if (!isForThisDesktop(entry)) {
        entry.remove("OnlyShowIn");
        entry.remove("NotShowIn");
    }
    if (!starts(entry)) entry.remove("TryExec");
    if (!starts(entry)) setProgram(entry);
    return write(places_.own, entry.text());
}

std::optional<std::string> AutostartLoginItem::turnOff(DesktopEntry entry) const
{
    if (isOurs(entry) && !startsBySystem()) {
        if (unlink(places_.own.c_str()) == 0 || errno == ENOENT) return std::nullopt;
        return reasonOf(lastError());
    }
    entry.set("Hidden", "true");
    return write(places_.own, entry.text());
}

}  // namespace vorlane::platform
