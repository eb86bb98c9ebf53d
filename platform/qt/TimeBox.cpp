#include "platform/qt/TimeBox.h"

#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

// The short form without the C locale's seconds; "B", the part of the day, is unknown to the
// editor.
QString formatFor(const QLocale& locale)
{
    static const QRegularExpression seconds("[\\s.:]*\\bs+\\b");
    return locale.timeFormat(QLocale::ShortFormat).remove(seconds).replace("B", "AP ");
}

}  // namespace

TimeBox::TimeBox(std::function<void(TimeOfDay)> changed, QWidget* parent)
    : QTimeEdit(parent), changed_(std::move(changed))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setFrame(false);
    setAlignment(Qt::AlignCenter);
    setKeyboardTracking(false);
    setWrapping(true);
    measure();
    connect(this, &QTimeEdit::timeChanged, this, &TimeBox::typed);
}

void TimeBox::setTheme(const Theme& shades)
{
    theme = shades;
    setFont(theme.body);
    auto colors = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colors.setColor(group, QPalette::Text, ink(theme, group != QPalette::Disabled));
        colors.setColor(group, QPalette::Base, Qt::transparent);
    }
    colors.setColor(QPalette::Highlight, theme.accent);
    setPalette(colors);
    measure();
}

void TimeBox::setTimeOfDay(TimeOfDay time)
{
    const QTime fresh(static_cast<int>(time.hour), static_cast<int>(time.minute));
    if (fresh == stored) return;
    stored = fresh;
    if (!isHalfTyped()) showStored();
}

void TimeBox::showStored()
{
    const QSignalBlocker silent(this);
    setTime(stored);
}

bool TimeBox::isHalfTyped() const
{
    return hasFocus() && lineEdit()->text() != textFromDateTime(dateTime());
}

void TimeBox::typed(QTime time)
{
    if (time == stored) return;
    stored = time;
    changed_({.hour = time.hour(), .minute = time.minute()});
}

void TimeBox::measure()
{
    setDisplayFormat(formatFor(locale()));
    textWidth = 0;
    for (int hour = 0; hour < 24; ++hour) {
        const auto text = locale().toString(QTime(hour, 58), displayFormat());
        textWidth = std::max(textWidth, fontMetrics().horizontalAdvance(text));
    }
    updateGeometry();
    update();
}

QSize TimeBox::sizeHint() const
{
    const ControlMetrics metrics(theme.body);
    return {textWidth + 2 * metrics.indent + 2 * ringRoom, metrics.field + 2 * ringRoom};
}

void TimeBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = ControlMetrics(theme.body).radius;
    const auto shape = QRectF(rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fieldFill(theme, {.enabled = isEnabled()}));
    painter.drawRoundedRect(shape, radius, radius);
    if (hasFocus()) paintRing(painter, shape, radius, theme);
}

// Without the keyboard's focus the form scrolls instead.
void TimeBox::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus()) return event->ignore();
    QTimeEdit::wheelEvent(event);
}

void TimeBox::changeEvent(QEvent* event)
{
    QTimeEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange) measure();
}

void TimeBox::focusOutEvent(QFocusEvent* event)
{
    QTimeEdit::focusOutEvent(event);  // takes what was typed, or drops it
    if (time() != stored) showStored();
}

}  // namespace vorlane::platform
