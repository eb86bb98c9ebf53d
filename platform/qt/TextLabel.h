// Text that wraps in the width it is given: where the sense pauses, if that takes no more lines.
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

private:
    int wrappedHeight(const QString& words) const;
    QString lines() const;
};

}  // namespace vorlane::platform
