// Text that wraps in the width it is given.
#pragma once

#include <QLabel>

namespace vorlane::platform {

class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(QWidget* parent = nullptr);

    void setContent(const std::string& text);
    void setLook(const QFont& font, const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorlane::platform
