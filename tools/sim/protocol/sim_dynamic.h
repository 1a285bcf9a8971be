// The dynamic-area commands of group 0xA7 (version 240): add areas (code 0), delete areas
// (code 1), update or insert independent sound (codes 2 and 7). The simulator acknowledges
// each and hands its data to a hook, which keeps and shows the live areas (the panel part
// reads them); without a hook they are only recorded.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace zel::sim {

class Simulator;

inline constexpr uint8_t kGroupDynamic = 0xA7;

// Called with the whole command data (head included), on the simulator's thread.
using DynamicHook = std::function<void(const std::vector<uint8_t> &data)>;

void set_dynamic_hook(Simulator &sim, DynamicHook hook);

void register_dynamic_handlers(Simulator &sim);

} // namespace zel::sim
