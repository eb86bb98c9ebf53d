// Text that wraps in the width it is given.
#pragma once

#include <QLabel>

namespace vorlane::platform {

// Broken where the sense pauses, if the text needs more than one line and no more of them for it.
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
