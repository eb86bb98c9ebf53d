#include "platform/linux/tray/MenuLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorlane::platform {

namespace {

constexpr std::int32_t root = 0;
constexpr std::array propertyNames{"type", "label", "enabled", "children-display"};

// The id combines place and action, so that a click on an entry that has since changed finds
// nothing.
std::int32_t idOf(std::size_t place, const MenuItem& item)
{
    constexpr std::size_t actions = 8;  // more than MenuAction has
    return static_cast<std::int32_t>(1 + place * actions + static_cast<std::size_t>(item.action));
}

// A single underscore would make the next letter a mnemonic.
std::string label(const std::string& title)
{
    std::string label;
    for (const char c : title) label.append(c == '_' ? 2 : 1, c);
    return label;
}

bool isSeparator(const MenuItem& item)
{
    return item.title.empty();
}

}  // namespace

std::vector<std::int32_t> MenuLayout::ids() const
{
    std::vector ids{root};
    for (std::size_t i = 0; i < items.size(); ++i) ids.push_back(idOf(i, items[i]));
    return ids;
}

bool MenuLayout::has(std::int32_t id) const
{
    return id == root || find(id);
}

const MenuItem* MenuLayout::find(std::int32_t id) const
{
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (idOf(i, items[i]) == id) return &items[i];
    }
    return nullptr;
}

std::optional<MenuAction> MenuLayout::action(std::int32_t id) const
{
    const auto* const item = find(id);
    if (!item || isSeparator(*item) || item->action == MenuAction::none) return std::nullopt;
    return item->action;
}

// Absent properties have their defaults: a standard entry, enabled and visible.
std::optional<MenuLayout::Value> MenuLayout::property(std::int32_t id, std::string_view name) const
{
    if (id == root) {
        if (name == "children-display") return "submenu";
        return std::nullopt;
    }
    const auto* const item = find(id);
    if (!item) return std::nullopt;
    if (isSeparator(*item)) {
        if (name == "type") return "separator";
        return std::nullopt;
    }
    if (name == "label") return label(item->title);
    if (name == "enabled") return item->action != MenuAction::none;
    return std::nullopt;
}

bool MenuLayout::sameShape(const MenuLayout& other) const
{
    return std::equal(items.begin(), items.end(), other.items.begin(), other.items.end(),
                      [](const MenuItem& one, const MenuItem& another) {
                          return one.action == another.action &&
                                 isSeparator(one) == isSeparator(another);
                      });
}

void MenuLayout::appendProperties(sd_bus_message* message, std::int32_t id,
                                  const Names& names) const
{
    (void)sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const auto* const name : propertyNames) {
        if (!names.empty() && std::find(names.begin(), names.end(), name) == names.end()) continue;
        const auto value = property(id, name);
        if (!value) continue;
        (void)sd_bus_message_open_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv");
        (void)sd_bus_message_append(message, "s", name);
        appendValue(message, *value);
        (void)sd_bus_message_close_container(message);
    }
    (void)sd_bus_message_close_container(message);
}

void MenuLayout::append(sd_bus_message* message, std::int32_t id, std::int32_t depth,
                        const Names& names) const
{
    (void)sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "ia{sv}av");
    (void)sd_bus_message_append(message, "i", id);
    appendProperties(message, id, names);
    (void)sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "v");
    const auto all = id == root && depth != 0 ? ids() : std::vector<std::int32_t>{root};
    for (const auto child : all) {
        if (child == root) continue;
        (void)sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "(ia{sv}av)");
        append(message, child, 0, names);
        (void)sd_bus_message_close_container(message);
    }
    (void)sd_bus_message_close_container(message);
    (void)sd_bus_message_close_container(message);
}

void MenuLayout::appendValue(sd_bus_message* message, const Value& value)
{
    if (const auto* const text = std::get_if<std::string>(&value)) {
        (void)sd_bus_message_append(message, "v", "s", text->c_str());
        return;
    }
    (void)sd_bus_message_append(message, "v", "b", static_cast<int>(std::get<bool>(value)));
}

}  // namespace vorlane::platform
