// Every way a controller can misbehave, on every transport: each gives its defined result
// within its defined time-out, leaves no descriptor behind, and the next call works. One table
// per transport; the long waits run on the fake clock (the real ones are in the slow tests).
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <chrono>
#include <cstring>
#include <dirent.h>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "commands/discovery.h"
#include "sim/protocol/simulator.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/netns.h"
#include "support/sim_fixture.h"
#include "wire/tcp_peer.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

constexpr const char *kHost = "127.0.0.1";

int open_descriptors() {
    int count = 0;
    if (DIR *d = ::opendir("/proc/self/fd")) {
        while (const dirent *e = ::readdir(d)) {
            if (e->d_name[0] != '.') ++count;
        }
        ::closedir(d);
    }
    return count;
}

// The count once the simulator, which lives in this process too, has dropped its end of a
// conversation (it may still be sending the second half of a split answer): a descriptor that
// the library leaked stays.
int settled_descriptors(int expected) {
    for (int i = 0; i < 100 && open_descriptors() != expected; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return open_descriptors();
}

const sim::Faults kSilent{.silent = true};
const sim::Faults kSilentAll{.scope = sim::FaultScope::All, .silent = true};
const sim::Faults kSplit{.splitAnswer = true};
const sim::Faults kPadded{.padIndex = 255};
const sim::Faults kBadCrc{.badCrc = true};
const sim::Faults kBadHeaderCheck{.badHeaderCheck = true};
const sim::Faults kWrongVersion{.headerVersion = 6};
const sim::Faults kProbeWrongVersion{.scope = sim::FaultScope::Probe, .headerVersion = 3};
const sim::Faults kErrorCode{.errorCode = 9};
const sim::Faults kCloseMidTransfer{.closeAfterBlocks = 1};

struct Case {
    const char *what;
    sim::Faults faults;
    int32_t result;
    std::string console; // what the library prints, exactly
};

class FaultMatrix : public test::SimTest {};

// TCP: each fault on a ping (init and one exchange), a refused connection, and a write that
// loses its connection after the first block.
TEST_F(FaultMatrix, Tcp) {
    start_sim();
    const std::string refused = "TCP connect to select to FD_ISSET failed! ip=127.0.0.1 \n";
    const Case cases[] = {
        {"silent", kSilent, -1, ""},
        {"split answer", kSplit, -1, ""},
        {"padded answer", kPadded, 0, ""},
        {"bad crc", kBadCrc, -3, ""},
        {"bad header check", kBadHeaderCheck, -2, ""},
        {"wrong version", kWrongVersion, -4, ""},
        {"wrong probe version", kProbeWrongVersion, -4, ""},
        {"error code", kErrorCode, 9, ""},
        {"refused connect", {}, -1, refused},
        {"closed mid-transfer", kCloseMidTransfer, -1,
         "g_packetLen ======= 1024 \ndataLen-oldLen ======= 1024 \n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        sim().set_faults(c.faults);
        const int fds = open_descriptors();
        test::StdoutCapture out;
        const std::string what = c.what;
        if (what == "silent") {
            // The probe is answered; then the answer's 5 s run out on the fake clock.
            TK_Client client;
            ASSERT_EQ(client.init(kHost, port()), 0);
            test::FakeClock clock;
            uint8_t answer[kPingCapacity] = {};
            EXPECT_EQ(cmd_ping(client, answer), c.result);
            EXPECT_TRUE(client.connected()) << "a time-out leaves the socket open";
            client.close();
            EXPECT_EQ(clock.events(), (std::vector<std::string>{
                                          "wait 3000 ready", "wait 5000 timed out", "sleep 10"}));
        } else if (what == "refused connect") {
            ZelPingRecord record{};
            const test::ClosedPort closed;
            EXPECT_EQ(zelDual_cmd_tcpPing(kHost, closed.port(), &record), c.result);
        } else if (what == "closed mid-transfer") {
            const std::vector<uint8_t> image(3072, 0x42);
            EXPECT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P009", 0, 3072, 1, image.data()),
                      c.result);
        } else {
            ZelPingRecord record{};
            EXPECT_EQ(zelDual_cmd_tcpPing(kHost, port(), &record), c.result);
            EXPECT_EQ(record.ControllerType, c.result == 0 ? 0x0051 : 0);
        }
        EXPECT_EQ(out.text(), c.console);
        EXPECT_EQ(settled_descriptors(fds), fds) << "a descriptor was left open";

        sim().set_faults({});
        ZelPingRecord record{};
        EXPECT_EQ(zelDual_cmd_tcpPing(kHost, port(), &record), 0) << "the next call fails";
        EXPECT_EQ(record.ControllerType, 0x0051);
    }
}

// A serial line on a pseudo-terminal: the same faults on a program lock (open, probe and one
// exchange at 57600 bit/s), and a port that does not exist. The line is paced by sleeps, so
// the real peer answers in time while the silent one costs a fifth of its 2.5 s.
TEST_F(FaultMatrix, Serial) {
    start_sim(0x0051, true);
    const std::string tty = sim().serial_path();
    const uint8_t lock[] = {0xAA, 0xBB, 0xCC, 0xDD};
    const Case cases[] = {
        {"silent", kSilent, -1, ""},
        {"split answer", kSplit, -1, ""},
        {"padded answer", kPadded, 0, ""},
        {"bad crc", kBadCrc, -3, ""},
        {"bad header check", kBadHeaderCheck, -2, ""},
        {"wrong version", kWrongVersion, -4, ""},
        {"wrong probe version", kProbeWrongVersion, -4, ""},
        {"error code", kErrorCode, 9, ""},
        {"no such port", {}, -1, ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        sim().set_faults(c.faults);
        const int fds = open_descriptors();
        const std::string what = c.what;
        {
            test::FakeClock clock(test::FakeClock::kPaced);
            test::StdoutCapture out;
            const std::string path = what == "no such port" ? "/dev/zel-no-such-tty" : tty;
            const uint32_t start = clock.tick_count_ms();
            EXPECT_EQ(zelDual_cmd_uart_programLock(path.c_str(), 2, 1, 2, lock, 0x11223344),
                      c.result);
            const uint32_t elapsed = clock.tick_count_ms() - start;
            if (what == "silent") {
                // Five units of 500 ms for the answer, after the frame's write pause.
                EXPECT_GE(elapsed, 2500u);
                EXPECT_LT(elapsed, 2500u + 500u);
            } else {
                EXPECT_LT(elapsed, 2500u) << "the answer's time-out ran out";
            }
            EXPECT_EQ(out.text(), c.console);
        }
        EXPECT_EQ(settled_descriptors(fds), fds) << "a descriptor was left open";
        if (what == "split answer") {
            // The controller's second half comes 200 ms after the first, into a closed line
            // that the next open purges.
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
        }

        sim().set_faults({});
        test::FakeClock clock(test::FakeClock::kPaced);
        EXPECT_EQ(zelDual_cmd_uart_programLock(tty.c_str(), 2, 1, 2, lock, 0x11223344), 0)
            << "the next call fails";
    }
}

// UDP broadcast inside two namespaces of the test's own: the same faults on a ping. A silent
// controller leaves the probe unanswered: five polls of a second, and the probe's -1. The
// simulator does not split datagrams, and there is no connection to refuse or lose.
TEST(FaultMatrixUdp, Udp) {
    test::NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = net.in_sim([] {
        sim::Config config;
        config.controllerType = 0x0051;
        config.bindAddress = "0.0.0.0";
        config.tcpPort = -1;
        config.udpPort = 5007;
        auto s = std::make_unique<sim::Simulator>(config);
        s->start();
        return s;
    });
    const Case cases[] = {
        {"silent", kSilentAll, -1, ""},
        {"padded answer", kPadded, 0, ""},
        {"bad crc", kBadCrc, -3, ""},
        {"bad header check", kBadHeaderCheck, -2, ""},
        {"wrong version", kWrongVersion, -4, ""},
        {"wrong probe version", kProbeWrongVersion, -4, ""},
        {"error code", kErrorCode, 9, ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        sim->set_faults(c.faults);
        const int fds = open_descriptors();
        const bool silent = std::string(c.what) == "silent";
        {
            std::optional<test::FakeClock> clock;
            if (silent) clock.emplace();
            test::StdoutCapture out;
            ZelPingRecord record{};
            EXPECT_EQ(net.in_host([&] { return zelDual_cmd_udpPing(&record); }), c.result);
            EXPECT_EQ(record.ControllerType, c.result == 0 ? 0x0051 : 0);
            EXPECT_EQ(out.text(), c.console);
            if (silent) {
                std::vector<std::string> expected(5, "wait 1000 timed out");
                expected.push_back("sleep 10"); // the one socket of the host's namespace
                EXPECT_EQ(clock->events(), expected);
                EXPECT_STREQ(record.address, "") << "nobody answered";
            }
        }
        EXPECT_EQ(settled_descriptors(fds), fds) << "a descriptor was left open";

        sim->set_faults({});
        ZelPingRecord record{};
        EXPECT_EQ(net.in_host([&] { return zelDual_cmd_udpPing(&record); }), 0)
            << "the next call fails";
        EXPECT_STREQ(record.address, "10.77.0.1");
    }
    net.in_sim([&] { sim.reset(); });
}

} // namespace
} // namespace zel
