#include "platform/linux/tray/StatusNotifierItem.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/base/Installation.h"
#include "platform/linux/windows/ActivationToken.h"

namespace vorlane::platform {

namespace {

constexpr const char* path = TrayRegistration::itemPath;
constexpr const char* interfaceName = "org.kde.StatusNotifierItem";

std::string installedThemes()
{
    std::error_code error;
    const auto icons = installedPath("share/icons");
    return std::filesystem::is_directory(icons, error) ? icons.string() : std::string();
}

// Answers calls for scrolling and for the other mouse buttons.
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

int getMenu(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* property,
            sd_bus_message* reply, void* /*self*/, sd_bus_error* /*error*/)
{
    if (std::string_view(property) == "ItemIsMenu") return sd_bus_message_append(reply, "b", 0);
    return sd_bus_message_append(reply, "o", StatusMenu::path);
}

}  // namespace

const sd_bus_vtable StatusNotifierItem::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Id", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Category", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", getText, 0, 0),
    SD_BUS_PROPERTY("Status", "s", getText, 0, 0),
    SD_BUS_PROPERTY("ItemIsMenu", "b", getMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", getMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", getText, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", getPixmaps, 0, 0),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
    SD_BUS_PROPERTY("AttentionIconName", "s", getText, 0, 0),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", getPixmaps, 0, 0),
    SD_BUS_PROPERTY("AttentionAccessibleDesc", "s", getText, 0,
                    SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", getToolTip, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", getText, 0, SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
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
    SD_BUS_SIGNAL("NewAttentionIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_SIGNAL("NewMenu", "", 0),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

StatusNotifierItem::StatusNotifierItem(sd_bus* session, RunLoop& loop)
    : session_(session),
      loop_(loop),
      themePath(installedThemes()),
      menu(session, loop),
      action(std::make_shared<Action>([] {})),
      object(owned<SlotPointer>([this](sd_bus_slot** slot) {
          return sd_bus_add_object_vtable(session_, slot, path, interfaceName, vtable, this);
      })),
      host(session, [this] { showContent(); }),
      registration(session, loop)
{
    registration.onRedraw([this] {
        if (shown) redraw();
    });
}

void StatusNotifierItem::show(const StatusItemContent& fresh)
{
    content = fresh;
    menu.show(content.menu);
    showContent();
    shown = true;  // the tray reads the first content without a signal
}

void StatusNotifierItem::showContent()
{
    const auto before = std::exchange(face, TrayFace::of(content, host.kind()));
    if (shown) announce(before);
}

// Each signal makes trays read and redraw, so only differences are announced. The attention icon is
// announced only while it is shown, and before the status, because a tray's copy of the icon may be
// hours old.
void StatusNotifierItem::announce(const TrayFace& before)
{
    const bool isNewIcon = face.icon != before.icon;
    const bool isNewStatus = face.needsAttention != before.needsAttention;
    if (isNewIcon) emit("NewIcon");
    if (face.needsAttention && (isNewIcon || isNewStatus)) emit("NewAttentionIcon");
    if (isNewStatus) {
        (void)sd_bus_emit_signal(session_, path, interfaceName, "NewStatus", "s", face.status());
    }
    if (face.title != before.title) emit("NewTitle");
    if (face.toolTip != before.toolTip) emit("NewToolTip");
    if (face.description != before.description) {
        // Not NewIcon, the interface's signal for a new description: it makes trays read the whole
        // icon again.
        (void)sd_bus_emit_properties_changed(session_, path, interfaceName, "IconAccessibleDesc",
                                             "AttentionAccessibleDesc", nullptr);
    }
    if (face.label != before.label) {
        (void)sd_bus_emit_signal(session_, path, interfaceName, "XAyatanaNewLabel", "ss",
                                 face.label.c_str(), face.labelGuide.c_str());
    }
}

// GNOME Shell reads the label before it knows the property, and then ignores an XAyatanaNewLabel
// signal with the text that it has already read. A property change makes it show the label.
void StatusNotifierItem::redraw() const
{
    emit("NewIcon");
    if (face.label.empty()) return;
    (void)sd_bus_emit_properties_changed(session_, path, interfaceName, "XAyatanaLabel", nullptr);
}

void StatusNotifierItem::emit(const char* signal) const
{
    (void)sd_bus_emit_signal(session_, path, interfaceName, signal, "");
}

// Calls back on a later turn, because the callback may take long or use the bus.
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
    if (property == "Title") return face.title;
    if (property == "Status") return face.status();
    if (property == "IconThemePath") return themePath;
    if (property == "IconName" || property == "AttentionIconName") return face.icon.name;
    if (property.ends_with("AccessibleDesc")) return face.description;
    if (property == "XAyatanaLabel") return face.label;
    return face.labelGuide;
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
    const auto& icon = static_cast<StatusNotifierItem*>(self)->face.icon;
    (void)sd_bus_message_open_container(reply, SD_BUS_TYPE_ARRAY, "(iiay)");
    for (const auto size : icon.sizes()) {
        const auto argb = icon.picture.draw(size).argb;
        if (argb.empty()) break;
        (void)sd_bus_message_open_container(reply, SD_BUS_TYPE_STRUCT, "iiay");
        (void)sd_bus_message_append(reply, "ii", size, size);
        (void)sd_bus_message_append_array(reply, SD_BUS_TYPE_BYTE, argb.data(), argb.size());
        (void)sd_bus_message_close_container(reply);
    }
    return sd_bus_message_close_container(reply);
}

int StatusNotifierItem::getToolTip(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/,
                                   const char* /*property*/, sd_bus_message* reply, void* self,
                                   sd_bus_error* /*error*/)
{
    const auto& toolTip = static_cast<StatusNotifierItem*>(self)->face.toolTip;
    return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, toolTip.title.c_str(),
                                 toolTip.text.c_str());
}

}  // namespace vorlane::platform
