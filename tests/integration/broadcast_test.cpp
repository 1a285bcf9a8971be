// Everything that broadcasts, inside two network namespaces made for the test and joined by
// veth pairs: the library on one side, the simulator (or a bare socket) on the other.
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <cstring>
#include <memory>
#include <netinet/in.h>
#include <set>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

#include "commands/discovery.h"
#include "sim/protocol/handlers_network.h"
#include "sim/protocol/simulator.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "support/netns.h"
#include "wire/broadcast_peer.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using test::hex;
using test::NetnsPair;

// The simulator on its usual ports, listening on every address of its namespace.
sim::Config namespace_config(uint16_t type = 0x0051) {
    sim::Config config;
    config.controllerType = type;
    config.bindAddress = "0.0.0.0";
    config.tcpPort = 5005;
    config.udpPort = 5007;
    config.atPort = 13769;
    return config;
}

std::unique_ptr<sim::Simulator> start_in(NetnsPair &net, sim::Config config) {
    return net.in_sim([&] {
        auto s = std::make_unique<sim::Simulator>(std::move(config));
        s->start();
        return s;
    });
}

// A bare UDP socket on the simulator's side, for answers the simulator would never give.
class RawResponder {
  public:
    RawResponder(NetnsPair &net, uint16_t port) : m_net(net) {
        m_fd = net.in_sim([port] {
            const int fd = ::socket(AF_INET, SOCK_DGRAM, 0);
            const int one = 1;
            ::setsockopt(fd, SOL_SOCKET, SO_BROADCAST, &one, sizeof one);
            sockaddr_in sa{};
            sa.sin_family = AF_INET;
            sa.sin_port = htons(port);
            ::bind(fd, reinterpret_cast<sockaddr *>(&sa), sizeof sa);
            return fd;
        });
    }
    ~RawResponder() { ::close(m_fd); }

    // Waits for one datagram and answers it with `reply`; what came in.
    std::vector<uint8_t> answer(const std::vector<uint8_t> &reply) {
        return m_net.in_sim([&] {
            std::vector<uint8_t> buf(2048);
            sockaddr_in from{};
            socklen_t len = sizeof from;
            const ssize_t n = ::recvfrom(m_fd, buf.data(), buf.size(), 0,
                                         reinterpret_cast<sockaddr *>(&from), &len);
            buf.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
            ::sendto(m_fd, reply.data(), reply.size(), 0, reinterpret_cast<sockaddr *>(&from), len);
            return buf;
        });
    }

  private:
    NetnsPair &m_net;
    int m_fd = -1;
};

TEST(BroadcastPeer, ShortDatagramsCountOnlyWhenTheySayOk) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    RawResponder responder(net, 5007);
    struct Case {
        std::string reply;
        int32_t result;
    };
    for (const Case &c : {Case{"zzzzzzOKzzzzzz", 0}, Case{"zzzzzzzzzzzzzz", -1},
                          Case{"zzzzzzzzzzzzzzz", 0}, Case{"ok", 0}}) {
        BroadcastPeer peer;
        ASSERT_EQ(net.in_host([&] { return peer.open(kBroadcastAddress, 5007, 5009); }), 0);
        EXPECT_EQ(peer.local_addresses(), std::vector<std::string>{"10.77.0.2"});
        const uint8_t hello[] = {'h', 'i'};
        EXPECT_EQ(net.in_host([&] { return peer.send(hello, 2); }), 0);
        EXPECT_EQ(responder.answer({c.reply.begin(), c.reply.end()}), hex("6869"));
        std::vector<uint8_t> buf(64, 0);
        uint32_t len = 64;
        EXPECT_EQ(net.in_host([&] { return peer.recv(buf.data(), len, 5); }), c.result) << c.reply;
        char address[20];
        std::memset(address, 0x7F, sizeof address);
        peer.get_peer_address(address);
        if (c.result == 0) {
            EXPECT_EQ(len, c.reply.size());
            EXPECT_STREQ(address, "10.77.0.1");
        }
        net.in_host([&] { peer.close(); });
    }
}

