#include "platform/qt/look/TextLabel.h"

#include <QPainter>
#include <QRegularExpression>

namespace vorlane::platform {

QString brokenAtPauses(const QString& text, const QFontMetrics& metrics, int width)
{
    const auto height = [&](const QString& words) {
        return metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, words)
            .height();
    };
    const int plain = height(text);
    if (plain <= metrics.height()) return text;

    static const QRegularExpression pause(QStringLiteral("([.,…]) "));
    auto broken = text;
    broken.replace(pause, QStringLiteral("\\1\n"));
    return height(broken) <= plain ? broken : text;
}

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
