#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/capture.h"
#include "support/hex.h"
#include "support/scripted_peer.h"
#include "wire/answer_builder.h"
#include "wire/kor_command.h"

namespace zel {
namespace {

using test::Answer;
using test::hex;
using test::ScriptedPeer;

std::vector<uint8_t> ack_frame() {
    Answer a;
    a.group = 0xA0;
    a.code = 0x00;
    return a.frame();
}

// Zero data of n bytes packs without escapes into a version 240 frame of n + 27 bytes.
constexpr std::size_t kFrameOverhead = 27;

// Sends one frame of `data` by the short form or the large one.
int32_t send_1k(ScriptedPeer &peer, bool large, const std::vector<uint8_t> &data) {
    uint8_t answer[16] = {};
    uint16_t capacity = 0;
    return large ? peer.send_recv_cmd_1K_large(0xA7, 0x00, data.data(),
                                               static_cast<uint32_t>(data.size()), answer, capacity)
                 : peer.send_recv_cmd_1K(0xA7, 0x00, data.data(),
                                         static_cast<uint16_t>(data.size()), answer, capacity);
}

TEST(DynamicExchange, SendsTheFrameInPiecesOf1024) {
    struct Case {
        bool large;
        std::size_t frameLen;
        std::vector<std::size_t> sizes;
    };
    std::vector<std::size_t> forty(40, 1024); // 40961 bytes: beyond what 16 bits could say
    forty.push_back(1);
    const Case cases[] = {
        {false, 1023, {1023}},      {false, 1025, {1024, 1}},      {false, 2047, {1024, 1023}},
        {true, 2048, {1024, 1024}}, {true, 2049, {1024, 1024, 1}}, {true, 40961, forty},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.frameLen);
        ScriptedPeer peer;
        peer.answers.push_back(ack_frame());
        EXPECT_EQ(send_1k(peer, c.large, std::vector<uint8_t>(c.frameLen - kFrameOverhead, 0)), 0);
        EXPECT_EQ(peer.send_sizes(), c.sizes);
        const std::vector<uint8_t> sent = peer.sent_bytes();
        ASSERT_EQ(sent.size(), c.frameLen);
        EXPECT_EQ(std::vector<uint8_t>(sent.begin(), sent.begin() + 13),
                  hex("A5A5A5A5A5A5A5A5 FEFF 0080 F0"));
        EXPECT_EQ(sent.back(), 0x5A);
        EXPECT_EQ(peer.rooms, std::vector<uint32_t>{1024});
        EXPECT_EQ(peer.timeouts, std::vector<uint32_t>{5});
    }
}

TEST(DynamicExchange, FrameOf32768BytesSendsNothingAndWaitsForAnAnswer) {
    // Also a frame of 65536 bytes or more: 32768 data bytes, every one escaped.
    for (const auto &data :
         {std::vector<uint8_t>(32768 - kFrameOverhead, 0), std::vector<uint8_t>(32768, 0x5A)}) {
        ScriptedPeer peer; // no answer: recv fails
        test::StdoutCapture out;
        EXPECT_EQ(send_1k(peer, false, data), -1);
        EXPECT_EQ(out.text(), "Recv failed. nTotalLen ======= 0 \n");
        EXPECT_TRUE(peer.sends.empty()) << data.size();
        EXPECT_EQ(peer.timeouts, std::vector<uint32_t>{5});
    }
}

TEST(DynamicExchange, FailuresNameWhereTheyHappened) {
    Answer refused; // an acknowledge with error code 7 fails the unpack step
    refused.group = 0xA0;
    refused.code = 0x01;
    refused.errorCode = 7;
    struct Case {
        bool large;
        int failSendAt; // -1: every send goes through
        bool answered;  // with the refusal; otherwise recv fails
        int32_t result;
        const char *console;
    };
    const Case cases[] = {
        {false, 1, false, -1,
         "Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = nTotalLen = 1024 !\n"},
        {true, 1, false, -1,
         "Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = 1024 !\n"},
        {true, 2, false, -1,
         "Send failed, at nRemainder !!!!!!!!!!!!!!!!!!!!!!!!!!!!! will sent bytes = 1 !\n"},
        {true, -1, false, -1, "Recv failed. nTotalLen ======= 0 \n"}, // the large form says 0
        {false, -1, true, 7, "Unpack failed. nTotalLen ======= 2049 \n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.console);
        ScriptedPeer peer;
        peer.failSendAt = c.failSendAt;
        if (c.answered) peer.answers.push_back(refused.frame());
        test::StdoutCapture out;
        EXPECT_EQ(send_1k(peer, c.large, std::vector<uint8_t>(2049 - kFrameOverhead, 0)), c.result);
        EXPECT_EQ(out.text(), c.console);
        if (c.failSendAt >= 0) EXPECT_TRUE(peer.timeouts.empty());
    }
}

TEST(CommandExchange, SendsOneFrameAndUnpacksTheAnswerIntoTheCallersRoom) {
    ScriptedPeer peer;
    peer.m_sequence = 4;
    Answer a;
    a.group = 0xA2;
    a.code = 0x8A;
    a.data = {1, 2, 3, 4, 5, 6, 7, 8};
    peer.answers.push_back(a.frame());
    uint8_t answer[8] = {};
    uint16_t capacity = 8;
    EXPECT_EQ(peer.send_recv_cmd(0xA2, 0x0A, nullptr, 0, answer, capacity), 0);
    ASSERT_EQ(peer.sends.size(), 1u);
    EXPECT_EQ(peer.sends[0], hex("A5A5A5A5A5A5A5A5 FEFF 0080 05 00 5100 00 00 0400 00 84 96 00"
                                 " 000000000000 0500 3E7A 82 01 A2 0A 0000 5A"));
    EXPECT_EQ(peer.rooms, std::vector<uint32_t>{65536});
    EXPECT_EQ(peer.timeouts, std::vector<uint32_t>{5});
    EXPECT_EQ(capacity, 8);
    EXPECT_EQ(std::vector<uint8_t>(answer, answer + 8), a.data);
    EXPECT_EQ(peer.m_echo, 0x33); // taken from the answer, sent back with the next request
}

TEST(CommandExchange, PlainCommandDropsAnAnswerOfUpTo1024Bytes) {
    for (const std::size_t length : {std::size_t{1024}, std::size_t{1025}}) {
        ScriptedPeer peer;
        Answer a;
        a.group = 0xA2;
        a.code = 0x81;
        a.data.assign(length, 0x11);
        peer.answers.push_back(a.frame());
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_cmd(0xA2, 0x01, nullptr, 0), length == 1024 ? 0 : 1);
        if (length == 1025) {
            EXPECT_EQ(out.text(), "return Data Length too long!!! Control Card Return:"
                                  "cmd_header->datalen = 1025; but membuff len = 1024;\n ");
        }
    }
}

TEST(CommandExchange, NoFrameGoesOutWhoseLengthsDoNotFit) {
    // Up to 32767 bytes of data the request packs, but its frame is longer than 32767 bytes and
    // the send refuses its negative length; so does it for a frame of 65536 bytes or more that
    // escaping makes. Above 32767 the data length itself would be negative: nothing is sent.
    struct Case {
        std::size_t length;
        uint8_t fill;
        std::size_t refused;
    };
    const Case cases[] = {
        {32767, 0x00, 1}, // frame of 9 + 32 + 32767 bytes
        {32767, 0x5A, 1}, // every data byte escaped: 65575 bytes and more
        {32768, 0x00, 0},
        {65535, 0x00, 0},
    };
    for (const Case &c : cases) {
        ScriptedPeer peer;
        peer.answers.push_back(ack_frame());
        const std::vector<uint8_t> data(c.length, c.fill);
        EXPECT_EQ(peer.send_cmd(0xA1, 0x03, data.data(), static_cast<uint16_t>(c.length)), -1)
            << c.length;
        EXPECT_TRUE(peer.sends.empty()) << c.length;
        EXPECT_EQ(peer.refused.size(), c.refused) << c.length;
        EXPECT_TRUE(peer.timeouts.empty()) << c.length;
    }
}

TEST(CommandExchange, TransportFailuresEndTheExchange) {
    ScriptedPeer sendFails;
    sendFails.failSendAt = 0;
    EXPECT_EQ(sendFails.send_cmd(0xA2, 0x01, nullptr, 0), -1);
    EXPECT_TRUE(sendFails.timeouts.empty());

    ScriptedPeer silent; // recv fails
    EXPECT_EQ(silent.send_cmd(0xA2, 0x01, nullptr, 0), -1);
    EXPECT_EQ(silent.sends.size(), 1u);

    KOR_command base; // no transport at all
    base.m_DeviceType = 0x0051;
    EXPECT_EQ(base.send_cmd(0xA2, 0x01, nullptr, 0), -1);
}

} // namespace
} // namespace zel
