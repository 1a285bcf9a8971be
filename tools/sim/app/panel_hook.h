// The simulator's eyes, the glue between a simulated controller and the panel part: every G5
// program file that lands in the simulator's file system is read and shown as the panel would
// show it (see sim/panel/panel_png.h), in a folder of the caller's choice.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "sim/panel/panel_png.h"

namespace zel::sim {

class Simulator;

// What the simulator shows of the programs it receives.
struct PanelOptions {
    std::string folder; // empty: nothing is written
    uint32_t width = 0; // the screen, in pixels
    uint32_t height = 0;
    int32_t colorMode = 1;   // 1, 2, 3 single colours, 4 full colour
    int32_t doubleColor = 1; // plane order of a two-colour screen
    // The moment the clocks show; none: the local time at which each program lands.
    std::optional<ClockTime> clockTime;
    std::ostream *log = nullptr; // one line per file read, or null
};

// The local time of now, as a clock shows it.
ClockTime local_clock_time();

// The screen mode for a controller type: its pixel transfer mode comes from the library's
// table of controller types (mode 0 for an unknown code, as the library falls back to).
ScreenMode screen_mode_for(const PanelOptions &options, uint16_t controllerType);

// From now on, every file that lands in the ordinary file space of a simulated G5 controller is
// read as a program and shown in options.folder (created if missing), as write_panel does.
// Uses the simulator's file-landed hook.
void install_panel_output(Simulator &sim, PanelOptions options);

} // namespace zel::sim
