// A button as wide as its row, for what cannot be undone.
#pragma once

#include <QAbstractButton>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

class DestructiveButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit DestructiveButton(QWidget* parent = nullptr);

    void setTheme(const Theme& shades);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Theme theme;
    FocusRing ring{*this};
};

}  // namespace vorlane::platform
