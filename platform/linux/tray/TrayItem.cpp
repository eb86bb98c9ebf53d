#include "platform/linux/tray/TrayItem.h"

#include <utility>

namespace vorlane::platform {

TrayItem::TrayItem(Dependencies dependencies)
    : loop_(dependencies.loop), notifier(dependencies.session, dependencies.loop)
{
    if (!dependencies.xTray) return;
    icon.emplace(dependencies.loop, std::move(*dependencies.xTray));
    icon->onLost([this] { take(choice.lost()); });
    notifier.onWatcher([this](bool present) { take(choice.watcher(present)); });
}

void TrayItem::show(const StatusItemContent& content)
{
    notifier.show(content);
    if (icon) icon->show(content);
}

void TrayItem::onAction(std::function<void()> callback)
{
    if (icon) icon->onAction(callback);
    notifier.onAction(std::move(callback));
}

void TrayItem::onMenu(std::function<void(MenuAction)> callback)
{
    if (icon) icon->onMenu(callback);
    notifier.onMenu(std::move(callback));
}

void TrayItem::registerAgain()
{
    notifier.registerAgain();
    if (icon) take(choice.retry());
}

void TrayItem::take(TrayChoice::Step step)
{
    switch (step) {
        case TrayChoice::Step::nothing:
            return;
        case TrayChoice::Step::wait:
            timeout = loop_.after(TrayChoice::watcherTimeout, [this] { take(choice.waited()); });
            return;
        case TrayChoice::Step::show:
            icon->open();
            return;
        case TrayChoice::Step::withdraw:
            timeout = {};
            icon->close();
            return;
    }
}

}  // namespace vorlane::platform
