// The popover as the rules see it. What they ask for happens on a later turn of Qt's loop.
#pragma once

#include <QObject>
#include <QPoint>

#include "App/services/Windows.h"
#include "platform/qt/PopoverPanel.h"
#include "platform/qt/PopoverWindow.h"
#include "platform/qt/ThemeSource.h"

namespace vorlane::platform {

class QtPopover : public QObject, public Popover {
    Q_OBJECT

public:
    // The theme's source outlives this object.
    QtPopover(PopoverIntents intents, const ThemeSource& themes);

    bool isShown() const override { return wanted || window.justClosed(); }
    void show(const PopoverContent& content) override;
    void update(const PopoverContent& content) override;
    void performClose() override;

private:
    void settleSoon();
    void settle();

    PopoverPanel* panel;  // the window's
    PopoverWindow window;
    PopoverContent latest;
    QPoint pointer;
    bool wanted = false;  // from the asking to the closing
    bool asked = false;   // to show it, and has not done so yet
};

}  // namespace vorlane::platform
