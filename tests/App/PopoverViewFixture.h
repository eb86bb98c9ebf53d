// A popover view of a model whose state the test sets.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "App/PopoverView.h"
#include "tests/App/AppModelFixture.h"
#include "tests/support/States.h"

namespace vorlane {

class PopoverViewFixture : public AppModelFixture {
protected:
    PopoverContent content() const { return view->content(machine.clock.time); }

    BatteryBlocks blocks() const { return std::get<BatteryBlocks>(content().blocks); }

    // The popover's content for that state.
    BatteryBlocks blocksOf(const BatteryState& state) const
    {
        model->state.set(state);
        return blocks();
    }

    Color ringOf(const BatteryState& state) const { return blocksOf(state).gauge.ring.color; }

    std::shared_ptr<AppModel> model = makeModel();
    int settingsOpened = 0;
    std::shared_ptr<PopoverView> view = std::make_shared<PopoverView>(
        model, [this] { ++settingsOpened; },
        PopoverView::Dependencies{.application = machine.application,
                                  .calendar = machine.calendar,
                                  .texts = machine.texts});
};

}  // namespace vorlane
