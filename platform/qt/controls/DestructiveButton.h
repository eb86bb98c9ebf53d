// A button as wide as its row, for an action that cannot be undone.
#pragma once

#include <QPushButton>

#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class DestructiveButton : public Themed<QPushButton> {
    Q_OBJECT

public:
    explicit DestructiveButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    FocusRing ring{*this};
};

}  // namespace vorlane::platform
