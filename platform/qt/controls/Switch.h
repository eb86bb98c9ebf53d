// An on/off switch without a title.
#pragma once

#include <QAbstractButton>

#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class Switch : public Themed<QAbstractButton> {
    Q_OBJECT

public:
    explicit Switch(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    FocusRing ring{*this};
};

}  // namespace vorlane::platform
