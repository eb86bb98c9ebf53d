// The popover's content when there is no battery.
#pragma once

#include <QWidget>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/BatterySymbol.h"
#include "platform/qt/look/TextLabel.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class NoBatteryPane : public QWidget {
    Q_OBJECT

public:
    explicit NoBatteryPane(QWidget* parent = nullptr);

    void setContent(const NoBatteryBlock& content);
    void setTheme(const Theme& theme);

private:
    BatterySymbol* symbol;
    TextLabel* title;
    TextLabel* text;
};

}  // namespace vorlane::platform
