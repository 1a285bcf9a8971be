// Dynamic-area push latency: one short text pushed to the embedded simulator, next to the fixed
// pauses that such a push sleeps on its own. A push over TCP makes two connections, the ping
// that learns the controller type and the one that carries the area; each pauses after it is
// made and after it is closed, and the chunks of the exchange go out without a pause. The
// difference between the two is what the library, the loopback round trips and the simulator
// add to the sleeps. All in real time:
// - BM_DynamicPush/gen:5: zelDual_dynamicArea_AddAreaWithTxt_5G to a G5 simulator;
// - BM_DynamicPush/gen:6: zelDual_dynamicArea_AddAreaTxt_6G to a G6 simulator;
// - BM_PrescribedSleeps: the four pauses of a push, slept one after the other.
#include "support/quiet_stdout.h"
#include "support/ratio.h"

#include "sim/protocol/simulator.h"
#include "wire/tcp_peer.h"
#include "zel_sdk_dual.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr uint16_t kG5Type = 0x0051;
constexpr uint16_t kG6Type = 0x0063;
constexpr const char *kHost = "127.0.0.1";
constexpr const char *kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
// The ping's connection and the exchange's.
constexpr int kConnectionsPerPush = 2;

ZelTextStyleRecord text_style() {
    ZelTextStyleRecord s;
    std::memset(&s, 0, sizeof s);
    s.fontSize = 14;
    s.fontColor = 1;
    s.horizontalAlign = 1;
    s.verticalAlign = 1;
    return s;
}

int32_t push_g5(uint16_t port) {
    const ZelFrameHeader_G5 frame{};
    return zelDual_dynamicArea_AddAreaWithTxt_5G(kHost, port, ZEL_SCREEN_ONE_COLOR, 1, 0, 5, 1, 0,
                                                 nullptr, 0, 0, 0, 64, 32, frame, 1, 1, 1, 300, 1,
                                                 text_style(), kFont, "12:34");
}

int32_t push_g6(uint16_t port) {
    return zelDual_dynamicArea_AddAreaTxt_6G(kHost, port, ZEL_SCREEN_ONE_COLOR, 1, 0, 0, 64, 32,
                                             kFont, 14, "12:34");
}

void BM_DynamicPush(benchmark::State &state) {
    const bool g6 = state.range(0) == 6;
    zel::sim::Config config;
    config.controllerType = g6 ? kG6Type : kG5Type;
    config.bindAddress = kHost;
    config.tcpPort = 0;
    config.udpPort = -1;
    config.atPort = -1;
    zel::bench::QuietStdout quiet;
    zel::sim::Simulator sim(config);
    sim.start();
    const uint16_t port = sim.tcp_port();
    for (auto _ : state) {
        const int32_t r = g6 ? push_g6(port) : push_g5(port);
        if (r != 0) {
            state.SkipWithError("the push to the simulator failed");
            break;
        }
        sim.clear_requests(); // the simulator keeps every request it saw
    }
    sim.stop();
}

void BM_PrescribedSleeps(benchmark::State &state) {
    using std::chrono::milliseconds;
    for (auto _ : state) {
        for (int i = 0; i < kConnectionsPerPush; ++i) {
            std::this_thread::sleep_for(milliseconds(zel::kTcpSettleAfterConnectMs));
            std::this_thread::sleep_for(milliseconds(zel::kTcpPauseAfterCloseMs));
        }
    }
}

BENCHMARK(BM_DynamicPush)
    ->ArgName("gen")
    ->Arg(5)
    ->Arg(6)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PrescribedSleeps)->UseRealTime()->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool kRatios = zel::bench::compare(
    {"Dynamic-area push to the simulator against the pauses it sleeps (two connections of "
     "5 ms + 10 ms); target: within 2 ms",
     "BM_DynamicPush", "BM_PrescribedSleeps", 0, zel::bench::Clock::Real, "", 1, 2e-3});

} // namespace
