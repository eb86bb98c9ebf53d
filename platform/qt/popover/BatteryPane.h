// The popover's content for a battery: gauge, cycles, details and the chart with its range.
#pragma once

#include <QWidget>
#include <vector>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class ChartWidget;
class CycleBar;
class DetailRowLabel;
class GaugeRow;
class SegmentedPicker;

class BatteryPane : public QWidget {
    Q_OBJECT

public:
    explicit BatteryPane(const PopoverIntents& intents, QWidget* parent = nullptr);

    void setContent(const BatteryBlocks& content);
    void setTheme(const Theme& next);

private:
    void setCycles(const std::optional<CycleBlock>& content);
    void setDetails(const std::vector<DetailRow>& content);

    GaugeRow* gauge;
    QWidget* cycles;
    DetailRowLabel* cycleRow;
    CycleBar* cycleBar;
    QWidget* details;
    std::vector<DetailRowLabel*> rows;  // created when first needed, then reused
    SegmentedPicker* picker;
    ChartWidget* chart;
    Theme theme;
};

}  // namespace vorlane::platform
