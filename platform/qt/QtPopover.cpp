#include "platform/qt/QtPopover.h"

#include <QCursor>
#include <utility>

namespace vorlane::platform {

QtPopover::QtPopover(PopoverIntents intents, const ThemeSource& themes)
    : panel(new PopoverPanel(std::move(intents))), window(panel, [this] { wanted = false; })
{
    const auto follow = [this, &themes] { panel->setTheme(themes.current()); };
    connect(&themes, &ThemeSource::changed, this, follow);
    follow();
    connect(&window, &PopoverWindow::rested, this, &QtPopover::settle);
}

void QtPopover::show(const PopoverContent& content)
{
    pointer = QCursor::pos();  // now, before the hand moves on
    wanted = true;
    asked = true;
    update(content);
}

void QtPopover::update(const PopoverContent& content)
{
    latest = content;
    settleSoon();
}

void QtPopover::performClose()
{
    wanted = false;
    settleSoon();
}

void QtPopover::settleSoon()
{
    QMetaObject::invokeMethod(this, &QtPopover::settle, Qt::QueuedConnection);
}

void QtPopover::settle()
{
    if (!wanted) return window.hide();
    if (window.isResting()) return;
    panel->setContent(latest);
    window.fit();
    if (std::exchange(asked, false)) window.openAt(pointer);
}

}  // namespace vorlane::platform
