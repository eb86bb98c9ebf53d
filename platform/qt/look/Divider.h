// One thin line from side to side.
#pragma once

#include <QWidget>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class Divider : public QWidget {
    Q_OBJECT

public:
    explicit Divider(QWidget* parent = nullptr);

    void setTheme(const Theme& next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color;
};

}  // namespace vorlane::platform
