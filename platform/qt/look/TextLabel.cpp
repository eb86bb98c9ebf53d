#include "platform/qt/look/TextLabel.h"

#include <QPainter>

#include "platform/qt/look/LineBreaks.h"

namespace vorlane::platform {

TextLabel::TextLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextLabel::setContent(const std::string& text)
{
    setText(QString::fromStdString(text));
}

void TextLabel::setLook(const QFont& font, const QColor& color)
{
    auto colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
    setFont(font);
}

void TextLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextWordWrap,
                     brokenAtPauses(text(), fontMetrics(), width()));
}

}  // namespace vorlane::platform
