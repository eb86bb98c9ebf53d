#include "platform/qt/QtPopover.h"

#include <QCursor>
#include <utility>

namespace vorlane::platform {

QtPopover::QtPopover(PopoverIntents intents, const ThemeSource& themes,
                     PopoverWindow::ClosedByUser closed)
    : panel(new PopoverPanel(std::move(intents))),
      window(panel, [this, closed = std::move(closed)](bool byPress) {
          wanted = false;
          closed(byPress);
      })
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
    toBeOpened = true;
    update(content);
}

void QtPopover::update(const PopoverContent& content)
{
    latest = content;
    settle();
}

void QtPopover::performClose()
{
    wanted = false;
    settle();
}

void QtPopover::settle()
{
    if (!wanted) return window.hide();
    if (window.isResting()) return;
    panel->setContent(latest);
    window.fit();
    if (std::exchange(toBeOpened, false)) window.openAt(pointer);
}

}  // namespace vorlane::platform
