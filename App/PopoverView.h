// Builds the popover's content from the model and the chosen range, and carries out its intents.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/AppModel.h"
#include "App/Published.h"
#include "App/content/PlatformTexts.h"
#include "App/content/PopoverContent.h"
#include "App/services/Application.h"
#include "App/services/Calendar.h"

namespace vorlane {

class PopoverView : public std::enable_shared_from_this<PopoverView> {
public:
    struct Dependencies {
        Application& application;
        const Calendar& calendar;
        const PlatformTexts& texts;
    };

    std::shared_ptr<AppModel> model;
    std::function<void()> openSettings;
    Published<std::int64_t> range;  // 0: 24 hours; otherwise 7 days

    PopoverView(std::shared_ptr<AppModel> model, std::function<void()> openSettings,
                Dependencies dependencies);

    PopoverContent content(Date now) const;

    // The intents do nothing once the view is destroyed.
    PopoverIntents intents();

private:
    BatteryBlocks battery(Date now) const;
    GaugeBlock gauge(Date now) const;
    std::optional<CycleBlock> cycles() const;
    std::vector<DetailRow> details() const;
    static DetailRow row(std::string label, std::string value, std::optional<Color> color);

    Dependencies dependencies_;
};

}  // namespace vorlane
