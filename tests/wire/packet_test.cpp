#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "sdk/globals.h"
#include "support/capture.h"
#include "support/hex.h"
#include "wire/answer_builder.h"
#include "wire/packet.h"

namespace zel {
namespace {

using test::Answer;
using test::hex;

std::vector<uint8_t> unframe(const std::vector<uint8_t> &frame) {
    std::vector<uint8_t> out(frame.size() + 1);
    out.resize(unframe_bytes(frame, out.data()));
    return out;
}

TEST(PacketPack, ProbeFrameIsByteExact) {
    LedTKPacket packet;
    std::vector<uint8_t> out;
    packet.pack_probe(out);
    EXPECT_EQ(out, hex("A5A5A5A5A5A5A5A5 FEFF 0080 00 00 FE 01 0200 0400 23B8 E3 A2 00 0000 5A"));
    EXPECT_EQ(packet.m_sequence, 4);
}

TEST(PacketPack, Version5RequestEscapesEveryDelimiter) {
    LedTKPacket packet;
    packet.m_DeviceType = 0x1051; // only the low byte chooses the header
    std::vector<uint8_t> probe;
    packet.pack_probe(probe); // takes sequence 2, as a peer's init does
    std::vector<uint8_t> out;
    const std::vector<uint8_t> data = {0x5A, 0x5B, 0xA5, 0xA6, 0x03};
    packet.pack(0xA2, 0x05, data.data(), static_cast<int16_t>(data.size()), out);
    EXPECT_EQ(out, hex("A5A5A5A5A5A5A5A5 FEFF 0080 05 00 5110 00 00 0400 00 84 96 00 000000000000"
                       " 0A00 4536 AA 01 A2 05 0500 5B02 5B01 A602 A601 03 5A"));
}

TEST(PacketPack, Version7RequestCarriesCapabilityAndFixedWord) {
    LedTKPacket packet;
    packet.m_DeviceType = 0x0058;
    packet.m_sequence = 4;
    std::vector<uint8_t> out;
    const uint8_t data[] = {0x01};
    packet.pack(0xA2, 0x05, data, 1, out);
    EXPECT_EQ(out, hex("A5A5A5A5A5A5A5A5 FEFF 0080 07 00 5800 00 00 0400 FF00 96 00 000000000000"
                       " 0600 68C4 00 19 01 A2 05 0100 01 5A"));
    EXPECT_EQ(out.size(), 9u + 33u + 1u);
}

TEST(PacketPack, UnknownDeviceTypesPackNothing) {
    for (const uint16_t type : {uint16_t{0xFFFE}, uint16_t{0x0056}, uint16_t{0x5100}}) {
        LedTKPacket packet;
        packet.m_DeviceType = type;
        std::vector<uint8_t> out;
        packet.pack(0xA2, 0x01, nullptr, 0, out);
        EXPECT_TRUE(out.empty()) << std::hex << type;
        EXPECT_EQ(packet.m_sequence, 2) << "no packet, no sequence step";
    }
    EXPECT_EQ(header_form_for(0x1051), HeaderForm::G5);
    EXPECT_EQ(header_form_for(0x005E), HeaderForm::G5);
    EXPECT_EQ(header_form_for(0x0074), HeaderForm::G6);
}

TEST(PacketPack, SequenceRestartsAtTwoAfter32766) {
    LedTKPacket packet;
    packet.m_DeviceType = 0x0051;
    packet.m_sequence = 32766;
    std::vector<uint8_t> out;
    packet.pack(0xA2, 0x01, nullptr, 0, out);
    const std::vector<uint8_t> inner = unframe(out);
    EXPECT_EQ(inner[10], 0xFE);
    EXPECT_EQ(inner[11], 0x7F);
    EXPECT_EQ(packet.m_sequence, 2);
}

TEST(PacketPack, ConstructorPutsTheBroadcastScreenNumberBack) {
    g_screenNum = 5;
    LedTKPacket packet;
    EXPECT_EQ(g_screenNum.load(), 0xFFFE);
    g_screenNum = 7; // set after the peer exists: the next packet carries it
    packet.m_DeviceType = 0x0051;
    std::vector<uint8_t> out;
    packet.pack(0xA2, 0x01, nullptr, 0, out);
    EXPECT_EQ(out[8], 0x07);
    EXPECT_EQ(out[9], 0x00);
    g_screenNum = 0xFFFE;
}

TEST(PacketPack, Version240HasA32BitLengthAndATrailingCrc) {
    LedTKPacket packet;
    packet.m_DeviceType = 0x0062;
    std::vector<uint8_t> out;
    const uint8_t data[] = {0xA7, 0x01, 0x5A};
    packet.pack240(0xA7, 0x01, data, sizeof data, out);
    const std::vector<uint8_t> inner = {0xFE, 0xFF, 0x00, 0x80, 0xF0, 0x00, 0x62, 0x00, 0,   0,
                                        0,    0,    3,    0,    0,    0,    0xA7, 0x01, 0x5A};
    std::vector<uint8_t> expected = inner;
    const uint16_t crc = test::ref_crc16(inner);
    expected.push_back(static_cast<uint8_t>(crc));
    expected.push_back(static_cast<uint8_t>(crc >> 8));
    EXPECT_EQ(out, test::ref_frame(expected));
    EXPECT_EQ(packet.pack_240_large(0xA7, 0x01, data, sizeof data), out);
    EXPECT_EQ(packet.m_sequence, 2) << "version 240 has no sequence";
}

TEST(PacketFrame, EscapePairsGoBothWays) {
    std::vector<uint8_t> framed;
    frame_bytes(hex("5A 5B A5 A6 00"), framed);
    EXPECT_EQ(framed, hex("A5A5A5A5A5A5A5A5 5B02 5B01 A602 A601 00 5A"));
    EXPECT_EQ(unframe(framed), hex("5A 5B A5 A6 00"));
}

// Long packets dense with delimiters, escape leads and stray codes, so that escapes fall on
// and across every 16-byte boundary: framing matches the escape rule byte for byte, and
// unframing gives the packet back, also from frames with escape leads not followed by 01/02.
TEST(PacketFrame, LongPacketsEscapeEveryDelimiterWherever) {
    const uint8_t alphabet[] = {0x00, 0x01, 0x02, 0x03, 0x5A, 0x5B, 0xA5, 0xA6, 0x77};
    std::mt19937 rng(0x5A5B);
    for (int round = 0; round < 300; ++round) {
        const std::size_t length = round < 100 ? static_cast<std::size_t>(round) : rng() % 3000;
        const bool dense = round % 2 == 0;
        std::vector<uint8_t> inner(length);
        for (auto &b : inner)
            b = dense ? alphabet[rng() % sizeof alphabet] : static_cast<uint8_t>(rng());

        std::vector<uint8_t> framed{1, 2, 3}; // replaced, not appended to
        frame_bytes(inner, framed);
        ASSERT_EQ(framed, test::ref_frame(inner)) << "length " << length;
        ASSERT_EQ(unframe(framed), inner) << "length " << length;

        // A raw frame: 01/02 after a lead decode, anything else after a lead stays as it is.
        if (!inner.empty() && inner[0] == 0xA5) continue; // the start run would take it
        std::vector<uint8_t> raw{0xA5};
        std::vector<uint8_t> decoded;
        raw.insert(raw.end(), inner.begin(), inner.end());
        raw.push_back(0x11);
        raw.push_back(0x5A);
        for (std::size_t i = 1; i + 1 < raw.size();) {
            const uint8_t b = raw[i];
            const uint8_t next = raw[i + 1];
            if ((b == 0x5B || b == 0xA6) && i + 2 < raw.size() && (next == 1 || next == 2)) {
                decoded.push_back(b == 0x5B ? (next == 2 ? 0x5A : 0x5B)
                                            : (next == 2 ? 0xA5 : 0xA6));
                i += 2;
            } else {
                decoded.push_back(b);
                ++i;
            }
        }
        ASSERT_EQ(unframe(raw), decoded) << "length " << length;
    }
}

TEST(PacketFrame, UnframingKeepsUnknownEscapesAndDropsAllTrailingEnds) {
    EXPECT_EQ(unframe(hex("A5 A5 11 5B 03 A6 03 22 5A")), hex("11 5B 03 A6 03 22"));
    EXPECT_EQ(unframe(hex("A5 A5 11 22 5A 5A")), hex("11 22"));
    // Nothing but end bytes behind the start run: the range keeps the rest of the frame.
    EXPECT_EQ(unframe(hex("A5 5A 5A")), hex("5A 5A"));
}

TEST(PacketUnpack, AcknowledgesGiveZeroTheErrorCodeOrUnexpected) {
    struct Case {
        uint8_t code;
        uint16_t error;
        int32_t result;
    };
    for (const Case c : {Case{0, 0, 0}, Case{1, 0, 0}, Case{1, 9, 9}, Case{2, 0, -5}}) {
        Answer a;
        a.group = 0xA0;
        a.code = c.code;
        a.errorCode = c.error;
        const auto frame = a.frame();
        LedTKPacket packet;
        uint8_t out[16] = {};
        uint16_t capacity = sizeof out;
        EXPECT_EQ(packet.unpack(frame.data(), static_cast<uint16_t>(frame.size()), 0xA2, 0x01, out,
                                capacity),
                  c.result)
            << int(c.code) << "/" << c.error;
        EXPECT_EQ(packet.m_echo, 0x33);
    }
}

TEST(PacketUnpack, DataAnswersFitTruncateOrFailOnNoRoom) {
    Answer a;
    a.code = 0x81;
    a.data = {1, 2, 3, 4, 5};
    const auto frame = a.frame();
    const auto len = static_cast<uint16_t>(frame.size());

    LedTKPacket packet;
    uint8_t out[8];
    std::fill(std::begin(out), std::end(out), 0xEE);
    uint16_t capacity = 5;
    EXPECT_EQ(packet.unpack(frame.data(), len, 0xA2, 0x01, out, capacity), 0);
    EXPECT_EQ(capacity, 5);
    EXPECT_EQ(std::vector<uint8_t>(out, out + 6), hex("01 02 03 04 05 EE"));

    std::fill(std::begin(out), std::end(out), 0xEE);
    capacity = 4;
    test::StdoutCapture console;
    EXPECT_EQ(packet.unpack(frame.data(), len, 0xA2, 0x01, out, capacity), 1);
    EXPECT_EQ(console.text(), "return Data Length too long!!! Control Card Return:cmd_header->"
                              "datalen = 5; but membuff len = 4;\n ");
    EXPECT_EQ(capacity, 4);
    EXPECT_EQ(std::vector<uint8_t>(out, out + 5), hex("01 02 03 04 EE"));

    capacity = 0;
    test::StdoutCapture console0;
    EXPECT_EQ(packet.unpack(frame.data(), len, 0xA2, 0x01, out, capacity), -1);
    EXPECT_EQ(console0.text(), "nCmdDataLen <= 0 \n ");

    capacity = 8;
    EXPECT_EQ(packet.unpack(frame.data(), len, 0xA2, 0x02, out, capacity), -5) << "wrong code";
    capacity = 8;
    EXPECT_EQ(packet.unpack(frame.data(), len, 0xA1, 0x01, out, capacity), -5) << "wrong group";
}

TEST(PacketUnpack, ChecksFailInOrder) {
    LedTKPacket packet;
    uint8_t out[8];
    auto run = [&](const std::vector<uint8_t> &frame) {
        uint16_t capacity = sizeof out;
        return packet.unpack(frame.data(), static_cast<uint16_t>(frame.size()), 0xA2, 0x01, out,
                             capacity);
    };
    Answer badHeader;
    badHeader.breakHeaderCheck = true;
    EXPECT_EQ(run(badHeader.frame()), -2);
    Answer badCrc;
    badCrc.breakCrc = true;
    EXPECT_EQ(run(badCrc.frame()), -3);
    Answer version3;
    version3.version = 3;
    EXPECT_EQ(run(version3.frame()), -4);

    auto noStart = Answer{}.frame();
    noStart[0] = 0x00;
    EXPECT_EQ(run(noStart), -1);
    auto noEnd = Answer{}.frame();
    noEnd.back() = 0x00;
    EXPECT_EQ(run(noEnd), -1);
    EXPECT_EQ(run({}), -1);

    auto twoEnds = Answer{}.frame();
    twoEnds.push_back(0x5A);
    EXPECT_EQ(run(twoEnds), 0);
}

TEST(PacketUnpack, PadIsRemovedOnlyWhenTheMarkerSaysSo) {
    Answer padded;
    padded.padMarker = 0x00;
    padded.padIndex = 200; // 200 + 111 stays inside the 512 table bytes
    for (int i = 0; i < 150; ++i)
        padded.data.push_back(static_cast<uint8_t>(i * 7));
    const auto frame = padded.frame();
    LedTKPacket packet;
    std::vector<uint8_t> out(256);
    uint16_t capacity = 256;
    ASSERT_EQ(packet.unpack(frame.data(), static_cast<uint16_t>(frame.size()), 0xA2, 0x01,
                            out.data(), capacity),
              0);
    ASSERT_EQ(capacity, 150);
    EXPECT_TRUE(std::equal(padded.data.begin(), padded.data.end(), out.begin()));

    // Marker 0x96 means no pad, whatever the index byte holds.
    Answer plain;
    plain.padIndex = 77;
    plain.data = {9, 8, 7};
    const auto plainFrame = plain.frame();
    capacity = 256;
    EXPECT_EQ(packet.unpack(plainFrame.data(), static_cast<uint16_t>(plainFrame.size()), 0xA2, 0x01,
                            out.data(), capacity),
              0);
    EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 3), hex("09 08 07"));
}

