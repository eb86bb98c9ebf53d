#include "platform/linux/tray/XTrayItem.h"

#include <sys/epoll.h>

#include <utility>

#include "platform/UiBuild.h"
#include "platform/linux/tray/PluginFile.h"
#include "platform/linux/tray/TrayFace.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace vorlane::platform {

XTrayItem::XTrayItem(SdEventRunLoop& loop, Dependencies dependencies)
    : loop_(loop),
      dependencies_(std::move(dependencies)),
      action(std::make_shared<std::function<void()>>([] {})),
      chosen(std::make_shared<std::function<void(MenuAction)>>([](MenuAction) {}))
{}

XTrayItem::~XTrayItem() = default;

void XTrayItem::open()
{
    probe.emplace(loop_.event(), dependencies_.socket, [this](bool answers) { answered(answers); });
    if (!probe->isAsking()) reportLost();
}

void XTrayItem::close()
{
    lossReport = {};
    probe.reset();
    source.reset();
    tray.reset();
}

void XTrayItem::show(const StatusItemContent& fresh)
{
    if (fresh == content) return;
    content = fresh;
    if (tray) check(tray->show(spokenTitle(content)));
}

void XTrayItem::answered(bool answers)
{
    probe.reset();
    if (answers && !entry) {
        entry = reinterpret_cast<XTrayEntry*>(openPlugin(dependencies_.plugin, xTrayEntryName));
    }
    if (answers && entry) tray.reset(entry(host()));
    if (!tray) return reportLost();

    source = owned<EventSourcePointer>([this](sd_event_source** handle) {
        return sd_event_add_io(loop_.event(), handle, tray->descriptor(), EPOLLIN, readable, this);
    });
    check(source && tray->show(spokenTitle(content)));
}

void XTrayItem::check(bool alive)
{
    if (alive) return;
    source.reset();  // a closed connection would stay readable
    reportLost();
}

// Reports on a later turn, because the callback may destroy objects that are in use here.
void XTrayItem::reportLost()
{
    lossReport = loop_.after(Seconds{0}, [this] { lost(); });
}

XTrayHost XTrayItem::host()
{
    return {.build = uiBuild,
            .picture =
                [this](int size, std::optional<Rgb> color) {
                    return xIconPicture(content, size, color).draw(size);
                },
            .clicked = [this] { clicked(); },
            .menuWanted = [this] { menuWanted(); }};
}

void XTrayItem::clicked()
{
    loop_.async([weak = std::weak_ptr(action)] {
        if (const auto callback = weak.lock()) (*callback)();
    });
}

void XTrayItem::menuWanted()
{
    const auto choose = [&loop = loop_, weak = std::weak_ptr(chosen)](MenuAction choice) {
        loop.async([weak, choice] {
            if (const auto callback = weak.lock()) (*callback)(choice);
        });
    };
    loop_.async(
        [open = dependencies_.openMenu, menu = content.menu, choose] { open(menu, choose); });
}

int XTrayItem::readable(sd_event_source* /*source*/, int /*descriptor*/, std::uint32_t /*events*/,
                        void* self)
{
    auto& item = *static_cast<XTrayItem*>(self);
    item.check(item.tray->dispatch());
    return 0;
}

}  // namespace vorlane::platform
