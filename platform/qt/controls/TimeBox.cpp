#include "platform/qt/controls/TimeBox.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QWheelEvent>
#include <algorithm>
#include <utility>
#include <vector>

namespace vorlane::platform {

namespace {

struct Span {
    int begin = 0;
    int end = 0;

    bool touches(int position) const { return begin <= position && position <= end; }
};

// Where the numbers are: first the hours, then the minutes.
std::vector<Span> numbers(const QString& text)
{
    static const QRegularExpression digits(QStringLiteral("\\p{Nd}+"));
    std::vector<Span> found;
    for (auto matches = digits.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        found.push_back({.begin = static_cast<int>(match.capturedStart()),
                         .end = static_cast<int>(match.capturedEnd())});
    }
    return found;
}

}  // namespace

TimeBox::TimeBox(std::function<void(TimeOfDay)> changed, QWidget* parent)
    : QAbstractSpinBox(parent), changed_(std::move(changed))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setFrame(false);
    setAlignment(Qt::AlignCenter);
    setKeyboardTracking(false);
    setInputMethodHints(Qt::ImhPreferNumbers);
    measure();
    connect(this, &QAbstractSpinBox::editingFinished, this, &TimeBox::commit);
}

void TimeBox::setTheme(const Theme& shades)
{
    theme = shades;
    setFont(theme.body);
    auto colors = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colors.setColor(group, QPalette::Text, textColor(theme, group != QPalette::Disabled));
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
    if (!isBeingEdited()) showStored();
}

void TimeBox::showStored()
{
    const bool wasWhole = isWholeSelected();
    lineEdit()->setText(notation().text(stored));
    if (wasWhole) selectAll();
}

bool TimeBox::isWholeSelected() const
{
    return hasFocus() && lineEdit()->selectedText() == text();
}

bool TimeBox::isBeingEdited() const
{
    return lineEdit()->isModified();
}

// Called on Enter and when the focus leaves.
void TimeBox::commit()
{
    const auto notation = this->notation();
    if (text() == notation.text(stored)) return lineEdit()->setModified(false);
    take(notation.time(text()).value_or(stored));
}

void TimeBox::take(QTime time)
{
    const bool isFresh = time != stored;
    stored = time;
    showStored();
    if (isFresh) changed_({.hour = time.hour(), .minute = time.minute()});
}

void TimeBox::stepBy(int steps)
{
    const auto stepped = section();
    auto time = notation().time(text()).value_or(stored);
    if (stepped == Section::minute) {
        time = QTime(time.hour(), ((time.minute() + steps) % 60 + 60) % 60);
    } else {
        time = time.addSecs(steps * (stepped == Section::hour ? 3600 : 12 * 3600));
    }
    take(time);
    select(stepped);
}

TimeBox::Section TimeBox::section() const
{
    const auto spans = numbers(text());
    const int cursor = lineEdit()->cursorPosition();
    if (spans.empty() || isWholeSelected() || spans[0].touches(cursor)) return Section::hour;
    if (spans.size() > 1 && spans[1].touches(cursor)) return Section::minute;
    if (notation().has12Hours()) return Section::half;
    return cursor < spans[0].begin ? Section::hour : Section::minute;
}

// Selects the section, so that the next step changes it again.
void TimeBox::select(Section section)
{
    const auto spans = numbers(text());
    if (spans.size() != 2) return;
    const int size = static_cast<int>(text().size());
    auto [from, to] = spans[section == Section::minute ? 1 : 0];
    if (section == Section::half) {
        const bool isFirst = spans[1].end == size;
        from = isFirst ? spans[0].begin : spans[1].end;
        to = isFirst ? 0 : size;
    }
    lineEdit()->setSelection(from, to - from);
}

void TimeBox::measure()
{
    const auto notation = this->notation();
    textWidth = 0;
    for (int hour = 0; hour < 24; ++hour) {
        const auto text = notation.text(QTime(hour, 58));
        textWidth = std::max(textWidth, fontMetrics().horizontalAdvance(text));
    }
    if (!isBeingEdited()) showStored();
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
    const auto shape = shapeInRing(*this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fieldFill(theme, {.enabled = isEnabled()}));
    painter.drawRoundedRect(shape, radius, radius);
    if (hasFocus()) paintRing(painter, shape, radius, theme);
}

// Without keyboard focus, the wheel scrolls the form instead.
void TimeBox::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus()) return event->ignore();
    QAbstractSpinBox::wheelEvent(event);
}

void TimeBox::changeEvent(QEvent* event)
{
    QAbstractSpinBox::changeEvent(event);
    if (event->type() == QEvent::LocaleChange) measure();
}

// Selects the whole time, so that typing replaces it; a click places the cursor instead.
void TimeBox::focusInEvent(QFocusEvent* event)
{
    QAbstractSpinBox::focusInEvent(event);
    if (event->reason() == Qt::OtherFocusReason || event->reason() == Qt::ShortcutFocusReason)
        selectAll();
}

}  // namespace vorlane::platform
