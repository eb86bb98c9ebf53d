// What the popover shows, top to bottom, and its intents.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "App/content/ChartContent.h"
#include "App/content/Color.h"

namespace vorlane {

struct RingContent {
    std::int64_t percent = 0;  // how much of the ring is filled; not clamped
    Color color = Color::accent;
    std::string text;  // in the centre

    friend bool operator==(const RingContent&, const RingContent&) = default;
};

// A label at the left and a value at the right.
struct DetailRow {
    std::string label;
    std::string value;
    std::optional<Color> color;  // the value's colour; absent: secondary

    friend bool operator==(const DetailRow&, const DetailRow&) = default;
};

struct SnoozeLine {
    std::string text;
    std::string cancel;  // the title of the cancel link after the text

    friend bool operator==(const SnoozeLine&, const SnoozeLine&) = default;
};

// The ring, with the state in words beside it.
struct GaugeBlock {
    RingContent ring;
    std::string stateText;
    std::optional<std::string> pluggedFor;
    std::optional<SnoozeLine> snooze;

    friend bool operator==(const GaugeBlock&, const GaugeBlock&) = default;
};

// A row with a progress bar below it.
struct CycleBlock {
    DetailRow row;
    std::int64_t value = 0;
    std::int64_t total = 0;
    Color tint = Color::accent;

    friend bool operator==(const CycleBlock&, const CycleBlock&) = default;
};

struct RangePicker {
    std::vector<std::string> choices;
    std::int64_t selected = 0;  // index into `choices`

    friend bool operator==(const RangePicker&, const RangePicker&) = default;
};

struct BatteryBlocks {
    GaugeBlock gauge;
    std::optional<CycleBlock> cycles;
    std::vector<DetailRow> details;
    RangePicker range;
    ChartContent chart;

    friend bool operator==(const BatteryBlocks&, const BatteryBlocks&) = default;
};

struct NoBatteryBlock {
    std::string symbol;  // the name of a system symbol
    std::string title;
    std::string text;

    friend bool operator==(const NoBatteryBlock&, const NoBatteryBlock&) = default;
};

struct PopoverContent {
    std::variant<NoBatteryBlock, BatteryBlocks> blocks;
    std::string footnote;
    std::string settings;  // the title of the button at the left
    std::string quit;      // the title of the button at the right

    friend bool operator==(const PopoverContent&, const PopoverContent&) = default;
};

// Called on the main thread. No intent is ever empty.
struct PopoverIntents {
    std::function<void()> openSettings = [] {};
    std::function<void()> quit = [] {};
    std::function<void()> cancelSnooze = [] {};
    std::function<void(std::int64_t range)> selectRange = [](std::int64_t) {};
};

}  // namespace vorlane
