// The simulator's eyes, the glue between a simulated controller and the panel part: every
// program that lands in the simulator's file system is read and shown as the panel would show
// it (see sim/panel/panel_png.h and panel_png_g6.h), in a folder of the caller's choice.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "sim/panel/live_panel.h"
#include "sim/panel/panel_png.h"
#include "sim/panel/panel_png_g6.h"

namespace zel::sim {

class Simulator;

// What the simulator shows of the programs it receives.
struct PanelOptions {
    std::string folder;        // empty: nothing is written
    LivePanel *live = nullptr; // also shown here when set (it must outlive the simulator)
    uint32_t width = 0;        // the screen, in pixels
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

// The picture of the screen as it stands, in options.folder: the current program's panel with
// the live dynamic areas over it, written whenever a dynamic-area command changes them.
inline constexpr const char *kLivePanelName = "live-panel.png";

// From now on, the programs that land in the ordinary file space are shown in options.folder
// (created if missing) and on options.live: on a G5 controller every file, as write_panel does; on
// a G6 controller each pair of a program file and its data file ("P005" and "D005"), as
// write_panel_g6 does, once both have landed and again whenever either lands anew. Data files are
// told by their name's D. Uses the simulator's file-landed hook. The dynamic areas are kept too
// (the simulator's dynamic hook): each command that changes them redraws kLivePanelName in
// options.folder over the last program drawn there, and a command that cannot be read is
// reported on options.log with the offset where it stopped making sense (also without a folder).
void install_panel_output(Simulator &sim, PanelOptions options);

} // namespace zel::sim
