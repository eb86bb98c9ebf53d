#include "platform/qt/TextLabel.h"

#include <QPainter>
#include <QRegularExpression>

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

int TextLabel::wrappedHeight(const QString& words) const
{
    return fontMetrics()
        .boundingRect(QRect(0, 0, width(), QWIDGETSIZE_MAX), Qt::TextWordWrap, words)
        .height();
}

QString TextLabel::lines() const
{
    static const QRegularExpression pause(QStringLiteral("([.,]) "));
    const auto oneLine = fontMetrics().height();
    if (wrappedHeight(text()) <= oneLine) return text();
    const auto broken = text().replace(pause, QStringLiteral("\\1\n"));
    return wrappedHeight(broken) <= wrappedHeight(text()) ? broken : text();
}

void TextLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextWordWrap, lines());
}

}  // namespace vorlane::platform
