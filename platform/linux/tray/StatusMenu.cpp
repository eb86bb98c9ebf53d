#include "platform/linux/tray/StatusMenu.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <span>
#include <string>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr const char* interfaceName = "com.canonical.dbusmenu";

// The names point into the message.
MenuLayout::Names readNames(sd_bus_message* message)
{
    MenuLayout::Names names;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") < 0) return names;
    const char* name = nullptr;
    while (sd_bus_message_read(message, "s", &name) > 0) names.emplace_back(name);
    (void)sd_bus_message_exit_container(message);
    return names;
}

// The ids point into the message, which may have millions of them.
std::span<const std::int32_t> readIds(sd_bus_message* message)
{
    const void* first = nullptr;
    std::size_t bytes = 0;
    if (sd_bus_message_read_array(message, SD_BUS_TYPE_INT32, &first, &bytes) < 0 || !first)
        return {};
    return {static_cast<const std::int32_t*>(first), bytes / sizeof(std::int32_t)};
}

void appendIds(sd_bus_message* message, const std::vector<std::int32_t>& ids)
{
    (void)sd_bus_message_append_array(message, SD_BUS_TYPE_INT32, ids.data(),
                                      ids.size() * sizeof(std::int32_t));
}

MessagePointer replyTo(sd_bus_message* call)
{
    return owned<MessagePointer>(
        [call](sd_bus_message** reply) { return sd_bus_message_new_method_return(call, reply); });
}

int send(const MessagePointer& message)
{
    return sd_bus_send(nullptr, message.get(), nullptr);
}

MessagePointer newSignal(sd_bus* session, const char* name)
{
    return owned<MessagePointer>([&](sd_bus_message** signal) {
        return sd_bus_message_new_signal(session, signal, StatusMenu::path, interfaceName, name);
    });
}

int getConstant(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                const char* property, sd_bus_message* reply, void* /*self*/,
                sd_bus_error* /*error*/)
{
    const std::string_view name = property;
    if (name == "Version") return sd_bus_message_append(reply, "u", 3U);
    if (name == "IconThemePath") return sd_bus_message_append(reply, "as", 0);
    return sd_bus_message_append(reply, "s", name == "Status" ? "normal" : "ltr");
}

template <int (StatusMenu::*answer)(sd_bus_message*)>
constexpr sd_bus_message_handler_t handler = onCall<StatusMenu, answer>;

}  // namespace

const sd_bus_vtable StatusMenu::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", getConstant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", getConstant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", getConstant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "as", getConstant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", handler<&StatusMenu::getLayout>,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})",
                  handler<&StatusMenu::getGroupProperties>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetProperty", "is", "v", handler<&StatusMenu::getProperty>,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Event", "isvu", "", handler<&StatusMenu::event>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", handler<&StatusMenu::eventGroup>,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShow", "i", "b", handler<&StatusMenu::aboutToShow>,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", handler<&StatusMenu::aboutToShowGroup>,
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

StatusMenu::StatusMenu(sd_bus* session, RunLoop& loop)
    : session_(session), loop_(loop), object(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_object_vtable(session_, slot, path, interfaceName, vtable, this);
      }))
{}

void StatusMenu::onMenu(std::function<void(MenuAction)> callback)
{
    choices->callback = std::move(callback);
}

void StatusMenu::show(const std::vector<MenuItem>& items)
{
    MenuLayout fresh(items);
    if (fresh == layout) return;

    const auto before = std::exchange(layout, std::move(fresh));
    if (layout.sameShape(before)) {
        announceLabels(before);
        return;
    }
    ++revision;
    const auto signal = newSignal(session_, "LayoutUpdated");
    if (!signal) return;
    (void)sd_bus_message_append(signal.get(), "ui", revision, 0);
    (void)send(signal);
}

// An open menu can show new labels; a new layout would close it.
void StatusMenu::announceLabels(const MenuLayout& before)
{
    const auto signal = newSignal(session_, "ItemsPropertiesUpdated");
    if (!signal) return;

    (void)sd_bus_message_open_container(signal.get(), SD_BUS_TYPE_ARRAY, "(ia{sv})");
    for (const auto id : layout.ids()) {
        if (layout.property(id, "label") == before.property(id, "label")) continue;
        (void)sd_bus_message_open_container(signal.get(), SD_BUS_TYPE_STRUCT, "ia{sv}");
        (void)sd_bus_message_append(signal.get(), "i", id);
        layout.appendProperties(signal.get(), id, {"label"});
        (void)sd_bus_message_close_container(signal.get());
    }
    (void)sd_bus_message_close_container(signal.get());
    (void)sd_bus_message_append(signal.get(), "a(ias)", 0);
    (void)send(signal);
}

