// A label that wraps its text to its width.
#pragma once

#include <QLabel>

namespace vorlane::platform {

// If the text needs several lines, breaks it after punctuation, unless that takes more lines.
QString brokenAtPauses(const QString& text, const QFontMetrics& metrics, int width);

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
