// The serial peer reading a controller's answers off the line: the bytes go into a pipe that
// stands for the port, and the peer's own recv takes each answer out of what one read brings
// (up to the first end byte) before the exchange opens it. Several answers in a row: the probe,
// a ping, a network record of the G6 size, and a dynamic exchange.
//
// Input: the pieces the controller writes, one per exchange (see fuzz_chunks.h).
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

#include "commands/discovery.h"
#include "fuzz_chunks.h"
#include "fuzz_clock.h"
#include "wire/serial_peer.h"

namespace {

// A pipe stands for the port: what the fuzzer writes into it is what the next read finds.
class PipeLine : public zel::TK_serialPort {
  public:
    PipeLine() {
        if (::pipe2(m_pipe, O_NONBLOCK | O_CLOEXEC) == 0) {
            m_port = m_pipe[0];
        }
    }
    ~PipeLine() override {
        m_port = -1; // the pipe is ours to close, not the serial layer's
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }

    // The controller's side: puts bytes on the line. A pipe takes 64 KiB, more than a piece.
    void put(const std::vector<uint8_t> &bytes) {
        if (!bytes.empty()) (void)!::write(m_pipe[1], bytes.data(), bytes.size());
    }
    // Whatever a read left behind goes before the next exchange, as the port's purge would.
    void drain() {
        uint8_t sink[4096];
        while (::read(m_pipe[0], sink, sizeof sink) > 0) {
        }
    }

    int32_t send(const uint8_t *, uint32_t) override { return 0; } // the request is not looked at
    int32_t probe() { return probe_device_type(zel::kAnswerTimeout); }

  private:
    int m_pipe[2] = {-1, -1};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    static zel::fuzz::InstantClock clock;
    static PipeLine line;
    const auto pieces = zel::fuzz::chunks(data, size, 8192);
    std::size_t next = 0;
    auto feed = [&] {
        line.drain();
        if (next < pieces.size()) line.put(pieces[next++]);
    };

    line.m_DeviceType = 0xFFFE;
    feed();
    line.probe();

    feed();
    std::vector<uint8_t> ping(zel::kPingCapacity, 0);
    zel::cmd_ping(line, ping.data());

    feed();
    std::vector<uint8_t> record(zel::kNetSearch6GWebLen, 0);
    zel::cmd_network_search(line, zel::kCodeNetSearch6G, record.data(), zel::kNetSearch6GWebLen);

    feed();
    static const uint8_t kDynamic[] = {1, 2, 3, 4};
    std::vector<uint8_t> answer(64, 0);
    uint16_t capacity = static_cast<uint16_t>(answer.size());
    line.send_recv_cmd_1K(zel::kGroupDynamic, 0x01, kDynamic, sizeof kDynamic, answer.data(),
                          capacity);
    return 0;
}