TEST(BroadcastPeer, ProbeLeavesEveryAdapterAndTheFirstAnswerWins) {
    NetnsPair::Options two;
    two.hostAddresses = {{"10.77.0.2/24"}, {"10.77.1.2/24"}};
    two.simAddresses = {{"10.77.0.1/24"}, {"10.77.1.1/24"}};
    NetnsPair net(two);
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config(0x0063));
    TK_Broadcast peer;
    EXPECT_EQ(net.in_host([&] { return peer.init(); }), 0);
    EXPECT_EQ(peer.m_DeviceType, 0x0063);
    EXPECT_EQ(peer.socket_count(), 2u);
    char first[20] = {};
    peer.get_peer_address(first);

    // The other adapter's answer was left unread: the next recv finds it at once.
    std::vector<uint8_t> buf(kFrameBufferLen, 0);
    uint32_t len = kFrameBufferLen;
    EXPECT_EQ(net.in_host([&] { return peer.recv(buf.data(), len, 1); }), 0);
    EXPECT_LT(len, kFrameBufferLen);
    char second[20] = {};
    peer.get_peer_address(second);
    EXPECT_EQ((std::set<std::string>{first, second}),
              (std::set<std::string>{"10.77.0.1", "10.77.1.1"}));

    std::set<std::string> senders;
    for (const auto &r : sim->requests()) {
        EXPECT_TRUE(r.is_probe());
        senders.insert(r.peer);
    }
    EXPECT_EQ(senders, (std::set<std::string>{"10.77.0.2:5009", "10.77.1.2:5009"}));
    net.in_host([&] { peer.close(); });
}

TEST(Broadcast, UdpPingRecordNamesWhoAnswered) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config(0x0251));
    ZelPingRecord record;
    std::memset(&record, 0xEE, sizeof record);
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_udpPing(&record); }), 0);
    EXPECT_EQ(record.ControllerType, 0x0251);
    EXPECT_EQ(std::string(record.address, 9), "10.77.0.1");
    EXPECT_EQ(std::vector<uint8_t>(record.address + 9, record.address + 20),
              std::vector<uint8_t>(11, 0));
    const auto requests = sim->requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].transport, sim::Transport::Udp);
    EXPECT_EQ(requests[1].frame,
              hex("A5A5A5A5A5A5A5A5 FEFF 0080 05 00 5102 00 00 0400 00 84 96 00 000000000000"
                  " 0500 1E78 A2 01 A2 00 0000 5A"));
}

TEST(Broadcast, NetworkRecordsComeInTheRoomOfTheirForm) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config(0x0063));
    struct Case {
        int32_t (*search)(uint8_t *);
        uint16_t recordLen; // what the simulator answers with; 0: its own default
        std::size_t room;
    };
    const Case cases[] = {{zelDual_cmd_udpNetworkSearch, 0, 64},
                          {zelDual_cmd_udpNetworkSearch_6G, 0, 206},
                          {zelDual_cmd_udpNetworkSearch_6G_Web, 595, 595}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.room);
        if (c.recordLen != 0) {
            auto lock = sim->lock();
            sim->module_state<sim::NetworkState>().netSearch6GLen = c.recordLen;
        }
        std::vector<uint8_t> out(600, 0xEE);
        EXPECT_EQ(net.in_host([&] { return c.search(out.data()); }), 0);
        EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 20),
                  hex("005A454C0001 C0A80164 FFFFFF00 C0A80101 8D13"));
        EXPECT_EQ(out[c.room - 1], 0x00);
        EXPECT_EQ(out[c.room], 0xEE);
    }

    const auto commands = sim->commands();
    ASSERT_EQ(commands.size(), 3u);
    EXPECT_EQ(commands[0].code, 0x02);
    EXPECT_EQ(commands[1].code, 0x03);
    EXPECT_EQ(commands[2].code, 0x03);
    for (const auto &c : commands) {
        EXPECT_EQ(c.group, 0xA4);
        EXPECT_TRUE(c.data.empty());
    }
}

TEST(Broadcast, SetIpAndSetMacSendTheirBytes) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config());
    const uint8_t value8[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const uint8_t bytes12[12] = {0xC0, 0xC1, 0xC2, 0xC3, 0xC4, 0xC5,
                                 0xC6, 0xC7, 0xC8, 0xC9, 0xCA, 0xCB};
    EXPECT_EQ(net.in_host([&] {
        return zelDual_cmd_udpSetIP(1, "192.168.1.200", "255.255.255.0", "192.168.1.1", 5005, 2,
                                    "10.0.0.300", 5006, value8, 0xBEEF, bytes12);
    }),
              0);
    EXPECT_EQ(net.in_host([] { return zelDual_cmd_udpSetMac("1-2-3-4-5-6"); }), 0);

    const auto commands = sim->commands();
    ASSERT_EQ(commands.size(), 2u);
    EXPECT_EQ(commands[0].group, 0xA4);
    EXPECT_EQ(commands[0].code, 0x01);
    EXPECT_EQ(commands[0].data, hex("01 C0A801C8 FFFFFF00 C0A80101 8D13 02 0A00002C 8E13"
                                    " 0102030405060708 EFBE C0C1C2C3C4C5C6C7C8C9CACB"
                                    " 00000000000000"));
    EXPECT_EQ(commands[1].code, 0x00);
    EXPECT_EQ(commands[1].data, hex("01 02 03 04 05 06"));
}

