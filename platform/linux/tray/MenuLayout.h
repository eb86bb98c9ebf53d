// A menu as com.canonical.dbusmenu describes it: entries with an id and named properties.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "App/content/StatusItemContent.h"
#include "platform/linux/base/Systemd.h"

namespace vorlane::platform {

// The root has id 0, and the entries are its only children.
class MenuLayout {
public:
    using Value = std::variant<std::string, bool>;

    // Property names; empty means all.
    using Names = std::vector<std::string_view>;

    MenuLayout() = default;
    explicit MenuLayout(std::vector<MenuItem> entries) : items(std::move(entries)) {}

    // The root's id comes first.
    std::vector<std::int32_t> ids() const;
    bool has(std::int32_t id) const;

    // Absent for an unknown id and for an entry that cannot be chosen.
    std::optional<MenuAction> action(std::int32_t id) const;

    // Absent when the entry does not have it.
    std::optional<Value> property(std::int32_t id, std::string_view name) const;

    // Whether the two differ at most in their labels.
    bool sameShape(const MenuLayout& other) const;

    // Appends an a{sv}.
    void appendProperties(sd_bus_message* message, std::int32_t id, const Names& names) const;

    // Appends an (ia{sv}av) with `depth` levels of children; a negative depth means all levels.
    void append(sd_bus_message* message, std::int32_t id, std::int32_t depth,
                const Names& names) const;

    static void appendValue(sd_bus_message* message, const Value& value);

    friend bool operator==(const MenuLayout&, const MenuLayout&) = default;

private:
    const MenuItem* find(std::int32_t id) const;

    std::vector<MenuItem> items;
};

}  // namespace vorlane::platform
