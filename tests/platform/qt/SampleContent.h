// Records as a real laptop gives them, for tests and pictures.
#pragma once

#include "App/content/PopoverContent.h"

namespace vorlane::platform {

// A Wednesday, 14:05 in Berlin.
inline constexpr Date sampleNow{1772629500};

PopoverContent charging();
PopoverContent onBattery();
PopoverContent snoozed();
PopoverContent wornBattery();
PopoverContent sevenDays();
PopoverContent collecting();
PopoverContent noBattery();

// The battery of all but the last.
const BatteryBlocks& blocks(const PopoverContent& content);

// Charge over the days before `sampleNow`: used by day, asleep by night.
ChartContent usedLaptop(int days);

}  // namespace vorlane::platform
