#include "platform/qt/popover/GaugeRow.h"

#include <QVBoxLayout>

namespace vorlane::platform {

GaugeRow::GaugeRow(std::function<void()> cancelSnooze, QWidget* parent)
    : QWidget(parent),
      ring(new RingWidget(this)),
      state(new TextLabel(this)),
      pluggedFor(new TextLabel(this)),
      snooze(new SnoozeRow(std::move(cancelSnooze), this))
{
    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    words->addStretch();
    for (auto* line : std::initializer_list<QWidget*>{state, pluggedFor, snooze})
        words->addWidget(line);
    words->addStretch();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    row->addWidget(ring, 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
}

void GaugeRow::setContent(const GaugeBlock& content)
{
    ring->setContent(content.ring);
    state->setContent(content.stateText);
    pluggedFor->setVisible(content.pluggedFor.has_value());
    if (content.pluggedFor) pluggedFor->setContent(*content.pluggedFor);
    snooze->setVisible(content.snooze.has_value());
    if (content.snooze) snooze->setContent(*content.snooze);
    updateGeometry();
}

void GaugeRow::setTheme(const Theme& theme)
{
    ring->setTheme(theme);
    state->setLook(theme.headline, theme.text);
    pluggedFor->setLook(theme.caption, theme.secondary);
    snooze->setTheme(theme);
    updateGeometry();
}

}  // namespace vorlane::platform
