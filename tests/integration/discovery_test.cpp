// Ping and the network records over TCP and a serial line, against the embedded simulator.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "commands/discovery.h"
#include "sim/protocol/handlers_network.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "support/sim_fixture.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using test::hex;

class DiscoveryTest : public test::SimTest {};

std::vector<uint8_t> bytes_of(const void *p, std::size_t n) {
    const auto *b = static_cast<const uint8_t *>(p);
    return {b, b + n};
}

TEST_F(DiscoveryTest, TcpPingHandsOnThe52ByteRecord) {
    start_sim(0x0454);
    {
        auto lock = sim().lock();
        auto &net = sim().module_state<sim::NetworkState>();
        for (uint8_t i = 0; i < 30; ++i)
            net.pingTail[i] = static_cast<uint8_t>(0xB0 + i);
    }
    ZelPingRecord record;
    std::memset(&record, 0xEE, sizeof record);
    zelDual_set_screenNum_G56(5); // lives only until the next peer is built
    ASSERT_EQ(zelDual_cmd_tcpPing("127.0.0.1", port(), &record), 0);
    // The type, the controller's 30 bytes, then the address text at 32, zeros to 52.
    std::vector<uint8_t> expected =
        hex("5404 B0B1B2B3B4B5B6B7B8B9BABBBCBDBEBF C0C1C2C3C4C5C6C7C8C9CACBCCCD"
            " 3132372E302E302E31");
    expected.resize(52, 0);
    EXPECT_EQ(bytes_of(&record, sizeof record), expected);

    const auto commands = sim().commands();
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].group, 0xA2);
    EXPECT_EQ(commands[0].code, 0x00);
    EXPECT_TRUE(commands[0].data.empty());
    EXPECT_EQ(commands[0].sequence, 4);
    EXPECT_EQ(commands[0].screen, 0xFFFE);
}

TEST_F(DiscoveryTest, PingOfALongAnswerGivesMinus1WhenUnpackLeftItsLengthAbove1024) {
    struct Case {
        std::size_t dataLen;
        bool badHeaderCheck;
        int32_t result;
    };
    // 1025 bytes truncate to the room (1); a broken header leaves the unescaped length, which
    // is above 1024 only for the long answer.
    for (const Case &c : {Case{1025, false, 1}, Case{1100, true, -1}, Case{10, true, -2}}) {
        start_sim();
        {
            auto lock = sim().lock();
            sim().module_state<sim::NetworkState>().pingOverride =
                std::vector<uint8_t>(c.dataLen, 0x42);
        }
        sim().set_faults({.badHeaderCheck = c.badHeaderCheck});
        test::StdoutCapture out;
        ZelPingRecord record{};
        EXPECT_EQ(zelDual_cmd_tcpPing("127.0.0.1", port(), &record), c.result) << c.dataLen;
        EXPECT_EQ(record.ControllerType, 0) << c.dataLen; // copied on 0 only
    }
}

TEST_F(DiscoveryTest, TcpNetworkSearch6GDeliversTheRecordInTheRoomOfItsForm) {
    struct Case {
        uint16_t recordLen;
        bool web;
        int32_t result;
        const char *console;
    };
    const Case cases[] = {
        {206, false, 0, ""},
        {595, true, 0, ""},
        {595, false, 1,
         "return Data Length too long!!! Control Card Return:cmd_header->datalen = 595; but "
         "membuff len = 206;\n "},
    };
    for (const Case &c : cases) {
        start_sim(0x0063);
        {
            auto lock = sim().lock();
            sim().module_state<sim::NetworkState>().netSearch6GLen = c.recordLen;
        }
        std::vector<uint8_t> out(600, 0xEE);
        test::StdoutCapture console;
        const int32_t result =
            c.web ? zelDual_cmd_tcpNetworkSearch_6G_Web("127.0.0.1", port(), out.data())
                  : zelDual_cmd_tcpNetworkSearch_6G("127.0.0.1", port(), out.data());
        EXPECT_EQ(result, c.result);
        EXPECT_EQ(console.text(), c.console);
        // MAC, address, mask, gateway and port of the simulator's default record.
        EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 20),
                  hex("005A454C0001 C0A80164 FFFFFF00 C0A80101 8D13"));
        const std::size_t room = c.web ? 595 : 206;
        EXPECT_EQ(out[room - 1], 0x00);
        EXPECT_EQ(out[room], 0xEE); // nothing beyond the form's room
        const auto commands = sim().commands();
        ASSERT_EQ(commands.size(), 1u);
        EXPECT_EQ(commands[0].version, 7);
        EXPECT_EQ(commands[0].group, 0xA4);
        EXPECT_EQ(commands[0].code, 0x03);
        EXPECT_TRUE(commands[0].data.empty());
    }
}

TEST_F(DiscoveryTest, UartSearchPingsAt9600First) {
    start_sim(0x0051, true);
    test::FakeClock clock(test::FakeClock::kPaced);
    ZelPingRecord record{};
    ASSERT_EQ(zelDual_cmd_uart_searchController(&record, sim().serial_path().c_str()), 0);
    EXPECT_EQ(record.ControllerType, 0x0051);
    EXPECT_STREQ(record.address, ""); // a serial line has no address
    const auto requests = sim().requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_TRUE(requests[0].is_probe());
    EXPECT_EQ(requests[1].code, 0x00);
    EXPECT_EQ(requests[1].lineSpeed, 9600u);
}

TEST_F(DiscoveryTest, UartNetworkSearchTriesThreeTimesAndZeroesOnly52Bytes) {
    start_sim(0x0063, true);
    test::FakeClock clock(test::FakeClock::kPaced);
    sim().set_faults({.errorCode = 9});
    std::vector<uint8_t> out(206, 0xEE);
    EXPECT_EQ(zelDual_cmd_uart_search_Net_6G(out.data(), sim().serial_path().c_str(), 2), 9);
    EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 52), std::vector<uint8_t>(52, 0));
    EXPECT_EQ(out[52], 0xEE);
    const auto requests = sim().requests();
    ASSERT_EQ(requests.size(), 6u); // probe and command, three times
    for (std::size_t i = 0; i < 6; i += 2) {
        EXPECT_TRUE(requests[i].is_probe());
        EXPECT_EQ(requests[i + 1].code, 0x03);
        EXPECT_EQ(requests[i + 1].lineSpeed, 57600u);
    }

    sim().set_faults({});
    std::vector<uint8_t> web(595, 0xEE);
    {
        auto lock = sim().lock();
        sim().module_state<sim::NetworkState>().netSearch6GLen = 595;
    }
    EXPECT_EQ(zelDual_cmd_uart_search_Net_6G_Web(web.data(), sim().serial_path().c_str(), 1), 0);
    EXPECT_EQ(std::vector<uint8_t>(web.begin(), web.begin() + 6), hex("005A454C0001"));
    EXPECT_EQ(web[594], 0x00);
}

} // namespace
} // namespace zel
