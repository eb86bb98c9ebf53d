// Estimates from a fake UPower on a private bus.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/power/UPowerEstimates.h"
#include "tests/platform/linux/power/FakeUPower.h"

namespace vorlane::platform {

class UPowerEstimatesFixture : public testing::Test {
protected:
    static constexpr std::int64_t stateCharging = 1;
    static constexpr std::int64_t stateDischarging = 2;

    PrivateBus bus;
    SdEventRunLoop loop;
    BusPointer connection = bus.connect(loop);
    Seconds now{1000};
    UPowerEstimates estimates{connection.get(), [this] { return now; }};
    std::unique_ptr<FakeUPower> upower;

    void startUPower(std::vector<FakeUPower::Property> properties)
    {
        upower = std::make_unique<FakeUPower>(bus, loop);
        upower->properties = std::move(properties);
    }

    void startDischarging(std::int64_t seconds)
    {
        startUPower({{"State", 'u', stateDischarging}, {"TimeToEmpty", 'x', seconds}});
    }

    std::optional<std::int64_t> toEmpty() { return estimates.estimate(ChargeStatus::discharging); }

    std::optional<std::int64_t> toFull() { return estimates.estimate(ChargeStatus::charging); }

    void waitForMinutesToEmpty(std::optional<std::int64_t> minutes)
    {
        EXPECT_TRUE(runUntil(loop, [&] { return toEmpty() == minutes; }));
    }

    // Waits until all earlier signals of UPower have been handled.
    void handleSignals()
    {
        upower->say({{"State", 'u', stateCharging}, {"TimeToFull", 'x', 420}});
        EXPECT_TRUE(runUntil(loop, [&] { return toFull() == 7; }));
        upower->say({{"State", 'u', stateDischarging}});
        EXPECT_TRUE(runUntil(loop, [&] { return !toFull(); }));
    }
};

}  // namespace vorlane::platform
