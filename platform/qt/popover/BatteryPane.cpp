#include "platform/qt/popover/BatteryPane.h"

#include <QVBoxLayout>

#include "platform/qt/chart/ChartWidget.h"
#include "platform/qt/controls/SegmentedPicker.h"
#include "platform/qt/popover/CycleBar.h"
#include "platform/qt/popover/DetailRowLabel.h"
#include "platform/qt/popover/GaugeRow.h"

namespace vorlane::platform {

namespace {

QVBoxLayout* stack(QWidget* on, int spacing)
{
    auto* layout = new QVBoxLayout(on);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

}  // namespace

BatteryPane::BatteryPane(const PopoverIntents& intents, QWidget* parent)
    : QWidget(parent),
      gauge(new GaugeRow(intents.cancelSnooze, this)),
      cycles(new QWidget(this)),
      cycleRow(new DetailRowLabel(cycles)),
      cycleBar(new CycleBar(cycles)),
      details(new QWidget(this)),
      picker(new SegmentedPicker(intents.selectRange, this)),
      chart(new ChartWidget(this))
{
    auto* block = stack(cycles, 4);
    block->addWidget(cycleRow);
    block->addWidget(cycleBar);
    stack(details, 6);

    auto* items = stack(this, 14);
    for (auto* item : std::initializer_list<QWidget*>{gauge, cycles, details, picker, chart})
        items->addWidget(item);
}

void BatteryPane::setContent(const BatteryBlocks& content)
{
    gauge->setContent(content.gauge);
    setCycles(content.cycles);
    setDetails(content.details);
    picker->setContent(content.range);
    chart->setContent(content.chart);
    updateGeometry();
}

void BatteryPane::setCycles(const std::optional<CycleBlock>& content)
{
    cycles->setVisible(content.has_value());
    if (!content) return;
    cycleRow->setContent(content->row);
    cycleBar->setFilling({.value = content->value, .total = content->total, .tint = content->tint});
    cycleBar->setAccessibleName(QString::fromStdString(content->row.label));
    cycles->updateGeometry();
}

void BatteryPane::setDetails(const std::vector<DetailRow>& content)
{
    while (rows.size() < content.size()) {
        rows.push_back(new DetailRowLabel(details));
        rows.back()->setTheme(theme);
        details->layout()->addWidget(rows.back());
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i]->setVisible(i < content.size());
        if (i < content.size()) rows[i]->setContent(content[i]);
    }
    details->setVisible(!content.empty());
    details->updateGeometry();
}

void BatteryPane::setTheme(const Theme& next)
{
    theme = next;
    gauge->setTheme(theme);
    cycleRow->setTheme(theme);
    cycleBar->setTheme(theme);
    for (auto* row : rows) row->setTheme(theme);
    picker->setTheme(theme);
    chart->setTheme(theme);
    cycles->updateGeometry();
    details->updateGeometry();
    updateGeometry();
}

}  // namespace vorlane::platform