TEST(Broadcast, WifiModuleTakesTheAccessPointLinesInOrder) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config());
    test::FakeClock clock(test::FakeClock::Waits::Real); // the module answers for real
    EXPECT_EQ(net.in_host([] { return zelDual_cmd_AT_setWifiSsidPwd("MyNet", "secret99"); }), 0);
    EXPECT_EQ(sim->at_lines(),
              (std::vector<std::string>{"AT", "AT+AP=MyNet,4,secret99,11", "AT+AP_IP=192.168.100.1",
                                        "AT+SOCKET=TCPS,0.0.0.0,0,5005", "AT+WMODE=2", "AT+RST"}));
    // Each answer comes in the first poll of a second; 100 ms after each of the four lines
    // before the restart; the one socket closes with its pause.
    std::vector<std::string> expected = {"wait 1000 ready"};
    for (int line = 0; line < 4; ++line) {
        expected.push_back("wait 1000 ready");
        expected.push_back("sleep 100");
    }
    expected.push_back("wait 1000 ready");
    expected.push_back("sleep 10");
    EXPECT_EQ(clock.events(), expected);

    char ssid[64] = {};
    char password[64] = {};
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_AT_getWifiSsidPwd(ssid, password); }), 0);
    EXPECT_STREQ(ssid, "MyNet");
    EXPECT_STREQ(password, "secret99");
}

TEST(Broadcast, WifiModuleAnswersDecideTheResults) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config());
    test::FakeClock clock(test::FakeClock::Waits::Real); // no pauses between the lines

    // A refused second line ends the setting there, and a failed restart does not count.
    sim->on_at([](sim::Simulator &, const std::string &line) -> std::optional<std::string> {
        if (line.rfind("AT+AP_IP=", 0) == 0) return std::string("+ERR=-2");
        return std::string("+ok");
    });
    EXPECT_EQ(net.in_host([] { return zelDual_cmd_AT_setWifiSsidPwd("a", "b"); }), -1);
    EXPECT_EQ(sim->at_lines().size(), 3u);

    sim->clear_requests();
    sim->on_at([](sim::Simulator &, const std::string &line) -> std::optional<std::string> {
        return line == "AT+RST" ? std::string("+ERR") : std::string("+ok");
    });
    EXPECT_EQ(net.in_host([] { return zelDual_cmd_AT_setWifiSsidPwd("a", "b"); }), 0);

    // "AT+INQUIRY": 37 bytes are too few; with 38 the name and password are read, and with no
    // second comma the password output stays as it was.
    struct Case {
        std::string answer;
        int32_t result;
        const char *ssid;
        const char *password;
    };
    const std::string pad37 = "net,pw,xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"; // 37 bytes
    const Case cases[] = {
        {pad37, 2, "", ""},
        {pad37 + "x", 0, "net", "pw"},
        {",net,pw,xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", 0, ",net", "pw"}, // a comma at 0 is skipped
        {"network-without-password,xxxxxxxxxxxxxxxx", 0, "network-without-password", "keep"},
    };
    for (const Case &c : cases) {
        // The answer by value: the simulator's thread reads it, and only the lock that guards
        // the handler orders that read before the case goes (the datagrams in between are not
        // seen as an order by the thread sanitizer).
        sim->on_at([answer = c.answer](sim::Simulator &,
                                       const std::string &line) -> std::optional<std::string> {
            return line == "AT+INQUIRY" ? answer : std::string("+ok");
        });
        char ssid[64] = {};
        char password[64] = "keep";
        if (std::string(c.password) != "keep") std::memset(password, 0, sizeof password);
        EXPECT_EQ(net.in_host([&] { return zelDual_cmd_AT_getWifiSsidPwd(ssid, password); }),
                  c.result)
            << c.answer;
        EXPECT_STREQ(ssid, c.ssid) << c.answer;
        EXPECT_STREQ(password, c.password) << c.answer;
    }
}

TEST(Broadcast, SilentWifiModuleIsPolledFiveTimesPerAnswer) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    test::FakeClock clock;
    char ssid[64] = {};
    char password[64] = {};
    test::StdoutCapture out;
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_AT_getWifiSsidPwd(ssid, password); }), -1);
    EXPECT_EQ(out.text(), "cmd_AT_getWifiSsidPwd return data err\n");
    // Five polls of a second after "AT", five after "AT+INQUIRY"; the one socket closes.
    std::vector<std::string> expected(10, "wait 1000 timed out");
    expected.push_back("sleep 10");
    EXPECT_EQ(clock.events(), expected);
}

// The three ways of the controller search. The host's end has 10.77.0.2; the simulator
// answers the Wi-Fi module's "AT" from 10.77.0.1.
TEST(SearchController, FindsTheControllerBehindTheWifiModule) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    auto sim = start_in(net, namespace_config(0x0058));
    ZelPingRecord record{};
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_searchController(&record); }), 0);
    EXPECT_EQ(record.ControllerType, 0x0058);
    EXPECT_STREQ(record.address, "10.77.0.1");
    const auto requests = sim->requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[1].transport, sim::Transport::Tcp);
    EXPECT_EQ(sim->at_lines(), std::vector<std::string>{"AT"});
}

