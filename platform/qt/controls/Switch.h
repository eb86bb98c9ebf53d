// A switch that is on or off, without a title.
#pragma once

#include <QAbstractButton>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

class Switch : public QAbstractButton {
    Q_OBJECT

public:
    explicit Switch(QWidget* parent = nullptr);

    void setTheme(const Theme& shades);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Theme theme;
    FocusRing ring{*this};
};

}  // namespace vorlane::platform
