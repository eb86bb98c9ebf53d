// The whole program after its launch, with fake windows.
#pragma once

#include <string>
#include <variant>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {

class AppDelegateWindowsFixture : public AppDelegateFixture {
protected:
    AppDelegateWindowsFixture() { launch(); }

    const FakeWindows::PopoverState& popover() const { return machine.windows.popover; }
    const FakeWindows::SettingsState& settings() const { return machine.windows.settings; }

    void click()
    {
        item().click();
        machine.runLoop.settle();
    }

    bool choose(const std::string& title)
    {
        const bool found = item().choose(title);
        machine.runLoop.settle();
        return found;
    }

    void reopen()
    {
        machine.application.reopen();
        machine.runLoop.settle();
    }

    const BatteryBlocks& battery() const
    {
        return std::get<BatteryBlocks>(popover().shown->blocks);
    }
};

}  // namespace vorlane
