#include "platform/qt/chart/ChartWidget.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/chart/ChartGeometry.h"
#include "platform/qt/chart/ChartText.h"
#include "platform/qt/look/PixelGrid.h"

namespace vorlane::platform {

namespace {

constexpr double lineWidth = 2;
constexpr double labelGap = 6;    // between the plot and the labels beside it
constexpr double besideMark = 4;  // between a time mark and its label
constexpr double dotRadius = 4;
constexpr double bubbleDistance = 9;

QAccessibleInterface* chartInterface(const QString&, QObject* object)
{
    auto* chart = qobject_cast<ChartWidget*>(object);
    return chart ? new QAccessibleWidget(chart, QAccessible::Chart) : nullptr;
}

}  // namespace

ChartWidget::ChartWidget(QWidget* parent) : Themed(parent)
{
    QAccessible::installFactory(chartInterface);  // repeated calls change nothing
    setFixedHeight(fixedHeight);
    setMouseTracking(true);
}

void ChartWidget::setContent(const ChartContent& next)
{
    if (next == content) return;
    content = next;
    const bool readable = !content.notice && !content.points.empty();
    setFocusPolicy(readable ? Qt::TabFocus : Qt::NoFocus);
    if (!readable || (chosen && (*chosen < content.from || *chosen > content.until)))
        chosen.reset();
    redraw();
    announce();
}

void ChartWidget::redraw()
{
    cached.reset();
    update();
}

void ChartWidget::announce()
{
    setAccessibleName(summary(content));
    setAccessibleDescription(shownReading());
}

QRectF ChartWidget::plot() const
{
    const QFontMetricsF metrics(font());
    double labels = 0;
    for (const auto& mark : content.marks) {
        labels = std::max(labels, metrics.horizontalAdvance(QString::fromStdString(mark.label)));
    }
    const double above = std::max(dotRadius, metrics.capHeight() / 2 + 1);
    return QRectF(rect()).adjusted(0, above, -labels - labelGap, -metrics.height() - 1);
}

const ChartDrawing& ChartWidget::drawing()
{
    if (!cached)
        cached = ChartDrawing::of(content, {.plot = plot(), .font = font(), .times = times()});
    return *cached;
}

void ChartWidget::resizeEvent(QResizeEvent*)
{
    redraw();
}

bool ChartWidget::event(QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::LocaleChange || type == QEvent::FontChange) redraw();
    if (type == QEvent::LocaleChange) announce();
    return QWidget::event(event);
}

const ChartPoint* ChartWidget::chosenPoint() const
{
    return chosen ? nearest(content.points, *chosen) : nullptr;
}

QString ChartWidget::shownReading() const
{
    const auto* point = chosenPoint();
    return point ? reading(content, *point, times()) : QString();
}

void ChartWidget::choose(std::optional<Date> date)
{
    if (content.notice || content.points.empty()) return;
    const auto before = shownReading();
    chosen = date;
    update();
    if (before == shownReading()) return;

    announce();
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event)
{
    const ChartGeometry at(content, plot());
    const auto* point = nearest(content.points, at.date(event->position().x()));
    if (point) choose(point->date);
}

void ChartWidget::leaveEvent(QEvent*)
{
    choose(std::nullopt);
}

void ChartWidget::focusInEvent(QFocusEvent* event)
{
    if (!content.points.empty()) choose(content.points.back().date);
    QWidget::focusInEvent(event);
}

void ChartWidget::focusOutEvent(QFocusEvent* event)
{
    choose(std::nullopt);
    QWidget::focusOutEvent(event);
}

void ChartWidget::keyPressEvent(QKeyEvent* event)
{
    if (content.points.empty()) return QWidget::keyPressEvent(event);

    const auto& points = content.points;
    const auto last = std::ssize(points) - 1;
    const auto* now = chosenPoint();
    const auto index = now ? now - points.data() : last;
    const auto go = [&](std::ptrdiff_t to) {
        choose(points[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(to, 0, last))].date);
    };
    switch (event->key()) {
        case Qt::Key_Left:
            return go(index - 1);
        case Qt::Key_Right:
            return go(index + 1);
        case Qt::Key_PageUp:
            return go(index - last / 24);
        case Qt::Key_PageDown:
            return go(index + last / 24);
        case Qt::Key_Home:
            return go(0);
        case Qt::Key_End:
            return go(last);
        default:
            return QWidget::keyPressEvent(event);
    }
}

void ChartWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (content.notice) return paintNotice(painter);

    const auto& drawn = drawing();
    paintGrid(painter, drawn);
    paintLines(painter, drawn);
    paintReading(painter);
    if (hasFocus()) paintFocus(painter);
}

void ChartWidget::paintNotice(QPainter& painter) const
{
    painter.setFont(theme.caption);
    painter.setPen(theme.secondary);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     QString::fromStdString(*content.notice));
}

void ChartWidget::paintGrid(QPainter& painter, const ChartDrawing& drawn) const
{
    const PixelGrid grid(painter);
    const ChartGeometry at(content, plot());
    const QFontMetricsF metrics(font());
    painter.setPen(theme.secondary);
    const auto line = [&](const QRectF& bar) { painter.fillRect(bar, theme.separator); };

    double freeAbove = height();  // no label is drawn above this yet
    double freeLeft = width();
    for (const auto& mark : content.marks) {
        const double y = at.y(mark.value);
        line(grid.row(at.plot().left(), at.plot().right(), y));
        const double baseline = y + metrics.capHeight() / 2;
        if (baseline > freeAbove) continue;
        const auto label = QString::fromStdString(mark.label);
        const double x = width() - metrics.horizontalAdvance(label);
        painter.drawText(QPointF(x, baseline), label);
        if (mark.value == content.lowest) freeLeft = x - besideMark;
        freeAbove = baseline - metrics.capHeight() - 2;
    }
    for (const auto& mark : drawn.marks) {
        const double x = at.plot().left() + mark.x;
        line(grid.column(x, at.plot().top(), height()));
        if (x + besideMark + metrics.horizontalAdvance(mark.label) > freeLeft) continue;
        painter.drawText(QPointF(x + besideMark, height() - metrics.descent()), mark.label);
    }
}

void ChartWidget::paintLines(QPainter& painter, const ChartDrawing& drawn) const
{
    const auto area = plot();
    QLinearGradient fading(area.topLeft(), area.bottomLeft());
    auto tint = theme.accent;
    tint.setAlphaF(0.30F);
    fading.setColorAt(0, tint);
    tint.setAlphaF(0.05F);
    fading.setColorAt(1, tint);
    // The history may hold samples from the future, after the clock was set back, and impossible
    // percentages.
    painter.setClipRect(area.adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth));
    for (const auto& below : drawn.areas) painter.fillPath(below, fading);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.accent, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::BevelJoin));
    for (const auto& line : drawn.lines) painter.drawPath(line);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accent);
    for (const auto& dot : drawn.dots) painter.drawEllipse(dot, lineWidth, lineWidth);
    painter.setClipping(false);
}

void ChartWidget::paintReading(QPainter& painter) const
{
    const auto* point = chosenPoint();
    if (!point) return;

    const ChartGeometry at(content, plot());
    const auto position = at.position(*point);
    const PixelGrid grid(painter);
    painter.fillRect(grid.column(position.x(), at.plot().top(), at.plot().bottom()),
                     theme.secondary);
    painter.setPen(QPen(theme.window, lineWidth));
    painter.setBrush(theme.accent);
    painter.drawEllipse(position, dotRadius, dotRadius);
    paintBubble(painter);
}

QRectF ChartWidget::bubble() const
{
    const auto* point = chosenPoint();
    if (!point) return {};

    const auto area = plot();
    const auto position = ChartGeometry(content, area).position(*point);
    const QFontMetricsF metrics(font());
    QRectF place(0, 0, metrics.horizontalAdvance(shownReading()) + 14, metrics.height() + 6);
    place.moveCenter(position);
    place.moveLeft(position.x() + bubbleDistance);
    if (place.right() > width()) place.moveRight(position.x() - bubbleDistance);
    place.moveLeft(std::max(0.0, place.left()));
    place.moveTop(std::clamp(place.top(), 0.0, std::max(0.0, area.bottom() - place.height())));
    return place;
}

void ChartWidget::paintBubble(QPainter& painter) const
{
    const auto place = bubble();
    painter.setPen(QPen(theme.separator, 1));
    painter.setBrush(theme.raised);
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    painter.setPen(theme.text);
    painter.drawText(place, Qt::AlignCenter, shownReading());
}

void ChartWidget::paintFocus(QPainter& painter) const
{
    painter.setPen(QPen(theme.accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(plot().adjusted(1, -2, 1, 0), 4, 4);
}

}  // namespace vorlane::platform
