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

TEST(DynamicExchange, SendsTheFrameInPiecesOf1024) {
    struct Case {
        std::size_t frameLen;
        std::vector<std::size_t> sizes;
    };
    for (const Case &c : {Case{1023, {1023}}, Case{1025, {1024, 1}}, Case{2047, {1024, 1023}}}) {
        ScriptedPeer peer;
        peer.answers.push_back(ack_frame());
        const std::vector<uint8_t> data(c.frameLen - kFrameOverhead, 0);
        uint8_t answer[16] = {};
        uint16_t capacity = 0;
        EXPECT_EQ(peer.send_recv_cmd_1K(0xA7, 0x00, data.data(), static_cast<uint16_t>(data.size()),
                                        answer, capacity),
                  0);
        EXPECT_EQ(peer.send_sizes(), c.sizes) << c.frameLen;
        const std::vector<uint8_t> sent = peer.sent_bytes();
        ASSERT_EQ(sent.size(), c.frameLen);
        EXPECT_EQ(std::vector<uint8_t>(sent.begin(), sent.begin() + 13),
                  hex("A5A5A5A5A5A5A5A5 FEFF 0080 F0"));
        EXPECT_EQ(sent.back(), 0x5A);
        EXPECT_EQ(peer.rooms, std::vector<uint32_t>{1024});
        EXPECT_EQ(peer.timeouts, std::vector<uint32_t>{5});
    }
}

TEST(DynamicExchange, LargeFormSendsWholeChunksThenTheRest) {
    struct Case {
        std::size_t frameLen;
        std::vector<std::size_t> sizes;
    };
    // 40961 bytes: far beyond what a 16-bit length could say.
    for (const Case &c : {Case{2048, {1024, 1024}}, Case{2049, {1024, 1024, 1}},
                          Case{40961, std::vector<std::size_t>(40, 1024)}}) {
        ScriptedPeer peer;
        peer.answers.push_back(ack_frame());
        const std::vector<uint8_t> data(c.frameLen - kFrameOverhead, 0);
        std::vector<std::size_t> expected = c.sizes;
        if (c.frameLen == 40961) expected.push_back(1);
        uint8_t answer[16] = {};
        uint16_t capacity = 0;
        EXPECT_EQ(peer.send_recv_cmd_1K_large(0xA7, 0x00, data.data(),
                                              static_cast<uint32_t>(data.size()), answer, capacity),
                  0);
        EXPECT_EQ(peer.send_sizes(), expected) << c.frameLen;
        EXPECT_EQ(peer.sent_bytes().size(), c.frameLen);
    }
}

TEST(DynamicExchange, FrameOf32768BytesSendsNothingAndWaitsForAnAnswer) {
    ScriptedPeer peer; // no answer: recv fails
    const std::vector<uint8_t> data(32768 - kFrameOverhead, 0);
    uint8_t answer[16] = {};
    uint16_t capacity = 0;
    test::StdoutCapture out;
    EXPECT_EQ(peer.send_recv_cmd_1K(0xA7, 0x00, data.data(), static_cast<uint16_t>(data.size()),
                                    answer, capacity),
              -1);
    EXPECT_EQ(out.text(), "Recv failed. nTotalLen ======= 0 \n");
    EXPECT_TRUE(peer.sends.empty());
    EXPECT_EQ(peer.timeouts, std::vector<uint32_t>{5});
}

TEST(DynamicExchange, FailuresNameWhereTheyHappened) {
    const std::vector<uint8_t> data(2049 - kFrameOverhead, 0);
    uint8_t answer[16] = {};
    uint16_t capacity = 0;
    {
        ScriptedPeer peer;
        peer.failSendAt = 1;
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_recv_cmd_1K(0xA7, 0, data.data(), static_cast<uint16_t>(data.size()),
                                        answer, capacity),
                  -1);
        EXPECT_EQ(out.text(), "Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = "
                              "nTotalLen = 1024 !\n");
        EXPECT_TRUE(peer.timeouts.empty());
    }
    {
        ScriptedPeer peer;
        peer.failSendAt = 1;
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_recv_cmd_1K_large(0xA7, 0, data.data(),
                                              static_cast<uint32_t>(data.size()), answer, capacity),
                  -1);
        EXPECT_EQ(out.text(),
                  "Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = 1024 !\n");
    }
    {
        ScriptedPeer peer;
        peer.failSendAt = 2;
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_recv_cmd_1K_large(0xA7, 0, data.data(),
                                              static_cast<uint32_t>(data.size()), answer, capacity),
                  -1);
        EXPECT_EQ(out.text(), "Send failed, at nRemainder !!!!!!!!!!!!!!!!!!!!!!!!!!!!! will "
                              "sent bytes = 1 !\n");
    }
    {
        ScriptedPeer peer; // the large form reports 0 as its count
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_recv_cmd_1K_large(0xA7, 0, data.data(),
                                              static_cast<uint32_t>(data.size()), answer, capacity),
                  -1);
        EXPECT_EQ(out.text(), "Recv failed. nTotalLen ======= 0 \n");
    }
    {
        ScriptedPeer peer; // an acknowledge with error code 7 fails the unpack step
        Answer a;
        a.group = 0xA0;
        a.code = 0x01;
        a.errorCode = 7;
        peer.answers.push_back(a.frame());
        test::StdoutCapture out;
        EXPECT_EQ(peer.send_recv_cmd_1K(0xA7, 0, data.data(), static_cast<uint16_t>(data.size()),
                                        answer, capacity),
                  7);
        EXPECT_EQ(out.text(), "Unpack failed. nTotalLen ======= 2049 \n");
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
