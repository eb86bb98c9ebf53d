// What the program's arguments ask for.
#pragma once

#include <span>

#include "App/content/StatusItemContent.h"

namespace vorlane::platform {

struct CommandLine {
    enum class Kind { start, help, version, unknown };

    Kind kind = Kind::start;
    MenuAction action = MenuAction::none;  // of the one instance, whether it runs or starts now

    friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

// `arguments` without the program's own name.
CommandLine readCommandLine(std::span<const char* const> arguments);

constexpr const char* commandLineHelp =
    "Usage: vorlane [--open | --settings | --snooze | --quit]\n"
    "\n"
    "Reminds you to look after the laptop's battery. Started again, it shows the popover\n"
    "of the instance that runs.\n"
    "\n"
    "  --open      show the popover\n"
    "  --settings  show the settings\n"
    "  --snooze    give no reminders for an hour\n"
    "  --quit      end the instance that runs\n"
    "  --help      print this\n"
    "  --version   print the version\n";

}  // namespace vorlane::platform
