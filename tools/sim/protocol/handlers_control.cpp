// Handlers of the device control commands (group 0xA2, the ping aside). Settings are checked
// for their length (and BCD fields for their digits), kept, and acknowledged; the queries
// answer with the module's records.
#include <algorithm>

#include "sim/protocol/sim_control.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {
namespace {

constexpr uint8_t kGroup = 0xA2;

bool is_bcd(uint8_t b) {
    return (b >> 4) <= 9 && (b & 15) <= 9;
}
bool all_bcd(const std::vector<uint8_t> &bytes, std::size_t from) {
    return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(), is_bcd);
}

// A setting of fixed length, kept under its code.
void setting(Simulator &sim, uint8_t code, std::size_t length) {
    sim.on(kGroup, code, [code, length](Simulator &s, const Request &r) {
        if (r.data.size() != length) return Reply::error(control_error::kBadLength);
        control_state(s).settings[code] = r.data;
        return Reply::ack();
    });
}

// A query that answers with one of the module's records.
void query(Simulator &sim, uint8_t code, std::size_t length,
           std::vector<uint8_t> ControlState::*record) {
    sim.on(kGroup, code, [length, record](Simulator &s, const Request &r) {
        if (r.data.size() != length) return Reply::error(control_error::kBadLength);
        return Reply::answer(control_state(s).*record);
    });
}

} // namespace

std::vector<uint8_t> ControlState::default_status() {
    std::vector<uint8_t> status(61);
    for (std::size_t i = 0; i < status.size(); ++i)
        status[i] = static_cast<uint8_t>(0x10 + i);
    return status;
}

ControlState &control_state(Simulator &sim) {
    return sim.module_state<ControlState>();
}

void register_control_handlers(Simulator &sim) {
    sim.on(kGroup, 0x01, [](Simulator &s, const Request &r) {
        if (!r.data.empty()) return Reply::error(control_error::kBadLength);
        ++control_state(s).resets;
        return Reply::ack();
    });
    sim.on(kGroup, 0x02, [](Simulator &s, const Request &r) {
        if (r.data.size() != 8) return Reply::error(control_error::kBadLength);
        if (!all_bcd(r.data, 0)) return Reply::error(control_error::kNotBcd);
        std::array<uint8_t, 8> clock{};
        std::copy(r.data.begin(), r.data.end(), clock.begin());
        control_state(s).clock = clock;
        return Reply::ack();
    });
    sim.on(kGroup, 0x03, [](Simulator &s, const Request &r) {
        if (r.data.size() != 4) return Reply::error(control_error::kBadLength);
        std::array<uint8_t, 4> key{};
        std::copy(r.data.begin(), r.data.end(), key.begin());
        control_state(s).firmwareActivated = key;
        return Reply::ack();
    });
    setting(sim, 0x05, 1); // power on or off
    sim.on(kGroup, 0x06, [](Simulator &s, const Request &r) {
        // The count, then four BCD bytes per entry.
        if (r.data.empty() || r.data.size() != 1 + 4 * std::size_t{r.data[0]}) {
            return Reply::error(control_error::kBadLength);
        }
        if (!all_bcd(r.data, 1)) return Reply::error(control_error::kNotBcd);
        control_state(s).settings[0x06] = r.data;
        return Reply::ack();
    });
    setting(sim, 0x07, 49); // brightness table
    sim.on(kGroup, 0x08, [](Simulator &s, const Request &r) {
        if (!r.data.empty()) return Reply::error(control_error::kBadLength);
        control_state(s).settings.erase(0x06);
        return Reply::ack();
    });
    query(sim, 0x0A, 0, &ControlState::controllerId);
    setting(sim, 0x0D, 2); // screen lock
    sim.on(kGroup, 0x0E, [](Simulator &s, const Request &r) {
        // Program lock: 10 bytes from G5 hosts, 11 from the G6 serial form.
        if (r.data.size() != 10 && r.data.size() != 11) {
            return Reply::error(control_error::kBadLength);
        }
        control_state(s).settings[0x0E] = r.data;
        return Reply::ack();
    });
    query(sim, 0x0F, 0, &ControlState::status);
    sim.on(kGroup, 0x10, [](Simulator &s, const Request &r) {
        if (r.data.size() != 12) return Reply::error(control_error::kBadLength);
        ControlState &state = control_state(s);
        if (!std::equal(state.password.begin(), state.password.end(), r.data.begin())) {
            return Reply::error(control_error::kBadPassword);
        }
        std::copy(r.data.begin() + 6, r.data.end(), state.password.begin());
        return Reply::ack();
    });
    sim.on(kGroup, 0x11, [](Simulator &s, const Request &r) {
        if (r.data.size() != 6) return Reply::error(control_error::kBadLength);
        ControlState &state = control_state(s);
        if (!std::equal(state.password.begin(), state.password.end(), r.data.begin())) {
            return Reply::error(control_error::kBadPassword);
        }
        state.password.fill(0);
        return Reply::ack();
    });
    setting(sim, 0x12, 2);  // delay time
    setting(sim, 0x13, 6);  // button function
    setting(sim, 0x14, 11); // timed reset
    setting(sim, 0x15, 6);  // display mode
    query(sim, 0x17, 1, &ControlState::battleTime);
    query(sim, 0x18, 1, &ControlState::stopwatch);
    query(sim, 0x19, 0, &ControlState::sensorBrightness);
    setting(sim, 0x1A, 2); // speed adjustment
    setting(sim, 0x1B, 2); // screen address
    setting(sim, 0x32, 2); // external relay
}

} // namespace zel::sim
