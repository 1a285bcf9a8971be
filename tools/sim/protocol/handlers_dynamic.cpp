#include "sim/protocol/sim_dynamic.h"

#include "sim/protocol/simulator.h"

namespace zel::sim {
namespace {

struct DynamicState {
    DynamicHook hook;
};

constexpr uint8_t kDynamicCodes[] = {0, 1, 2, 7};

} // namespace

void set_dynamic_hook(Simulator &sim, DynamicHook hook) {
    auto guard = sim.lock();
    sim.module_state<DynamicState>().hook = std::move(hook);
}

void register_dynamic_handlers(Simulator &sim) {
    for (const uint8_t code : kDynamicCodes) {
        sim.on(kGroupDynamic, code, [](Simulator &s, const Request &r) {
            const DynamicHook &hook = s.module_state<DynamicState>().hook;
            if (hook) hook(r.data);
            return Reply::ack();
        });
    }
}

} // namespace zel::sim
