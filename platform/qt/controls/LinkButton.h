// A button that looks like a link within a line of text.
#pragma once

#include <QPushButton>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class LinkButton : public QPushButton {
    Q_OBJECT

public:
    explicit LinkButton(QWidget* parent = nullptr);

    void setTheme(const Theme& next);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Theme theme;
};

}  // namespace vorlane::platform
