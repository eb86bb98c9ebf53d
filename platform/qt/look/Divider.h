// A horizontal hairline.
#pragma once

#include <QWidget>

#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class Divider : public Themed<QWidget> {
    Q_OBJECT

public:
    explicit Divider(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorlane::platform
