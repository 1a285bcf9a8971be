// The device-control and file-system tests: an embedded simulator (loopback TCP, and a
// pseudo-terminal where asked for) and the commands of one group that it received.
#pragma once

#include <vector>

#include "sim/protocol/simulator.h"
#include "support/sim_fixture.h"

namespace zel::test {

class CommandsTest : public SimTest {
  protected:
    void SetUp() override { start_sim(); }

    const char *tty() { return sim().serial_path().c_str(); }

    // The commands of one group that the simulator received, probes left out.
    std::vector<sim::Request> received(uint8_t group) {
        std::vector<sim::Request> out;
        for (const sim::Request &r : sim().commands()) {
            if (r.group == group) out.push_back(r);
        }
        return out;
    }
};

} // namespace zel::test
