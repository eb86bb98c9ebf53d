#include "platform/linux/BatteryGauge.h"

#include <array>
#include <cmath>

namespace vorlane::platform {

namespace {

constexpr double leastVolts = 1.0;
constexpr double mostVolts = 60.0;  // below the gauges' sentinel of 65.535 V
constexpr double mostAmperes = 30.0;
constexpr double mostWatts = 300.0;
constexpr std::int64_t unknownRate = 65535000;  // 16 bits of ones, in thousandths

struct StatusName {
    const char* text;
    ChargeStatus status;
};

constexpr std::array statusNames{StatusName{"Charging", ChargeStatus::charging},
                                 StatusName{"Discharging", ChargeStatus::discharging},
                                 StatusName{"Not charging", ChargeStatus::notCharging},
                                 StatusName{"Full", ChargeStatus::full}};

std::optional<double> measured(const PowerSupply& battery, std::string_view key, double most)
{
    const auto millionths = battery.integer(key);
    if (!millionths || *millionths == unknownRate) return std::nullopt;
    const double magnitude = std::abs(static_cast<double>(*millionths)) / 1e6;
    if (magnitude > most) return std::nullopt;
    return magnitude;
}

}  // namespace

ChargeStatus chargeStatus(const PowerSupply& battery)
{
    const auto text = battery.text("STATUS");
    for (const auto& name : statusNames) {
        if (text == name.text) return name.status;
    }
    return ChargeStatus::unknown;
}

std::optional<double> plausibleVoltage(const PowerSupply& battery, std::string_view key)
{
    const auto microvolts = battery.integer(key);
    if (!microvolts) return std::nullopt;
    const double volts = static_cast<double>(*microvolts) / 1e6;
    if (volts < leastVolts || volts > mostVolts) return std::nullopt;
    return volts;
}

std::optional<double> voltage(const PowerSupply& battery)
{
    return plausibleVoltage(battery, "VOLTAGE_NOW");
}

std::optional<double> currentMagnitude(const PowerSupply& battery)
{
    if (const auto current = measured(battery, "CURRENT_NOW", mostAmperes)) return current;

    const auto power = measured(battery, "POWER_NOW", mostWatts);
    const auto volts = voltage(battery);
    if (!power || !volts) return std::nullopt;
    return *power / *volts;
}

std::optional<double> powerMagnitude(const PowerSupply& battery)
{
    if (const auto power = measured(battery, "POWER_NOW", mostWatts)) return power;

    const auto current = measured(battery, "CURRENT_NOW", mostAmperes);
    const auto volts = voltage(battery);
    if (!current || !volts) return std::nullopt;
    return *current * *volts;
}

std::optional<double> signedCurrent(const PowerSupply& battery)
{
    const auto magnitude = currentMagnitude(battery);
    if (!magnitude) return std::nullopt;
    return chargeStatus(battery) == ChargeStatus::discharging ? -*magnitude : *magnitude;
}

}  // namespace vorlane::platform
