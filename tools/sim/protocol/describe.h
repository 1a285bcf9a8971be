// Readable text for requests: what zel-sim prints per request.
#pragma once

#include <cstdint>
#include <string>

#include "sim/protocol/simulator.h"

namespace zel::sim {

std::string command_name(uint8_t group, uint8_t code);
// "tcp 127.0.0.1:40312: A2 00 ping, v5 seq 4, 0 data bytes"
std::string describe_request(const Request &request);

} // namespace zel::sim
