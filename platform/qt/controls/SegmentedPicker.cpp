#include "platform/qt/controls/SegmentedPicker.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

namespace {

constexpr double radius = 7;
constexpr int margin = 2;  // between the groove and the selected segment
constexpr QSize textMargins{10, 3};

}  // namespace

Segment::Segment(QWidget* parent) : TextButton(textMargins, parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool Segment::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void Segment::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inner = radius - margin;
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.shadow);
        painter.drawRoundedRect(QRectF(rect()).translated(0, 0.5), inner, inner);
        painter.setBrush(theme.raised);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0, -0.5, -0.5), inner, inner);
    }
    painter.setPen(isChecked() || underMouse() ? theme.text : theme.secondary);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) paintRing(painter, shapeInRing(*this), inner - ringRoom, theme);
}

SegmentedPicker::SegmentedPicker(std::function<void(std::int64_t)> pick, QWidget* parent)
    : QWidget(parent), pick_(std::move(pick))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(margin);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Created together: Tab visits widgets in the order of their creation.
    while (segments.size() < choicesAtMost) addSegment();
}

void SegmentedPicker::addSegment()
{
    auto* segment = new Segment(this);
    layout()->addWidget(segment);
    const auto index = static_cast<std::int64_t>(segments.size());
    // `toggled`, not `clicked`: assistive programs toggle without clicking.
    connect(segment, &Segment::toggled, this, [this, index](bool on) {
        if (on) pick_(index);
    });
    segments.push_back(segment);
}

void SegmentedPicker::setContent(const RangePicker& content)
{
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const bool used = i < content.choices.size();
        segments[i]->setVisible(used);
        if (!used) continue;
        segments[i]->setText(QString::fromStdString(content.choices[i]));
        const QSignalBlocker silent(segments[i]);  // only the user's choices are reported
        if (static_cast<std::int64_t>(i) == content.selected) segments[i]->setChecked(true);
    }
    updateGeometry();
}

void SegmentedPicker::setTheme(const Theme& next)
{
    theme = next;
    for (auto* segment : segments) segment->setTheme(theme);
    updateGeometry();
    update();
}

void SegmentedPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.control);
    painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace vorlane::platform
