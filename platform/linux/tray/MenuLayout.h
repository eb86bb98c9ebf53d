// A menu's lines as com.canonical.dbusmenu describes them: numbered, with named properties.
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

// The root has the id 0 and the lines are its only children.
class MenuLayout {
public:
    using Value = std::variant<std::string, bool>;

    // Which properties are asked for; empty: all of them.
    using Names = std::vector<std::string_view>;

    MenuLayout() = default;
    explicit MenuLayout(std::vector<MenuItem> lines) : items(std::move(lines)) {}

    // The root first.
    std::vector<std::int32_t> ids() const;
    bool has(std::int32_t id) const;

    // Absent for an unknown id and for a line that only informs.
    std::optional<MenuAction> action(std::int32_t id) const;

    // Absent when the line does not have it.
    std::optional<Value> property(std::int32_t id, std::string_view name) const;

    // Whether the lines differ from those of `other` in nothing but their labels.
    bool sameShape(const MenuLayout& other) const;

    // Appends a dictionary a{sv}.
    void appendProperties(sd_bus_message* message, std::int32_t id, const Names& names) const;

    // Appends a structure (ia{sv}av) with the children `depth` levels down, all when negative.
    void append(sd_bus_message* message, std::int32_t id, std::int32_t depth,
                const Names& names) const;

    static void appendValue(sd_bus_message* message, const Value& value);

    friend bool operator==(const MenuLayout&, const MenuLayout&) = default;

private:
    const MenuItem* find(std::int32_t id) const;

    std::vector<MenuItem> items;
};

}  // namespace vorlane::platform
