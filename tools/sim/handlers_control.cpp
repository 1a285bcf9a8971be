// Handlers of the device control commands (group 0xA2, the ping aside).
#include "sim/simulator.h"

namespace zel::sim {

void register_control_handlers(Simulator &) {}

} // namespace zel::sim
