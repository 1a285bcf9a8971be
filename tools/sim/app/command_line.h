// The zel-sim command line: the simulated controller, its ways in, its faults and what it shows
// of the programs it receives.
#pragma once

#include <optional>

#include "sim/app/panel_hook.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {

struct SimOptions {
    Config config = program_defaults();
    PanelOptions panel;
    bool quiet = false;
    int webPort = -1; // the live view's port on 127.0.0.1 (0: a free one); -1: no live view

    // zel-sim listens where a controller does: every way open, on the controller's own ports,
    // on all addresses. (Config's own defaults suit a simulator embedded in a test: loopback,
    // a free TCP port, nothing else.)
    static Config program_defaults();
};

// Reads argv into `options`. Returns nothing when the simulator should run, or the exit status
// once the usage has been printed for --help (0) or a wrong argument named on stderr (2).
std::optional<int> read_command_line(int argc, char **argv, SimOptions &options);

} // namespace zel::sim
