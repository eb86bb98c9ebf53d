// Serves the machine's battery, as the kernel describes it: the only power source, and the registry
// of its details.
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

// `descriptions` reads the supplies; while no file can be opened, it repeats the last reading.
// Remaining times come from `estimates` if it has any. A plug change that may be a loose contact is
// held back for a while.
class KernelBattery : public PowerSources, public BatteryRegistry {
public:
    struct Dependencies {
        RunLoop& runLoop;
        TimeEstimates& estimates;
        std::function<Subscription(std::function<void()> changed)> watchSupplies;
        std::function<Seconds()> uptime;  // counts the time asleep
        WeakCharger charger = {};         // from before a restart in place
    };

    explicit KernelBattery(Dependencies dependencies,
                           std::string powerSupplies = kernelPowerSupplies);

    std::vector<PropertyDictionary> descriptions() override;

    // From the last call of `descriptions`.
    std::optional<PropertyDictionary> properties() override { return details; }

    // Reports a burst of changes once, shortly after the first.
    Subscription observe(std::function<void()> changed) override;

    // After a wake: discards the average rate and earlier plug changes, so that the next one does
    // not count as a loose contact. Time asleep does not count as draining.
    void resumed();

    // Whether a plug change has been read but not shown yet.
    bool holdsBackPlugChange() const { return static_cast<bool>(lookAgain); }

    // Passes on to the next process image the state that it cannot read again.
    void handOver() const { charger.handOver(); }

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
    Subscription burst;  // while changes are pending
    Subscription supplyEvents;
    Subscription estimateEvents;
    Subscription lookAgain;  // while a plug change is held back
    std::vector<PropertyDictionary> sources;
    std::optional<PropertyDictionary> details;
};

}  // namespace vorlane::platform
