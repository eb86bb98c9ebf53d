// A flat push button, as large as its text needs.
#pragma once

#include <QPushButton>

#include "platform/qt/controls/TextButton.h"

namespace vorlane::platform {

class PanelButton : public TextButton<QPushButton, &Theme::body> {
    Q_OBJECT

public:
    explicit PanelButton(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorlane::platform
