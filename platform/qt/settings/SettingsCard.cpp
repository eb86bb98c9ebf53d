#include "platform/qt/settings/SettingsCard.h"

#include <QPainter>

#include "platform/qt/look/ControlStyle.h"

namespace vorlane::platform {

SettingsCard::SettingsCard(QWidget* parent) : QWidget(parent), stack(new QVBoxLayout(this))
{
    stack->setContentsMargins({});
    stack->setSpacing(1);  // the hairline
}

void SettingsCard::addRow(SettingsRowView* row)
{
    rows.push_back(row);
    stack->addWidget(row);
}

void SettingsCard::insertNote(QLabel* note, std::size_t after)
{
    const int place = after == 0 ? 0 : stack->indexOf(rows[after - 1]) + 1;
    stack->insertWidget(place, note);
}

void SettingsCard::setTheme(const Theme& theme)
{
    theme_ = theme;
    for (auto* const row : rows) row->setTheme(theme);
    update();
}

void SettingsCard::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlMetrics metrics(theme_.body);
    const double radius = 1.6 * metrics.radius;
    painter.setPen(QPen(theme_.separator, 1));
    painter.setBrush(theme_.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);

    for (const auto* const row : rows) {
        if (row == rows.front()) continue;
        painter.fillRect(QRect(metrics.indent, row->y() - 1, width() - 2 * metrics.indent, 1),
                         theme_.separator);
    }
}

}  // namespace vorlane::platform
