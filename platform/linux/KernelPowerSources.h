// The power-source service from the kernel's power supplies: one source, the machine's battery.
#pragma once

#include <functional>
#include <string>

#include "App/Listeners.h"
#include "App/services/PowerSources.h"
#include "App/services/RunLoop.h"
#include "platform/linux/Coalescer.h"
#include "platform/linux/PlugFilter.h"
#include "platform/linux/PowerSupplyFolder.h"
#include "platform/linux/RateAverage.h"
#include "platform/linux/TimeEstimates.h"
#include "platform/linux/WeakCharger.h"

namespace vorlane::platform {

// Facts are the kernel's, read anew each time; only the remaining time comes from `estimates`
// where it knows one. A plug change that may be a loose contact is held back for a while.
class KernelPowerSources : public PowerSources {
public:
    struct Tools {
        RunLoop& runLoop;
        TimeEstimates& estimates;
        std::function<Subscription(std::function<void()> changed)> watchSupplies;
        std::function<Seconds()> uptime;  // counts the time asleep
        WeakCharger charger = {};         // as it was known before a restart in place
    };

    explicit KernelPowerSources(Tools tools, std::string powerSupplies = kernelPowerSupplies);

    std::vector<PropertyDictionary> descriptions() override;

    // Tells of a burst of changes once.
    Subscription observe(std::function<void()> changed) override;

    // After a wake: drops the old average rate, and forgets plug changes from the sleep, so that
    // the next one is not taken for a loose contact. Time asleep is not time spent draining.
    void resumed();

    // Whether the last reading has a plug change that is not shown yet.
    bool holdsBackPlugChange() const { return static_cast<bool>(lookAgain); }

    // Passes what the readings alone do not tell to the process image that is about to be executed.
    void handOver() const { charger.leave(); }

private:
    std::vector<PropertyDictionary> descriptionsOf(const std::vector<PowerSupply>& supplies);
    PowerSituation shownFor(const PowerSituation& raw, Seconds now);

    Tools tools_;
    std::string folder;
    WeakCharger charger;
    RateAverage rate;
    PlugFilter filter;
    Listeners listeners;
    Coalescer changes;
    Subscription supplyEvents;
    Subscription estimateEvents;
    Subscription lookAgain;                // while a plug change is held back
    std::vector<PropertyDictionary> last;  // is returned when no file could be opened
};

}  // namespace vorlane::platform
