// Realistic popover content, for tests and screenshots.
#pragma once

#include "App/content/PopoverContent.h"

namespace vorlane::platform {

// A Wednesday in Berlin: 14:05 (on battery) and 18:36 (on power again).
inline constexpr Date sampleNoon{1772629500};
inline constexpr Date sampleEvening{1772645760};

PopoverContent charging();
PopoverContent onBattery();
PopoverContent snoozed();
PopoverContent wornBattery();
PopoverContent sevenDays();
PopoverContent collecting();
PopoverContent noBattery();

// The battery of any content except noBattery().
const BatteryBlocks& blocks(const PopoverContent& content);

struct Recorded {
    int days = 1;
    Date until;
};

// Charge of a laptop that is used by day and asleep by night.
ChartContent usedLaptop(const Recorded& recorded);

}  // namespace vorlane::platform
