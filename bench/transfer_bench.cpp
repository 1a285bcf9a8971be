// File transfer over loopback: what the library spends on a block next to the round trip that
// carries it. Three measurements, all in real time:
// - BM_BlockLibraryWork: a 64-block file written through a peer that answers at once from
//   memory (block data, header, CRC-16, framing, answer checks; no socket): per exchange;
// - BM_LoopbackRoundTrip: a framed block sent over a loopback TCP connection to a thread that
//   answers with an acknowledgement's length, and the answer read: the floor for one block;
// - BM_WriteFileMarginalBlock: zelDual_cmd_ofsWriteFile to the embedded simulator, as the
//   difference between a 72-block and an 8-block file per extra block, so that the connection,
//   the probe and the protocol's fixed pauses around them drop out.
#include "support/quiet_stdout.h"
#include "support/ratio.h"

#include "../tests/wire/answer_builder.h"
#include "commands/files.h"
#include "sdk/crc.h"
#include "sdk/globals.h"
#include "sim/protocol/simulator.h"
#include "wire/kor_command.h"
#include "wire/packet.h"
#include "zel_sdk_dual.h"

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <numeric>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr uint32_t kBlock = 1024;
constexpr uint16_t kG5Type = 0x0051;

// A program image: content, then the CRC-32 of the content, as the controller checks it.
std::vector<uint8_t> file_bytes(std::size_t n) {
    std::vector<uint8_t> v(n - 4);
    std::iota(v.begin(), v.end(), uint8_t{0x31});
    const uint32_t crc = zel::crc32_ieee(v.data(), v.size());
    for (int i = 0; i < 4; ++i)
        v.push_back(static_cast<uint8_t>(crc >> (8 * i)));
    return v;
}

// A peer that takes every request and hands back an acknowledgement at once.
class CannedPeer : public zel::KOR_command {
  public:
    CannedPeer() {
        m_DeviceType = kG5Type;
        zel::test::Answer ack;
        ack.group = 0xA0;
        ack.code = 0x00;
        m_answer = ack.frame();
    }
    int32_t send(const uint8_t *data, uint32_t len) override {
        benchmark::DoNotOptimize(data);
        benchmark::DoNotOptimize(len);
        return 0;
    }
    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t) override {
        const auto n = static_cast<uint32_t>(std::min<std::size_t>(len, m_answer.size()));
        std::memcpy(buf, m_answer.data(), n);
        len = n;
        return 0;
    }

  private:
    std::vector<uint8_t> m_answer;
};

void BM_BlockLibraryWork(benchmark::State &state) {
    const auto blocks = static_cast<uint32_t>(state.range(0));
    const auto file = file_bytes(std::size_t{blocks} * kBlock);
    const uint8_t name[4] = {'P', '0', '0', '1'};
    zel::bench::QuietStdout quiet;
    CannedPeer peer;
    for (auto _ : state) {
        const int32_t r =
            zel::commands::writeFile(peer, zel::commands::FileSpace::Ofs, name, 0,
                                     static_cast<uint32_t>(file.size()), 1, file.data());
        if (r != 0) {
            state.SkipWithError("the canned peer's answer was refused");
            break;
        }
    }
    state.counters["exchanges"] = blocks + 1;
}

// A connected loopback pair: the far end reads one whole frame and answers with `answer` bytes.
void BM_LoopbackRoundTrip(benchmark::State &state) {
    const auto request_len = static_cast<std::size_t>(state.range(0));
    const std::size_t answer_len = zel::test::Answer{}.frame().size();
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t addr_len = sizeof addr;
    if (bind(listener, reinterpret_cast<sockaddr *>(&addr), sizeof addr) != 0 ||
        listen(listener, 1) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr *>(&addr), &addr_len) != 0) {
        close(listener);
        state.SkipWithError("no loopback socket");
        return;
    }
    std::thread far([&] {
        const int s = accept(listener, nullptr, nullptr);
        std::vector<uint8_t> in(request_len), out(answer_len, 0x11);
        for (;;) {
            std::size_t got = 0;
            while (got < request_len) {
                const ssize_t n = recv(s, in.data() + got, request_len - got, 0);
                if (n <= 0) {
                    close(s);
                    return;
                }
                got += static_cast<std::size_t>(n);
            }
            if (send(s, out.data(), out.size(), MSG_NOSIGNAL) <= 0) break;
        }
        close(s);
    });
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    const int one = 1;
    setsockopt(s, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    if (connect(s, reinterpret_cast<sockaddr *>(&addr), sizeof addr) != 0) std::abort();
    std::vector<uint8_t> request(request_len, 0x22), answer(answer_len);
    for (auto _ : state) {
        send(s, request.data(), request.size(), MSG_NOSIGNAL);
        std::size_t got = 0;
        while (got < answer_len) {
            const ssize_t n = recv(s, answer.data() + got, answer_len - got, 0);
            if (n <= 0) break;
            got += static_cast<std::size_t>(n);
        }
    }
    close(s);
    far.join();
    close(listener);
}

void BM_WriteFileMarginalBlock(benchmark::State &state) {
    zel::sim::Config config;
    config.controllerType = kG5Type;
    config.bindAddress = "127.0.0.1";
    config.tcpPort = 0;
    config.udpPort = -1;
    config.atPort = -1;
    zel::bench::QuietStdout quiet;
    zel::sim::Simulator sim(config);
    sim.start();
    const auto small = file_bytes(8 * kBlock), large = file_bytes(72 * kBlock);
    auto write = [&](const std::vector<uint8_t> &file) {
        const auto start = std::chrono::steady_clock::now();
        const int32_t r =
            zelDual_cmd_ofsWriteFile("127.0.0.1", sim.tcp_port(), "P001", 0,
                                     static_cast<uint32_t>(file.size()), 1, file.data());
        if (r != 0) state.SkipWithError("writing to the simulator failed");
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    for (auto _ : state) {
        const double extra = write(large) - write(small);
        state.SetIterationTime(extra > 0 ? extra / 64 : 0);
    }
    sim.stop();
}

BENCHMARK(BM_BlockLibraryWork)
    ->ArgName("blocks")
    ->Arg(64)
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LoopbackRoundTrip)
    ->ArgName("bytes")
    ->Arg(1100)
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_WriteFileMarginalBlock)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMicrosecond);

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"File transfer: the library's work per exchange (no socket) against a "
                         "loopback round trip of a framed block",
                         "BM_BlockLibraryWork", "BM_LoopbackRoundTrip", 0, zel::bench::Clock::Real,
                         "bytes:1100", 65}) &&
    zel::bench::compare(
        {"File transfer to the simulator: time per extra block against a loopback round trip",
         "BM_WriteFileMarginalBlock", "BM_LoopbackRoundTrip", 0, zel::bench::Clock::Real,
         "bytes:1100"});

} // namespace
