// A quiet push button, as tall as its letters need.
#pragma once

#include <QPushButton>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class PanelButton : public QPushButton {
    Q_OBJECT

public:
    explicit PanelButton(QWidget* parent = nullptr);

    void setTheme(const Theme& next);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor fill() const;

    Theme theme;
};

}  // namespace vorlane::platform
