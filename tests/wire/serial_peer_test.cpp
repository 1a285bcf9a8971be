// The serial peer on a real pseudo-terminal, with the test playing the controller.
#include <gtest/gtest.h>

#include "support/capture.h"
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

TEST(SerialPeer, WritesTheFrameAsItStands) {
    test::PtyPair line;
    for (const int32_t index : {1, 2}) {
        SerialPortPeer peer;
        ASSERT_EQ(peer.open(line.slave_path().c_str(), index), 0);
        const std::vector<uint8_t> frame = hex("A5A5 0D0A 1100 135A"); // CR, LF, XON untouched
        EXPECT_EQ(peer.send(frame.data(), static_cast<uint32_t>(frame.size())), 0);
        EXPECT_EQ(line.read(1000), frame);
    }
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
