// A battery in a folder of supplies, with fake kernel events and estimates.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/linux/power/KernelBattery.h"
#include "tests/platform/linux/power/FakeTimeEstimates.h"
#include "tests/platform/linux/support/TemporaryFolder.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {

class KernelBatteryFixture : public testing::Test {
protected:
    TemporaryFolder folder;
    FakeClock clock;
    FakeRunLoop loop{clock};
    FakeTimeEstimates estimates;
    Listeners kernel;
    KernelBattery battery{dependencies(), folder.path()};
    int changes = 0;

    KernelBattery::Dependencies dependencies()
    {
        return {.runLoop = loop,
                .estimates = estimates,
                .watchSupplies = [this](auto changed) { return kernel.add(std::move(changed)); },
                .uptime = [this] { return clock.time - distantPast; }};
    }

    void setBattery(const std::string& status, const std::string& capacity = "50")
    {
        folder.write("BAT0/uevent", "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=" + status +
                                        "\nPOWER_SUPPLY_CAPACITY=" + capacity +
                                        "\nPOWER_SUPPLY_MODEL_NAME=X\n"
                                        "POWER_SUPPLY_ENERGY_NOW=25000000\n"
                                        "POWER_SUPPLY_ENERGY_FULL=50000000\n"
                                        "POWER_SUPPLY_POWER_NOW=10000000\n");
    }

    void setCable(bool online)
    {
        folder.write("AC/uevent", std::string("POWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=") +
                                      (online ? "1\n" : "0\n"));
        setBattery(online ? "Charging" : "Discharging");
    }

    PropertyDictionary description()
    {
        const auto list = battery.descriptions();
        EXPECT_EQ(list.size(), 1U);
        return list.empty() ? PropertyDictionary{} : list.front();
    }

    Subscription countChanges()
    {
        return battery.observe([this] { ++changes; });
    }
};

}  // namespace vorlane::platform
