// The simulator's request side: bytes as they come off a line, cut into frames, read, and
// answered by whatever handler is registered for them.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/protocol/frames.h"
#include "sim/protocol/simulator.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    static zel::sim::Simulator sim; // never started: no sockets, only the request core
    zel::sim::FrameSplitter splitter;
    splitter.feed(data, size);
    zel::sim::Simulator::Session session;
    while (auto frame = splitter.next()) {
        sim.handle_frame(session, *frame);
    }
    (void)zel::sim::parse_request(std::vector<uint8_t>(data, data + size));
    sim.clear_requests();
    return 0;
}
