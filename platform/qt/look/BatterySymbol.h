// The empty battery, drawn in the height of its font's letters.
#pragma once

#include <QWidget>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class BatterySymbol : public QWidget {
    Q_OBJECT

public:
    explicit BatterySymbol(QWidget* parent = nullptr);

    void setTheme(const Theme& next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color;
};

}  // namespace vorlane::platform