TEST(PacketUnpack, Version7AnswerSetsTheCapabilityOfTheNextRequest) {
    Answer a;
    a.version = 7;
    a.deviceType = 0x0062;
    a.capability = 0x02;
    a.group = 0xA0;
    a.code = 0;
    const auto frame = a.frame();
    LedTKPacket packet;
    packet.m_DeviceType = 0x0062;
    uint8_t out[4];
    uint16_t capacity = sizeof out;
    ASSERT_EQ(
        packet.unpack(frame.data(), static_cast<uint16_t>(frame.size()), 0xA2, 0x01, out, capacity),
        0);
    EXPECT_EQ(packet.m_capAnswer, 0x02);
    std::vector<uint8_t> request;
    packet.pack(0xA2, 0x01, nullptr, 0, request);
    const auto inner = unframe(request);
    EXPECT_EQ(inner[5], 0x33) << "echo byte goes back";
    EXPECT_EQ(inner[9], 0x02) << "(mask | 2) & answer";
}

TEST(PacketUnpack, Version240AnswerHasItsBodyAtSixteen) {
    Answer a;
    a.version = 240;
    a.group = 0xA7;
    a.code = 0x81;
    a.data = {0x42};
    const auto frame = a.frame();
    LedTKPacket packet;
    uint8_t out[4] = {};
    uint16_t capacity = sizeof out;
    EXPECT_EQ(
        packet.unpack(frame.data(), static_cast<uint16_t>(frame.size()), 0xA7, 0x01, out, capacity),
        0);
    EXPECT_EQ(out[0], 0x42);
}

TEST(PacketUnpack, ProbeAnswerGivesTheDeviceTypeWithoutChecks) {
    Answer a;
    a.deviceType = 0x0062;
    a.version = 7;
    a.breakCrc = true; // not checked for a probe
    const auto frame = a.frame();
    LedTKPacket packet;
    std::vector<uint8_t> out;
    uint16_t outLen = 0;
    EXPECT_EQ(packet.unpack_probe(frame.data(), static_cast<uint16_t>(frame.size()), out, outLen),
              0);
    EXPECT_EQ(outLen, a.inner().size());
    EXPECT_EQ(out[6] | (out[7] << 8), 0x0062);
    EXPECT_EQ(packet.m_echo, 0x33);

    Answer version3;
    version3.version = 3;
    const auto bad = version3.frame();
    EXPECT_EQ(packet.unpack_probe(bad.data(), static_cast<uint16_t>(bad.size()), out, outLen), -4);
    const auto noEnd = hex("A5 A5 00 00");
    EXPECT_EQ(packet.unpack_probe(noEnd.data(), 4, out, outLen), -1);
}

} // namespace
} // namespace zel