TEST(SearchController, FallsBackToTheAccessPoint) {
    NetnsPair::Options options;
    options.hostAddresses = {{"10.77.0.2/24", "192.168.100.2/24"}};
    options.simAddresses = {{"10.77.0.1/24", "192.168.100.1/24"}};
    NetnsPair net(options);
    ZEL_REQUIRE_NETNS(net);
    // TCP only on the access point's address: the module's own address refuses.
    sim::Config config = namespace_config(0x0154);
    config.bindAddress = "192.168.100.1";
    auto sim = start_in(net, config);
    {
        auto lock = sim->lock();
        // Whatever the controller says about its address, the search writes the access point's.
        auto &state = sim->module_state<sim::NetworkState>();
        state.pingOverride = std::vector<uint8_t>(52, 0x31);
        (*state.pingOverride)[0] = 0x54;
        (*state.pingOverride)[1] = 0x01;
    }
    ZelPingRecord record{};
    test::StdoutCapture out;
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_searchController(&record); }), 0);
    EXPECT_EQ(out.text(), "TCP connect to select to FD_ISSET failed! ip=10.77.0.1 \n");
    EXPECT_EQ(record.ControllerType, 0x0154);
    EXPECT_EQ(std::vector<uint8_t>(record.controllerData, record.controllerData + 30),
              std::vector<uint8_t>(30, 0x31));
    EXPECT_EQ(std::string(record.address, 20), std::string("192.168.100.1") + std::string(7, '\0'));
    const auto requests = sim->requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].peer.rfind("192.168.100.2:", 0), 0u);
}

TEST(SearchController, NobodyThereMakesThreeFullPasses) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    sim::Config config = namespace_config();
    config.faults.silent = true;
    config.faults.scope = sim::FaultScope::All;
    auto sim = start_in(net, config);
    test::FakeClock clock;
    ZelPingRecord record{};
    test::StdoutCapture out;
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_searchController(&record); }), -1);
    // Each pass: the silent module names no address, the access point is out of reach.
    std::string pass = "TCP connect to select to FD_ISSET failed! ip= \n"
                       "TCP connect to select to FD_ISSET failed! ip=192.168.100.1 \n";
    EXPECT_EQ(out.text(), pass + pass + pass);
    // Each pass: five polls after "AT"; the client that did not connect closes, then the UDP
    // socket, then the access point's client; five polls after the probe; the socket closes.
    std::vector<std::string> passEvents(5, "wait 1000 timed out");
    passEvents.insert(passEvents.end(), 3, "sleep 10");
    passEvents.insert(passEvents.end(), 5, "wait 1000 timed out");
    passEvents.push_back("sleep 10");
    std::vector<std::string> expected;
    for (int i = 0; i < 3; ++i)
        expected.insert(expected.end(), passEvents.begin(), passEvents.end());
    EXPECT_EQ(clock.events(), expected);
    // The search did not wait for the datagrams to land: the simulator stops once it has them.
    ASSERT_TRUE(sim->wait_for_requests(3, 5000));
    sim->stop();
    EXPECT_EQ(sim->at_lines(), (std::vector<std::string>{"AT", "AT", "AT"}));
    const auto requests = sim->requests();
    ASSERT_EQ(requests.size(), 3u);
    for (const auto &r : requests)
        EXPECT_TRUE(r.is_probe());
}

TEST(SearchController, FallsBackToTheBroadcast) {
    NetnsPair net;
    ZEL_REQUIRE_NETNS(net);
    sim::Config config = namespace_config(0x0066);
    config.tcpPort = -1; // the module answers, but nothing listens on TCP anywhere
    auto sim = start_in(net, config);
    ZelPingRecord record{};
    test::StdoutCapture out;
    EXPECT_EQ(net.in_host([&] { return zelDual_cmd_searchController(&record); }), 0);
    // The module's address refuses; the access point's address is not reachable from here.
    EXPECT_EQ(out.text(), "TCP connect to select to FD_ISSET failed! ip=10.77.0.1 \n"
                          "TCP connect to select to FD_ISSET failed! ip=192.168.100.1 \n");
    EXPECT_EQ(record.ControllerType, 0x0066);
    EXPECT_STREQ(record.address, "10.77.0.1");
    const auto requests = sim->requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].transport, sim::Transport::Udp);
    EXPECT_TRUE(requests[0].is_probe());
    EXPECT_EQ(requests[1].code, 0x00);
}

} // namespace
} // namespace zel
