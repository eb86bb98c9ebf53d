// UPower's estimates of the remaining time, where UPower runs.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "App/Date.h"
#include "App/Listeners.h"
#include "platform/linux/base/NameWatch.h"
#include "platform/linux/base/Systemd.h"
#include "platform/linux/power/TimeEstimates.h"

namespace vorlane::platform {

// Listens to UPower's display device and never waits for it. UPower is not started for this: the
// kernel's own energy and rate will do. A UPower that has been silent for minutes is not believed.
class UPowerEstimates : public TimeEstimates {
public:
    // As `connect`. `uptime` counts the time asleep.
    UPowerEstimates(sd_bus* system, std::function<Seconds()> uptime);

    // From now on by this connection, which is attached to the main loop and stays until the next
    // call or the end of this object; null without a system bus.
    void connect(sd_bus* system);

    // Absent where UPower does not agree that the battery is doing this.
    Minutes estimate(ChargeStatus status) override;

    // A time that merely runs down is no change: it is seen at the next reading.
    Subscription observe(std::function<void()> changed) override;

private:
    // What UPower last said; see org.freedesktop.UPower.Device.
    struct Device {
        ChargeStatus status = ChargeStatus::unknown;
        Minutes minutes;  // each absent when unknown or not plausible

        // Takes over what the properties (a{sv}) at the message's position tell; what has another
        // type than the interface says becomes unknown. False when the message is no such thing.
        bool update(sd_bus_message* message);
        bool updateOne(sd_bus_message* message);
    };

    void setOwner(const char* name);
    void ask();
    void answered(sd_bus_message* reply);
    void propertiesChanged(sd_bus_message* signal);
    bool isLongAgo(std::optional<Seconds> moment) const;
    Minutes current(ChargeStatus status) const;
    void tellOfChange();

    sd_bus* system_ = nullptr;
    std::function<Seconds()> uptime_;
    Listeners listeners;
    std::string owner;  // UPower's unique name; empty while it does not run
    Device device;
    std::optional<Seconds> heard;  // when its owner last said something
    std::optional<Seconds> asked;
    ChargeStatus lastStatus = ChargeStatus::unknown;  // of the last estimate given
    Minutes lastGiven;
    std::optional<NameWatch> names;
    SlotPointer propertiesSignal;
    SlotPointer request;  // while an answer is awaited
};

}  // namespace vorlane::platform
