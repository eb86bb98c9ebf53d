#include "platform/linux/power/PowerNotes.h"

#include "platform/linux/power/PowerAdapters.h"
#include "platform/linux/power/WeakCharger.h"

namespace vorlane::platform {

std::vector<std::string> powerNotes(const std::vector<PowerSupply>& supplies,
                                    const std::optional<MachineBattery>& battery)
{
    if (!battery || !battery->percent || battery->status != ChargeStatus::discharging) return {};

    const auto claim = adapterClaim(supplies, battery->status);
    if (claim == AdapterClaim::staleOnline) {
        return {
            "A USB supply says that it is online, but the mains adapter says that it is not and "
            "the battery is discharging: the laptop counts as on battery."};
    }
    if (claim != AdapterClaim::online) return {};
    if (battery->isForcedToDischarge) {
        return {
            "The battery is discharging on the adapter because charge_behaviour says "
            "force-discharge: the laptop counts as plugged in."};
    }
    if (!WeakCharger::canTell(*battery)) {
        return {
            "The battery is discharging although an adapter is online: at 50% and above, where "
            "the firmware may be keeping to a limit of its own, the laptop counts as plugged in."};
    }
    return {
        "The battery is discharging below 50% although an adapter is online: after one minute of "
        "this the laptop counts as on battery."};
}

}  // namespace vorlane::platform
