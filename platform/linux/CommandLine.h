// The program's arguments, parsed.
#pragma once

#include <span>

#include "App/content/StatusItemContent.h"

namespace vorlane::platform {

struct CommandLine {
    enum class Kind { start, help, version, unknown };

    Kind kind = Kind::start;
    MenuAction action = MenuAction::none;  // for the single instance, running or about to start

    friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

// `arguments` without the program's own name.
CommandLine readCommandLine(std::span<const char* const> arguments);

constexpr const char* commandLineHelp =
    "Usage: vorlane [--open | --settings | --snooze | --quit]\n"
    "\n"
    "Reminds you to look after the laptop's battery. Started again, it shows the popover\n"
    "of the running instance.\n"
    "\n"
    "  --open      show the popover\n"
    "  --settings  show the settings\n"
    "  --snooze    give no reminders for an hour\n"
    "  --quit      end the running instance\n"
    "  --help      print this\n"
    "  --version   print the version\n";

}  // namespace vorlane::platform
