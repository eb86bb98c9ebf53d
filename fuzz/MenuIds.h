// The ids of menu lines in messages of com.canonical.dbusmenu.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>

#include "platform/linux/base/Systemd.h"

namespace vorlane::fuzz {

using MenuIds = std::set<std::int32_t>;

// Reads an array of ids.
inline MenuIds readIds(sd_bus_message* message)
{
    const void* first = nullptr;
    std::size_t bytes = 0;
    if (sd_bus_message_read_array(message, 'i', &first, &bytes) < 0 || bytes == 0) return {};
    const std::span ids(static_cast<const std::int32_t*>(first), bytes / sizeof(std::int32_t));
    return {ids.begin(), ids.end()};
}

// Reads an array of structures that begin with an id; `fields` are the types of a structure,
// `others` those after the id.
inline MenuIds readFirstIds(sd_bus_message* message, const char* fields, const char* others)
{
    MenuIds ids;
    (void)sd_bus_message_enter_container(message, 'a', nullptr);
    while (sd_bus_message_enter_container(message, 'r', fields) > 0) {
        std::int32_t id = 0;
        (void)sd_bus_message_read(message, "i", &id);
        (void)sd_bus_message_skip(message, others);
        (void)sd_bus_message_exit_container(message);
        ids.insert(id);
    }
    (void)sd_bus_message_exit_container(message);
    return ids;
}

}  // namespace vorlane::fuzz
