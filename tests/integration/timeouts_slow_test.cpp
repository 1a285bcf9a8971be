// Paths that end in a real time-out, one test each, on the real clock: 5 s on TCP, 2500 ms on a
// serial line, 5 polls of a second on UDP. The fast tests check the same paths on a fake clock.
#include <gtest/gtest.h>

#include <chrono>
#include <sys/inotify.h>
#include <unistd.h>

#include "commands/discovery.h"
#include "support/capture.h"
#include "support/netns.h"
#include "support/sim_fixture.h"
#include "wire/tcp_peer.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using Clock = std::chrono::steady_clock;

long elapsed_ms(Clock::time_point since) {
    return static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since).count());
}

class TimeoutTest : public test::SimTest {};

TEST_F(TimeoutTest, SilentControllerFailsAfterFiveSecondsAndKeepsTheSocket) {
    start_sim();
    TK_Client client;
    ASSERT_EQ(client.init("127.0.0.1", port()), 0);
    sim().set_faults({.silent = true});
    uint8_t answer[kPingCapacity] = {};
    const auto start = Clock::now();
    EXPECT_EQ(cmd_ping(client, answer), -1);
    EXPECT_GE(elapsed_ms(start), 5000);
    EXPECT_TRUE(client.connected()); // a time-out leaves the socket to the destructor
    EXPECT_EQ(sim().commands().size(), 1u);
}

// Watches a path for opens and closes.
class OpenCloseWatch {
  public:
    explicit OpenCloseWatch(const std::string &path) {
        m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        ::inotify_add_watch(m_fd, path.c_str(), IN_OPEN | IN_CLOSE_WRITE | IN_CLOSE_NOWRITE);
    }
    ~OpenCloseWatch() { ::close(m_fd); }
    // "O" per open, "C" per close, in order.
    std::string events() {
        std::string out;
        alignas(inotify_event) char buf[4096];
        ssize_t n;
        while ((n = ::read(m_fd, buf, sizeof buf)) > 0) {
            for (char *p = buf; p < buf + n;) {
                const auto *e = reinterpret_cast<const inotify_event *>(p);
                out += (e->mask & IN_OPEN) != 0 ? "O" : "C";
                p += sizeof(inotify_event) + e->len;
            }
        }
        return out;
    }

  private:
    int m_fd = -1;
};

TEST_F(TimeoutTest, SerialSearchSucceedsAtTheSecondSpeedAfterClosingOnce) {
    sim::Config config = test::loopback_config(0x0051, true);
    config.serialSpeed = 57600; // deaf at 9600
    start_sim(config);
    OpenCloseWatch watch(sim().serial_path());
    ZelPingRecord record{};
    const auto start = Clock::now();
    ASSERT_EQ(zelDual_cmd_uart_searchController(&record, sim().serial_path().c_str()), 0);
    EXPECT_GE(elapsed_ms(start), 2500); // the unanswered probe at 9600
    EXPECT_EQ(record.ControllerType, 0x0051);
    EXPECT_EQ(watch.events(), "OCOC"); // 9600, closed, 57600, closed by the destructor
    const auto requests = sim().requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].lineSpeed, 57600u);
    EXPECT_EQ(requests[1].lineSpeed, 57600u);
}

TEST(BroadcastTimeouts, SilentWifiModuleGivesMinus1WithItsLine) {
    test::NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    char ssid[64] = {};
    char password[64] = {};
    test::StdoutCapture out;
    const auto start = Clock::now();
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_AT_getWifiSsidPwd(ssid, password); }), -1);
    EXPECT_GE(elapsed_ms(start), 10000); // five polls of a second for "AT" and for the inquiry
    EXPECT_EQ(out.text(), "cmd_AT_getWifiSsidPwd return data err\n");
}

} // namespace
} // namespace zel
