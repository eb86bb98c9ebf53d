// A label that wraps its text to its width.
#pragma once

#include <QLabel>

namespace vorlane::platform {

class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(QWidget* parent = nullptr);

    void setContent(const std::string& text);
    void setLook(const QFont& font, const QColor& color);
};

}  // namespace vorlane::platform
