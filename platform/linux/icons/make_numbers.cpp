// Draws the symbols with a percentage below them at build time, as symbolic icons: make_numbers
// FOLDER. Writes one SVG file for each percentage and each symbol that a battery at that percentage
// can have (see numberIconName).
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "App/BatteryState.h"
#include "platform/linux/tray/icon/StatusIcon.h"

namespace {

using vorlane::BatteryState;

// The icons are 22 units wide and high, as Plasma's panel shows them at 100%: there, all straight
// edges lie between pixels. The symbol takes the upper 8 units, the digits the lower 12.

struct Digit {
    int width;
    const char* path;  // drawn with a stroke of 2 units
};

constexpr std::array digits{
    Digit{8, "M1 4a3 3 0 0 1 6 0v4a3 3 0 0 1-6 0z"},
    Digit{4, "M3 12V1L.7 3.3"},
    Digit{8, "M1 4a3 3 0 0 1 6 0c0 1.6-.9 2.6-2 3.6L1.6 11H8"},
    Digit{8, "M1 3.5A3 2.5 0 1 1 4 6A3 2.5 0 1 1 1 8.5"},
    Digit{8, "M6 12V1.2L1.2 8H8"},
    Digit{8, "M7.5 1H2v5h2.5a2.5 2.5 0 0 1 0 5H1"},
    Digit{8, "M6.5 1C3 1.6 1 4.4 1 8a3 3 0 0 0 6 0a3 3 0 0 0-6 0"},
    Digit{8, "M.5 1H7L3 12"},
    Digit{8, "M4 1a2.7 2.5 0 0 1 0 5a2.7 2.5 0 0 1 0-5zM4 6a3 2.5 0 0 1 0 5a3 2.5 0 0 1 0-5z"},
    Digit{8, "M1.5 11C5 10.4 7 7.6 7 4a3 3 0 0 0-6 0a3 3 0 0 0 6 0"}};

constexpr const char* plug =
    "<path fill='currentColor' d='M7 0h2v2h4V0h2v2h1v1.5A3.5 3.5 0 0 1 12.5 7H12v1h-2V7h-.5"
    "A3.5 3.5 0 0 1 6 3.5V2h1z'/>";
constexpr const char* knob =
    "<path fill='currentColor' d='M20 2h.5a.5.5 0 0 1 .5.5v3a.5.5 0 0 1-.5.5H20z'/>";
constexpr const char* outline =
    "<path stroke='currentColor' d='M3.5.5h13a2 2 0 0 1 2 2v3a2 2 0 0 1-2 2h-13a2 2 0 0 1-2-2v-3"
    "a2 2 0 0 1 2-2z'/>";
constexpr const char* outlineAroundBolt =
    "<path stroke='currentColor' d='M7 .5H3.5a2 2 0 0 0-2 2v3a2 2 0 0 0 2 2H6"
    "M14 .5h2.5a2 2 0 0 1 2 2v3a2 2 0 0 1-2 2H13'/>";
constexpr const char* bolt = "<path fill='currentColor' d='M12 0L7 4.7h2.4L8 8l5-4.7h-2.4z'/>";

std::string batteryOf(int quarters)
{
    std::string battery = std::string(outline) + knob;
    if (quarters == 0) return battery;
    return battery + "<rect fill='currentColor' x='3' y='2' width='" +
           std::to_string(14 * quarters / 4) + "' height='4' rx='.8'/>";
}

std::string drawingOf(const std::string& symbol)
{
    if (symbol == "powerplug.fill") return plug;
    if (symbol == "battery.100.bolt") return std::string(outlineAroundBolt) + bolt + knob;
    if (symbol == "battery.75") return batteryOf(3);
    if (symbol == "battery.50") return batteryOf(2);
    if (symbol == "battery.25") return batteryOf(1);
    return batteryOf(symbol == "battery.0" ? 0 : 4);
}

std::string drawingOf(std::int64_t percent)
{
    const auto text = std::to_string(percent);
    const int space = text.size() > 2 ? 1 : 2;
    int width = -space;
    for (const auto c : text) width += digits.at(static_cast<std::size_t>(c - '0')).width + space;

    std::string drawing;
    int x = (22 - width) / 2;
    for (const auto c : text) {
        const auto& digit = digits.at(static_cast<std::size_t>(c - '0'));
        drawing += "<path stroke='currentColor' stroke-width='2' transform='translate(" +
                   std::to_string(x) + " 10)' d='" + digit.path + "'/>";
        x += digit.width + space;
    }
    return drawing;
}

bool write(const std::filesystem::path& folder, const BatteryState& state)
{
    const auto symbol = state.symbolNames().front();
    const auto name = vorlane::platform::numberIconName(symbol, state.percent);
    std::ofstream file(folder / (name + ".svg"));
    file << "<svg xmlns='http://www.w3.org/2000/svg' width='22' height='22' viewBox='0 0 22 22'>"
            "<style id='current-color-scheme' type='text/css'>"
            ".ColorScheme-Text { color: #888888; }</style>"
            "<g class='ColorScheme-Text' fill='none' stroke-linejoin='round'>"
         << drawingOf(symbol) << drawingOf(state.percent) << "</g></svg>\n";
    file.close();
    return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: make_numbers FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    for (std::int64_t percent = 0; percent <= 100; ++percent) {
        BatteryState state;
        state.hasBattery = true;
        state.percent = percent;
        auto charging = state;
        charging.pluggedIn = charging.isCharging = true;
        auto charged = state;
        charged.pluggedIn = charged.isCharged = true;
        auto held = state;
        held.pluggedIn = true;
        for (const auto& one : {state, charging, charged, held}) {
            if (write(folder, one)) continue;
            std::fprintf(stderr, "make_numbers: cannot write to %s\n", folder.c_str());
            return 1;
        }
    }
    return 0;
}
