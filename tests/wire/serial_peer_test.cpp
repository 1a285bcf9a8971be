// The serial peer on a real pseudo-terminal, with the test playing the controller.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "support/pty_pair.h"
#include "wire/serial_peer.h"

namespace zel {
namespace {

using test::hex;

TEST(SerialPeer, OpenRefusesUnknownSpeedsAndMissingPorts) {
    test::PtyPair line;
    for (const int32_t index : {0, 3, -1}) {
        SerialPortPeer peer;
        EXPECT_EQ(peer.open(line.slave_path().c_str(), index), -1) << index;
        EXPECT_TRUE(peer.is_open()) << index; // left open until close or the destructor
    }
    SerialPortPeer missing;
    EXPECT_EQ(missing.open("/dev/zel-no-such-port", 1), -1);
    EXPECT_FALSE(missing.is_open());
    SerialPortPeer notATerminal;
    EXPECT_EQ(notATerminal.open("/dev/null", 1), -1);
}

TEST(SerialPeer, WritesTheFrameAsItStandsAndPausesForTheLine) {
    test::PtyPair line;
    // A 100-byte frame: the write time-out is 100 ms + 1 ms per byte, and the pause after the
    // write is that time at 9600 bit/s and a sixth of it at 57600.
    std::vector<uint8_t> frame = hex("A5A5 0D0A 1100 13"); // CR, LF, XON untouched
    frame.resize(99, 0x20);
    frame.push_back(0x5A);
    for (const auto &[index, pause] : {std::pair{1, "sleep 200"}, std::pair{2, "sleep 33"}}) {
        SerialPortPeer peer;
        ASSERT_EQ(peer.open(line.slave_path().c_str(), index), 0);
        test::FakeClock clock;
        EXPECT_EQ(peer.send(frame.data(), static_cast<uint32_t>(frame.size())), 0);
        EXPECT_EQ(clock.events(), std::vector<std::string>{pause}) << index;
        EXPECT_EQ(line.read(1000), frame);
    }
}

TEST(SerialPeer, SilentLineGivesUpAfter2500Ms) {
    test::PtyPair line;
    SerialPortPeer peer;
    ASSERT_EQ(peer.open(line.slave_path().c_str(), 1), 0);
    // The tick count wraps during the wait, as a 32-bit tick counter does after 49.7 days.
    test::FakeClock clock(test::FakeClock::Waits::Expire, 0xFFFFFF00u);
    uint8_t buf[16] = {};
    uint32_t len = sizeof buf;
    EXPECT_EQ(peer.recv(buf, len, 5), -1); // 5 units of 500 ms
    // A read 100 ms after each start and 10 ms more after each empty one, while less than
    // 2500 ms have passed.
    std::vector<std::string> expected;
    for (uint32_t passed = 0; passed < 2500; passed += 110) {
        expected.push_back("sleep 100");
        expected.push_back("sleep 10");
    }
    EXPECT_EQ(clock.events(), expected);
}

TEST(SerialPeer, FirstEndByteEndsTheAnswerAndAReadWithoutOneIsPurged) {
    test::PtyPair line;
    SerialPortPeer peer;
    ASSERT_EQ(peer.open(line.slave_path().c_str(), 1), 0);
    uint8_t buf[16] = {};

    // Room for two: the read takes 01 02, finds no end byte, and discards the 03 behind it.
    line.write(hex("01 02 03"));
    uint32_t len = 2;
    EXPECT_EQ(peer.recv(buf, len, 1), -1);

    // Had the 03 survived, it would lead this read.
    line.write(hex("A5 5A 77 5A"));
    len = sizeof buf;
    EXPECT_EQ(peer.recv(buf, len, 1), 0);
    EXPECT_EQ(len, 2u);
    EXPECT_EQ(buf[0], 0xA5);

    // The 77 5A read along with it were dropped, so this read holds no end byte.
    len = sizeof buf;
    line.write(hex("10 20"));
    EXPECT_EQ(peer.recv(buf, len, 1), -1);
}

TEST(SerialPeer, SendOnAClosedPortReportsTheClearError) {
    SerialPortPeer peer;
    test::StdoutCapture out;
    const uint8_t byte = 0x5A;
    EXPECT_EQ(peer.send(&byte, 1), -1);
    EXPECT_EQ(out.text(), "ClearCommError error return ===== 0 \n");
}

} // namespace
} // namespace zel
