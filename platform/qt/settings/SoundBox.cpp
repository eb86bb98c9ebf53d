#include "platform/qt/settings/SoundBox.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace vorlane::platform {

SoundBox::SoundBox(std::function<void(const std::string&)> chosen, QWidget* parent)
    : Themed(parent), chosen_(std::move(chosen))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setMaxVisibleItems(20);
    connect(this, &QComboBox::activated, this, &SoundBox::choose);
}

void SoundBox::setEntries(const std::vector<SoundEntry>& sounds)
{
    if (sounds == entries) return;
    entries = sounds;
    clear();
    for (const auto& entry : entries) {
        if (entry.title.empty()) {
            insertSeparator(count());
        } else {
            addItem(QString::fromStdString(entry.title));
        }
    }
    setCurrentIndex(-1);
    updateGeometry();
}

void SoundBox::setSound(const std::string& sound)
{
    value = sound;
    const auto entry = std::ranges::find_if(entries, [&](const SoundEntry& candidate) {
        return !candidate.title.empty() && candidate.value == sound;
    });
    const auto index = entry == entries.end() ? -1 : static_cast<int>(entry - entries.begin());
    if (index != currentIndex()) setCurrentIndex(index);
    setPlaceholderText(QString::fromStdString(sound));
}

void SoundBox::choose(int index)
{
    const auto& chosen = entries[static_cast<std::size_t>(index)].value;
    if (chosen == value) return;
    value = chosen;
    chosen_(value);
}

QSize SoundBox::sizeHint() const
{
    const ControlMetrics metrics(theme.body);
    int widest = 6 * metrics.line;
    for (const auto& entry : entries) {
        widest =
            std::max(widest, fontMetrics().horizontalAdvance(QString::fromStdString(entry.title)));
    }
    return {widest + 3 * metrics.indent + 2 * ringRoom, metrics.field + 2 * ringRoom};
}

void SoundBox::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlMetrics metrics(theme.body);
    const auto shape = shapeInRing(*this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fieldFill(theme, {.enabled = isEnabled(), .hovered = underMouse()}));
    painter.drawRoundedRect(shape, metrics.radius, metrics.radius);

    auto room = shape.adjusted(0.75 * metrics.indent, 0, -0.75 * metrics.indent, 0);
    paintArrows(painter, room);
    if (isRightToLeft()) {
        room.setLeft(room.left() + metrics.indent);
    } else {
        room.setRight(room.right() - metrics.indent);
    }
    const bool listed = currentIndex() >= 0;
    const auto text = listed ? currentText() : placeholderText();
    painter.setPen(textColor(theme, isEnabled() && listed));
    painter.drawText(
        room, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading),
        fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room.width())));
    if (ring.isVisible()) paintRing(painter, shape, metrics.radius, theme);
}

void SoundBox::paintArrows(QPainter& painter, const QRectF& room) const
{
    const double line = ControlMetrics(theme.body).line;
    const double half = 0.2 * line;
    const QPointF center(isRightToLeft() ? room.left() + half : room.right() - half,
                         room.center().y());
    auto color = textColor(theme, isEnabled());
    color.setAlphaF(isEnabled() ? 0.75F : 0.45F);
    painter.setPen(
        QPen(color, std::max(1.25, 0.09 * line), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    for (const double up : {-1.0, 1.0}) {
        const auto tip = center + QPointF(0, up * (0.14 * line + half));
        const auto foot = center + QPointF(0, up * 0.14 * line);
        painter.drawPolyline(QPolygonF{foot - QPointF(half, 0), tip, foot + QPointF(half, 0)});
    }
}

// The wheel scrolls the form; sounds are chosen from the list.
void SoundBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void SoundBox::keyPressEvent(QKeyEvent* event)
{
    // Lets the window close; QComboBox would look for an entry that begins with the shortcut's
    // letter.
    if (event->matches(QKeySequence::Close)) return event->ignore();
    QComboBox::keyPressEvent(event);
}

}  // namespace vorlane::platform
