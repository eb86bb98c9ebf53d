// The ring, with the state, the time on power and the snooze beside it.
#pragma once

#include <QWidget>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/TextLabel.h"
#include "platform/qt/popover/RingWidget.h"
#include "platform/qt/popover/SnoozeRow.h"

namespace vorlane::platform {

class GaugeRow : public QWidget {
    Q_OBJECT

public:
    explicit GaugeRow(std::function<void()> cancelSnooze, QWidget* parent = nullptr);

    void setContent(const GaugeBlock& content);
    void setTheme(const Theme& theme);

private:
    RingWidget* ring;
    TextLabel* state;
    TextLabel* pluggedFor;
    SnoozeRow* snooze;
};

}  // namespace vorlane::platform
