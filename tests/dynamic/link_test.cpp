// Which exchange a dynamic command takes: up to 32768 bytes of data the chunked one (whose
// frame, that large, has a negative length and sends nothing), from 32769 the heap one.
#include <gtest/gtest.h>

#include "dynamic/link.h"
#include "support/capture.h"
#include "support/scripted_peer.h"

namespace zel::dynamic {
namespace {

TEST(DynamicLink, CommandSizeChoosesTheExchange) {
    struct Case {
        std::size_t size;
        bool alwaysLarge;
        std::size_t sends;
    };
    // A frame is the 16-byte header, the data and the CRC, framed with 9 bytes more (nothing
    // here needs escaping). 500 bytes: a frame of 527 in one send. 32768 bytes: the frame's
    // length is negative as a 16-bit value, nothing goes out. 32769 bytes: 32796 bytes of frame
    // in 32 pieces of 1024 and one of 28. A small command forced onto the heap path: one send.
    const Case cases[] = {{500, false, 1}, {32768, false, 0}, {32769, false, 33}, {500, true, 1}};
    for (const Case &c : cases) {
        test::ScriptedPeer peer;
        const std::vector<uint8_t> data(c.size, 0x11);
        test::StdoutCapture quiet;
        const int32_t result = exchange(peer, data, c.alwaysLarge);
        quiet.text();
        EXPECT_EQ(result, -1) << c.size; // nobody answers
        EXPECT_EQ(peer.sends.size(), c.sends) << c.size;
        ASSERT_EQ(peer.rooms.size(), 1u);
        EXPECT_EQ(peer.rooms[0], 1024u); // the answer of either exchange fits 1024 bytes
        if (c.sends == 1) EXPECT_EQ(peer.sends[0].size(), 527u);
        if (c.sends == 33) EXPECT_EQ(peer.sends.back().size(), 28u);
    }
}

TEST(DynamicLink, NarrowingKeepsTheLow16BitsSigned) {
    EXPECT_EQ(narrow16(-1), -1);
    EXPECT_EQ(narrow16(0x12345), 0x2345);
    EXPECT_EQ(narrow16(0x8001), -32767);
}

} // namespace
} // namespace zel::dynamic
