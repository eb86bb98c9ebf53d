// The whole program on a fake laptop, which starts on battery at 50%.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "App/AppDelegate.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/Printing.h"

namespace vorlane {

class AppDelegateFixture : public testing::Test {
protected:
    static constexpr Date start = mondayMorning;

    void launch()
    {
        delegate = std::make_shared<AppDelegate>(machine.services());
        delegate->applicationDidFinishLaunching();
        machine.runLoop.settle();
    }

    void quit()
    {
        delegate->applicationWillTerminate();
        delegate.reset();
    }

    void restart()
    {
        quit();
        launch();
    }

    void set(const std::string& key, const DefaultsValue& value)
    {
        machine.defaults.set(key, value);
        machine.runLoop.settle();
    }

    std::int64_t refreshes() const { return delegate->model->historyVersion.get(); }

    const FakeStatusItem& item() const { return machine.statusBar.item; }
    const StatusItemContent& shown() const { return item().content; }

    // The kinds of all notifications posted so far.
    std::vector<std::string> posted() const
    {
        std::vector<std::string> kinds;
        for (const auto& request : machine.notifications.posted) {
            kinds.push_back(request.identifier);
        }
        return kinds;
    }

    FakeMachine machine;
    std::shared_ptr<AppDelegate> delegate;
};

}  // namespace vorlane
