// The TCP peer against the embedded simulator on loopback: the probe, one recv per answer, and
// every way a controller's answer can be refused; in a network namespace, a connection that
// never comes up.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "commands/discovery.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "support/netns.h"
#include "support/sim_fixture.h"
#include "wire/tcp_peer.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using test::hex;

class TcpPeerTest : public test::SimTest {};

// A G6 code: the probe answer comes with header version 7. A probe answer of an unknown
// version gives -4 and leaves the type unknown; an answer in two segments is refused, and
// neither refusal closes the socket.
TEST_F(TcpPeerTest, InitLearnsTheDeviceTypeAndRefusalsKeepTheSocket) {
    start_sim(0x0163);
    {
        TK_Client client;
        EXPECT_EQ(client.init("127.0.0.1", port()), 0);
        EXPECT_EQ(client.m_DeviceType, 0x0163);
        EXPECT_EQ(sim().requests().size(), 1u);
    }
    sim().set_faults({.scope = sim::FaultScope::Probe, .headerVersion = 3});
    {
        TK_Client client;
        EXPECT_EQ(client.init("127.0.0.1", port()), -4);
        EXPECT_EQ(client.m_DeviceType, 0xFFFE);
    }
    sim().set_faults({.splitAnswer = true});
    TK_Client client;
    ASSERT_EQ(client.init("127.0.0.1", port()), 0);
    uint8_t answer[kPingCapacity] = {};
    EXPECT_EQ(cmd_ping(client, answer), -1);
    EXPECT_TRUE(client.connected());
}

// The ping of a refused connection is in the fault matrix; the peer alone gives the same line.
TEST_F(TcpPeerTest, RefusedConnectFailsWithItsConsoleLine) {
    test::StdoutCapture out;
    TcpPeer peer;
    const test::ClosedPort closed;
    EXPECT_EQ(peer.connect("127.0.0.1", closed.port(), 5), -1);
    EXPECT_FALSE(peer.connected());
    EXPECT_EQ(out.text(), "TCP connect to select to FD_ISSET failed! ip=127.0.0.1 \n");
}

TEST_F(TcpPeerTest, ASimulatorThatKeepsTheLatestRequestsStillCountsThemAll) {
    sim::Config config = test::loopback_config();
    config.keepRequests = 2;
    start_sim(config);
    ZelPingRecord record{};
    for (int i = 0; i < 5; ++i)
        ASSERT_EQ(zelDual_cmd_tcpPing("127.0.0.1", port(), &record), 0);
    // Each ping is a probe and the ping itself: ten arrived, two or three kept, the last a ping.
    EXPECT_TRUE(sim().wait_for_requests(10, 0));
    EXPECT_FALSE(sim().wait_for_requests(11, 0));
    const auto kept = sim().requests();
    ASSERT_GE(kept.size(), 2u);
    ASSERT_LT(kept.size(), 4u);
    EXPECT_EQ(kept.back().group, 0xA2);
}

TEST(TcpPeerNetns, UnansweredConnectFailsAtTheFirstSend) {
    test::NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    test::FakeClock clock;
    test::StdoutCapture out;
    ZelPingRecord record{};
    // Nobody has this address on the link: the connection neither comes up nor fails.
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_tcpPing("10.77.0.9", 5005, &record); }), -1);
    EXPECT_EQ(out.text(), "") << "an expired connect is no failure of its own";
    // 5 s to connect, 5 ms to settle, 3 s for room to send the probe, and the socket closed
    // with its pause by the peer's end.
    EXPECT_EQ(clock.events(), (std::vector<std::string>{"wait 5000 timed out", "sleep 5",
                                                        "wait 3000 timed out", "sleep 10"}));
}

TEST_F(TcpPeerTest, DeviceTypeWithoutHeaderSendsNothing) {
    start_sim(0x0056); // low byte 0x56 has no header form
    TK_Client client;
    ASSERT_EQ(client.init("127.0.0.1", port()), 0);
    EXPECT_EQ(client.m_DeviceType, 0x0056);
    uint8_t answer[kPingCapacity] = {};
    EXPECT_EQ(cmd_ping(client, answer), -1);
    EXPECT_FALSE(client.connected());       // the empty send closed it
    EXPECT_EQ(sim().requests().size(), 1u); // the probe and nothing else
}

TEST_F(TcpPeerTest, PaddedAnswerIsUncoveredAndEchoBytesGoBack) {
    sim::Config config = test::loopback_config(0x0051);
    config.echoByte = 0x3C;
    config.faults.padIndex = 255; // the highest index: the pad reaches table byte 366
    start_sim(config);
    ZelPingRecord record{};
    ASSERT_EQ(zelDual_cmd_tcpPing("127.0.0.1", port(), &record), 0);
    EXPECT_EQ(record.ControllerType, 0x0051);
    EXPECT_STREQ(record.address, "127.0.0.1");
    const auto commands = sim().commands();
    ASSERT_EQ(commands.size(), 1u);
    // Sequence 4 after the probe's 2; the probe answer's echo byte comes back at byte 5.
    EXPECT_EQ(commands[0].frame, hex("A5A5A5A5A5A5A5A5 FEFF 0080 05 3C 5100 00 00 0400 00 84 96 00"
                                     " 000000000000 0500 1E78 9C 01 A2 00 0000 5A"));
}

} // namespace
} // namespace zel
