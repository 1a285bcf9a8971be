// Handlers of the controller file system (group 0xA1).
#include "sim/simulator.h"

namespace zel::sim {

void register_files_handlers(Simulator &) {}

} // namespace zel::sim
