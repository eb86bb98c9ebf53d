// The whole program on a fake laptop that goes to sleep.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "tests/App/AppDelegateFixture.h"

namespace vorlane {

class AppModelSleepFixture : public AppDelegateFixture {
protected:
    AppModel& model() const { return *delegate->model; }

    void launchPluggedIn(std::int64_t percent)
    {
        machine.plugIn();
        machine.charge(percent);
        launch();
    }

    void launchUnplugged(std::int64_t percent)
    {
        machine.charge(percent);
        launch();
    }

    void beginSleep()
    {
        machine.sleep();
        machine.advance(std::chrono::hours{1});
    }

    // Plugs in or unplugs without a signal from the power sources.
    void moveCableSilently(bool plugged)
    {
        machine.powerSources.sources[0].set("Power Source State",
                                            std::string(plugged ? "AC Power" : "Battery Power"));
    }

    // Expects no reminder while the battery stays low, but one the next time it becomes low.
    void expectThatLowIsKnown()
    {
        machine.advance(std::chrono::hours{1});
        EXPECT_EQ(model().state.get().percent, 15);
        EXPECT_FALSE(model().state.get().pluggedIn);
        EXPECT_THAT(posted(), testing::IsEmpty());

        machine.plugIn();
        machine.unplug();
        EXPECT_THAT(posted(), testing::ElementsAre("low"));
    }
};

}  // namespace vorlane