int StatusMenu::getLayout(sd_bus_message* call)
{
    std::int32_t parent = 0;
    std::int32_t depth = 0;
    if (sd_bus_message_read(call, "ii", &parent, &depth) < 0 || !layout.has(parent)) return -EINVAL;

    const auto names = readNames(call);
    const auto reply = replyTo(call);
    if (!reply) return -ENOMEM;
    (void)sd_bus_message_append(reply.get(), "u", revision);
    layout.append(reply.get(), parent, depth, names);
    return send(reply);
}

// An empty list of ids means all entries.
int StatusMenu::getGroupProperties(sd_bus_message* call)
{
    const auto wanted = readIds(call);
    const auto names = readNames(call);
    const auto reply = replyTo(call);
    if (!reply) return -ENOMEM;

    (void)sd_bus_message_open_container(reply.get(), SD_BUS_TYPE_ARRAY, "(ia{sv})");
    for (const auto id : layout.ids()) {
        if (!wanted.empty() && std::ranges::find(wanted, id) == wanted.end()) continue;
        (void)sd_bus_message_open_container(reply.get(), SD_BUS_TYPE_STRUCT, "ia{sv}");
        (void)sd_bus_message_append(reply.get(), "i", id);
        layout.appendProperties(reply.get(), id, names);
        (void)sd_bus_message_close_container(reply.get());
    }
    (void)sd_bus_message_close_container(reply.get());
    return send(reply);
}

int StatusMenu::getProperty(sd_bus_message* call)
{
    std::int32_t id = 0;
    const char* name = nullptr;
    if (sd_bus_message_read(call, "is", &id, &name) < 0) return -EINVAL;
    const auto value = layout.property(id, name);
    if (!value) return -EINVAL;

    const auto reply = replyTo(call);
    if (!reply) return -ENOMEM;
    MenuLayout::appendValue(reply.get(), *value);
    return send(reply);
}

// False for an unknown id.
bool StatusMenu::handle(std::int32_t id, std::string_view event)
{
    if (!layout.has(id)) return false;
    const auto action = layout.action(id);
    if (event != "clicked" || !action) return true;
    if (!choices->pending.insert(*action).second) return true;
    loop_.async([weak = std::weak_ptr(choices), action = *action] {
        const auto alive = weak.lock();
        if (!alive) return;
        alive->pending.erase(action);
        alive->callback(action);
    });
    return true;
}

int StatusMenu::event(sd_bus_message* call)
{
    std::int32_t id = 0;
    const char* name = nullptr;
    if (sd_bus_message_read(call, "is", &id, &name) < 0) return -EINVAL;
    (void)handle(id, name);  // the entry may be gone since the menu was opened
    return sd_bus_reply_method_return(call, "");
}

// Returns the unknown ids.
int StatusMenu::eventGroup(sd_bus_message* call)
{
    std::vector<std::int32_t> unknown;
    if (sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "(isvu)") < 0) return -EINVAL;
    while (sd_bus_message_enter_container(call, SD_BUS_TYPE_STRUCT, "isvu") > 0) {
        std::int32_t id = 0;
        const char* name = nullptr;
        if (sd_bus_message_read(call, "is", &id, &name) < 0) return -EINVAL;
        if (!handle(id, name)) unknown.push_back(id);
        if (sd_bus_message_skip(call, "vu") < 0) return -EINVAL;
        if (sd_bus_message_exit_container(call) < 0) return -EINVAL;
    }
    const auto reply = replyTo(call);
    if (!reply) return -ENOMEM;
    appendIds(reply.get(), unknown);
    return send(reply);
}

// The menu is always up to date.
int StatusMenu::aboutToShow(sd_bus_message* call)
{
    return sd_bus_reply_method_return(call, "b", 0);
}

int StatusMenu::aboutToShowGroup(sd_bus_message* call)
{
    std::vector<std::int32_t> unknown;
    for (const auto id : readIds(call)) {
        if (!layout.has(id)) unknown.push_back(id);
    }
    std::ranges::sort(unknown);
    unknown.erase(std::unique(unknown.begin(), unknown.end()), unknown.end());
    const auto reply = replyTo(call);
    if (!reply) return -ENOMEM;
    appendIds(reply.get(), {});
    appendIds(reply.get(), unknown);
    return send(reply);
}

}  // namespace vorlane::platform
