// The popover: its window, what is in it, and whether it is to be shown.
#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

#include "App/content/PopoverContent.h"
#include "platform/qt/PopoverPanel.h"
#include "platform/qt/PopoverWindow.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

class QtPopover : public QObject {
    Q_OBJECT

public:
    // The theme's source outlives this object. `closed` is called when its user closed it.
    QtPopover(PopoverIntents intents, const ThemeSource& themes,
              PopoverWindow::ClosedByUser closed);

    // Opens it at the pointer, or brings it to the front.
    void show(const PopoverContent& content);

    // Shows newer content; nothing while it is closed.
    void update(const PopoverContent& content);

    void performClose();

private:
    void settle();

    PopoverPanel* panel;  // the window's
    PopoverWindow window;
    PopoverContent latest;
    QPoint pointer;
    bool wanted = false;      // from `show` to the closing
    bool toBeOpened = false;  // `show` has not opened it yet
};

}  // namespace vorlane::platform
