// Takes remaining times from UPower if it runs.
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

// Listens to UPower's display device and never waits for it. Does not start UPower: without it, the
// kernel's energy and rate will do. Ignores the estimate of a UPower that has been silent for
// minutes.
class UPowerEstimates : public TimeEstimates {
public:
    // Calls `connect`. `uptime` counts the time asleep.
    UPowerEstimates(sd_bus* system, std::function<Seconds()> uptime);

    // Uses this connection from now on; null without a system bus. It is attached to the main loop
    // and must last until the next call or the end of this object.
    void connect(sd_bus* system);

    // Absent when UPower reports another status.
    std::optional<std::int64_t> estimate(ChargeStatus status) override;

    // A time that merely runs down is not reported: the next reading shows it.
    Subscription observe(std::function<void()> changed) override;

private:
    // The properties that UPower last sent; see org.freedesktop.UPower.Device.
    struct Device {
        ChargeStatus status = ChargeStatus::unknown;
        std::optional<std::int64_t> minutesToFull;
        std::optional<std::int64_t> minutesToEmpty;

        // Applies the properties (a{sv}) at the message's position; one with the wrong type becomes
        // unknown. False when there are no properties.
        bool update(sd_bus_message* message);
        bool updateOne(sd_bus_message* message);
    };

    void setOwner(const char* name);
    void ask();
    void answered(sd_bus_message* reply);
    void propertiesChanged(sd_bus_message* signal);
    bool isLongAgo(std::optional<Seconds> moment) const;
    std::optional<std::int64_t> current(ChargeStatus status) const;
    void reportChange();

    sd_bus* system_ = nullptr;
    std::function<Seconds()> uptime_;
    Listeners listeners;
    std::string owner;  // UPower's unique name; empty while it does not run
    Device device;
    std::optional<Seconds> heard;  // when it last sent its properties
    std::optional<Seconds> asked;
    ChargeStatus lastStatus = ChargeStatus::unknown;  // of the last estimate given
    std::optional<std::int64_t> lastGiven;
    std::optional<NameWatch> names;
    SlotPointer propertiesSignal;
    SlotPointer request;  // while a reply is pending
};

}  // namespace vorlane::platform
