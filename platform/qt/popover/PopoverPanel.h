// The popover's content: shows a `PopoverContent` and reports the user's intents. `PopoverWindow`
// is the window around it.
#pragma once

#include <QWidget>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class BatteryPane;
class Divider;
class NoBatteryPane;
class PanelButton;
class TextLabel;

class PopoverPanel : public QWidget {
    Q_OBJECT

public:
    static constexpr int fixedWidth = 340;

    explicit PopoverPanel(PopoverIntents intents, QWidget* parent = nullptr);

    // Both functions adjust the panel's height before they return.
    void setContent(const PopoverContent& content);
    void setTheme(const Theme& theme);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fitHeight();

    PopoverIntents intents;
    NoBatteryPane* noBattery;
    BatteryPane* battery;
    Divider* divider;
    TextLabel* footnote;
    PanelButton* settings;
    PanelButton* quit;
};

}  // namespace vorlane::platform
