// A button that looks like a link within a line of text.
#pragma once

#include <QPushButton>

#include "platform/qt/controls/TextButton.h"

namespace vorlane::platform {

class LinkButton : public TextButton<QPushButton, &Theme::caption> {
    Q_OBJECT

public:
    explicit LinkButton(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorlane::platform
