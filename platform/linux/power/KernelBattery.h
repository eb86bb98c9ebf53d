// The machine's battery from the kernel's power supplies: the one power source, and the registry of
// its details.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "App/Listeners.h"
#include "App/services/BatteryRegistry.h"
#include "App/services/PowerSources.h"
#include "App/services/RunLoop.h"
#include "platform/linux/power/CableDebounce.h"
#include "platform/linux/power/PowerSupplyFolder.h"
#include "platform/linux/power/RateAverage.h"
#include "platform/linux/power/TimeEstimates.h"
#include "platform/linux/power/WeakCharger.h"

namespace vorlane::platform {

// `descriptions` reads the supplies; while no file can be opened, what was read last stands in.
// Facts are the kernel's, only the remaining time comes from `estimates` where it knows one. A plug
// change that may be a loose contact is held back for a while.
class KernelBattery : public PowerSources, public BatteryRegistry {
public:
    struct Dependencies {
        RunLoop& runLoop;
        TimeEstimates& estimates;
        std::function<Subscription(std::function<void()> changed)> watchSupplies;
        std::function<Seconds()> uptime;  // counts the time asleep
        WeakCharger charger = {};         // as it was known before a restart in place
    };

    explicit KernelBattery(Dependencies dependencies,
                           std::string powerSupplies = kernelPowerSupplies);

    std::vector<PropertyDictionary> descriptions() override;

    // From the last call of `descriptions`.
    std::optional<PropertyDictionary> properties() override { return details; }

    // Reports a burst of changes once, shortly after the first.
    Subscription observe(std::function<void()> changed) override;

    // After a wake: drops the old average rate, and forgets plug changes from the sleep, so that
    // the next one is not taken for a loose contact. Time asleep is not time spent draining.
    void resumed();

    // Whether the last reading has a plug change that is not shown yet.
    bool holdsBackPlugChange() const { return static_cast<bool>(lookAgain); }

    // Passes what the readings alone do not tell to the process image that is about to be executed.
    void handOver() const { charger.leave(); }

private:
    void read(const std::vector<PowerSupply>& supplies);
    void reportSoon();
    PowerSituation shownFor(const PowerSituation& raw, Seconds now);

    Dependencies dependencies_;
    std::string folder;
    WeakCharger charger;
    RateAverage rate;
    CableDebounce filter;
    Listeners listeners;
    Subscription burst;  // while changes wait to be reported
    Subscription supplyEvents;
    Subscription estimateEvents;
    Subscription lookAgain;  // while a plug change is held back
    std::vector<PropertyDictionary> sources;
    std::optional<PropertyDictionary> details;
};

}  // namespace vorlane::platform
