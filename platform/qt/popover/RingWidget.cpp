#include "platform/qt/popover/RingWidget.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace vorlane::platform {

namespace {

constexpr double padding = 6;
constexpr double ringWidth = 11;
constexpr double roomForText = 66;  // between the sides of the ring, at the height of the digits

// Gives all digits the same width in any font: the text must not jitter as the battery drains.
struct Typesetting {
    explicit Typesetting(const QFont& font) : metrics(font)
    {
        for (char digit = '0'; digit <= '9'; ++digit) {
            digitWidth = std::max(digitWidth, metrics.horizontalAdvance(QLatin1Char(digit)));
        }
    }

    double width(QChar character) const
    {
        return character.isDigit() ? digitWidth : metrics.horizontalAdvance(character);
    }

    double width(const QString& text) const
    {
        double sum = 0;
        for (const auto character : text) sum += width(character);
        return sum;
    }

    QFontMetricsF metrics;
    double digitWidth = 0;
};

// Shrinks a font in which "100%" does not fit into the ring.
QFont fitted(QFont font, const QString& text)
{
    const auto widest =
        std::max(Typesetting(font).width(text), Typesetting(font).width(QStringLiteral("100%")));
    if (widest <= roomForText) return font;
    font.setPixelSize(
        std::max(1, static_cast<int>(QFontInfo(font).pixelSize() * roomForText / widest)));
    return font;
}

}  // namespace

RingWidget::RingWidget(QWidget* parent) : Themed(parent)
{
    setFixedSize(side, side);
}

void RingWidget::setContent(const RingContent& next)
{
    if (next == content) return;
    content = next;
    setText(QString::fromStdString(content.text));
    update();
}

void RingWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintRing(painter);
    paintText(painter);
}

void RingWidget::paintRing(QPainter& painter) const
{
    const auto circle = QRectF(rect()).adjusted(padding, padding, -padding, -padding);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.track, ringWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawEllipse(circle);

    const auto filled = static_cast<double>(std::clamp<std::int64_t>(content.percent, 0, 100));
    if (filled <= 0) return;
    painter.setPen(QPen(theme.fill(content.color), ringWidth, Qt::SolidLine, Qt::RoundCap));
    QPainterPath arc;
    arc.arcMoveTo(circle, 90);
    arc.arcTo(circle, 90, -360 * filled / 100);
    painter.drawPath(arc);
}

void RingWidget::paintText(QPainter& painter) const
{
    const auto font = fitted(theme.gauge, text());
    const Typesetting typesetting(font);
    painter.setFont(font);
    painter.setPen(theme.text);
    const auto centre = QRectF(rect()).center();
    double x = centre.x() - typesetting.width(text()) / 2;
    const double baseline = centre.y() + typesetting.metrics.capHeight() / 2;
    for (const auto character : text()) {
        const double cell = typesetting.width(character);
        const double inset = (cell - typesetting.metrics.horizontalAdvance(character)) / 2;
        painter.drawText(QPointF(x + inset, baseline), character);
        x += cell;
    }
}

}  // namespace vorlane::platform
