// A drawing of an empty battery.
#pragma once

#include <QWidget>

#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class BatterySymbol : public Themed<QWidget> {
    Q_OBJECT

public:
    explicit BatterySymbol(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorlane::platform
