// State of the simulated controller's file-system module: the file system itself and the
// directory listing in progress.
// Handlers hold the simulator's lock; the file system has a lock of its own, so a test may
// read it from any thread.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sim/protocol/sim_filesystem.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {

// A directory listing as the controller took it at the listing's start.
struct DirectoryListing {
    bool open = false;
    std::size_t perBlock = 32; // entries per answer: the second byte of the listing request
    std::vector<std::array<uint8_t, kDirEntryLen>> entries;
};

struct FilesState {
    SimFileSystem fs;
    DirectoryListing listing;
};

FilesState &files_state(Simulator &sim);
// The simulator's file system. Its on_file_landed hooks get every whole file with its name,
// type and bytes; the simulator's file-written hook gets the same (space 0 for ofs, 1 for
// conf).
SimFileSystem &file_system(Simulator &sim);

} // namespace zel::sim
