#include "platform/linux/StatusNotifierItem.h"

#include <cerrno>
#include <utility>

#include "platform/linux/ActivationToken.h"
#include "platform/linux/StatusLabel.h"

namespace vorlane::platform {

namespace {

constexpr const char* path = "/StatusNotifierItem";
constexpr const char* interfaceName = "org.kde.StatusNotifierItem";

// Scrolling, the other buttons: neither means anything here.
int ignore(sd_bus_message* call, void* /*self*/, sd_bus_error* /*error*/)
{
    return sd_bus_reply_method_return(call, "");
}

int keepToken(sd_bus_message* call, void* /*self*/, sd_bus_error* /*error*/)
{
    const char* token = nullptr;
    if (sd_bus_message_read(call, "s", &token) < 0) return -EINVAL;
    keepActivationToken(token);
    return sd_bus_reply_method_return(call, "");
}

int getMenu(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
            const char* /*property*/, sd_bus_message* reply, void* /*self*/,
            sd_bus_error* /*error*/)
{
    return sd_bus_message_append(reply, "o", StatusMenu::path);
}

int getItemIsMenu(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                  const char* /*property*/, sd_bus_message* reply, void* /*self*/,
                  sd_bus_error* /*error*/)
{
    return sd_bus_message_append(reply, "b", 0);
}

}  // namespace

const sd_bus_vtable StatusNotifierItem::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Id", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Category", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("ItemIsMenu", "b", getItemIsMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", getMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", getText, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", getPixmaps, 0, 0),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", getText, 0, 0),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", getToolTip, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", getText, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", getText, 0, 0),
    SD_BUS_METHOD("Activate", "ii", "", (onCall<StatusNotifierItem, &StatusNotifierItem::activate>),
                  SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SecondaryActivate", "ii", "", ignore, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ContextMenu", "ii", "", ignore, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Scroll", "is", "", ignore, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("XAyatanaSecondaryActivate", "u", "", ignore, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ProvideXdgActivationToken", "s", "", keepToken, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_SIGNAL("NewMenu", "", 0),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

StatusNotifierItem::StatusNotifierItem(sd_bus* session, RunLoop& loop)
    : session_(session),
      loop_(loop),
      menu(session, loop),
      action(std::make_shared<Action>([] {})),
      object(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_object_vtable(session_, slot, path, interfaceName, vtable, this);
      })),
      host(session, [this] { showIcon({.described = false}); }),
      registration(session, loop)
{
    registration.onRedraw([this] {
        if (shown) emit("NewIcon");
    });
}

void StatusNotifierItem::show(const StatusItemContent& fresh)
{
    const auto before = std::exchange(content, fresh);
    menu.show(content.menu);
    if (!std::exchange(shown, true)) {  // the tray reads the first content unasked
        icon = StatusIcon::of(content, host.kind());
        return;
    }
    showIcon({.described = content.accessibilityDescription != before.accessibilityDescription});
    if (content.toolTip != before.toolTip) emit("NewToolTip");
    const auto text = statusLabel(content);
    if (text == statusLabel(before)) return;
    (void)sd_bus_emit_signal(session_, path, interfaceName, "XAyatanaNewLabel", "ss", text.c_str(),
                             statusLabelGuide(text).c_str());
}

// Trays read and draw a new icon from its beginning: they hear of one that differs, and besides
// once after each time that they have taken the item.
void StatusNotifierItem::showIcon(IconChange change)
{
    const auto before = std::exchange(icon, StatusIcon::of(content, host.kind()));
    if (shown && (change.described || icon != before)) emit("NewIcon");
}

void StatusNotifierItem::emit(const char* signal)
{
    (void)sd_bus_emit_signal(session_, path, interfaceName, signal, "");
}

void StatusNotifierItem::onAction(std::function<void()> callback)
{
    *action = std::move(callback);
}

void StatusNotifierItem::onMenu(std::function<void(MenuAction)> callback)
{
    menu.onMenu(std::move(callback));
}

void StatusNotifierItem::registerAgain()
{
    registration.registerAgain();
}

void StatusNotifierItem::onWatcher(std::function<void(bool present)> told)
{
    registration.onWatcher(std::move(told));
}

// On a turn of its own: what a click starts may take long or use the bus.
int StatusNotifierItem::activate(sd_bus_message* call)
{
    loop_.async([weak = std::weak_ptr(action)] {
        if (const auto clicked = weak.lock()) (*clicked)();
    });
    return sd_bus_reply_method_return(call, "");
}

std::string StatusNotifierItem::text(std::string_view property) const
{
    if (property == "Id") return "vorlane";
    if (property == "Category") return "Hardware";
    if (property == "Title") return "Vorlane";
    if (property == "Status") return "Active";  // a passive item is hidden by most trays
    if (property == "IconThemePath") return icons.themePath();
    if (property == "IconName") return icon.name;
    if (property == "IconAccessibleDesc") return content.accessibilityDescription;
    if (property == "XAyatanaLabel") return statusLabel(content);
    return statusLabelGuide(statusLabel(content));
}

int StatusNotifierItem::getText(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                                const char* property, sd_bus_message* reply, void* self,
                                sd_bus_error* /*error*/)
{
    const auto text = static_cast<StatusNotifierItem*>(self)->text(property);
    return sd_bus_message_append(reply, "s", text.c_str());
}

int StatusNotifierItem::getPixmaps(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                                   const char* /*property*/, sd_bus_message* reply, void* self,
                                   sd_bus_error* /*error*/)
{
    const auto& item = *static_cast<StatusNotifierItem*>(self);
    (void)sd_bus_message_open_container(reply, SD_BUS_TYPE_ARRAY, "(iiay)");
    for (const auto size : item.icon.sizes()) {
        const auto argb = item.icon.picture.draw(size).argb;
        if (argb.empty()) break;
        (void)sd_bus_message_open_container(reply, SD_BUS_TYPE_STRUCT, "iiay");
        (void)sd_bus_message_append(reply, "ii", size, size);
        (void)sd_bus_message_append_array(reply, SD_BUS_TYPE_BYTE, argb.data(), argb.size());
        (void)sd_bus_message_close_container(reply);
    }
    return sd_bus_message_close_container(reply);
}

// As the title alone: some trays show only it, some only the text below when there is one.
int StatusNotifierItem::getToolTip(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                                   const char* /*property*/, sd_bus_message* reply, void* self,
                                   sd_bus_error* /*error*/)
{
    const auto& toolTip = static_cast<StatusNotifierItem*>(self)->content.toolTip;
    return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, toolTip.c_str(), "");
}

}  // namespace vorlane::platform
