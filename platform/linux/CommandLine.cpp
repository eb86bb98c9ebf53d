#include "platform/linux/CommandLine.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace vorlane::platform {

namespace {

struct Option {
    std::string_view text;
    CommandLine meaning;
};
constexpr Option options[] = {
    {"--open", {.action = MenuAction::open}},
    {"--settings", {.action = MenuAction::settings}},
    {"--snooze", {.action = MenuAction::snooze}},
    {"--quit", {.action = MenuAction::quit}},
    {"--help", {.kind = CommandLine::Kind::help}},
    {"--version", {.kind = CommandLine::Kind::version}},
};

}  // namespace

CommandLine readCommandLine(std::span<const char* const> arguments)
{
    if (arguments.empty()) return {};
    const auto* const known =
        std::ranges::find(options, std::string_view(arguments.front()), &Option::text);
    if (arguments.size() > 1 || known == std::end(options)) {
        return {.kind = CommandLine::Kind::unknown};
    }
    return known->meaning;
}

}  // namespace vorlane::platform
