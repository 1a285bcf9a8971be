// The simulator's reader of G6 program and data files, fed with files laid out by hand.
#include <gtest/gtest.h>

#include "hand_made.h"
#include "sdk/bytes.h"
#include "sim/panel/panel_png_g6.h"
#include "sim/panel/program_decoder_g6.h"
#include "support/hex.h"

namespace zel::sim {
namespace {

using test::hex;

std::vector<uint8_t> program_head(const char *name, uint8_t background, uint8_t count) {
    ByteWriter f;
    f.u8(0).bytes(name, 4).zeros(24); // the rest of the 29-byte header
    f.u8(0).u8(0).u8(background).u8(count);
    return f.take();
}

std::vector<uint8_t> data_file(const char *name, const std::vector<uint8_t> &pixels) {
    ByteWriter d;
    d.u8(9).bytes(name, 4).zeros(8).bytes(pixels);
    auto file = d.take();
    close_with_crc(file);
    return file;
}

void page_record(ByteWriter &f, uint8_t effect, uint16_t width, uint32_t offset, uint32_t length) {
    f.u32(26).u8(0).u8(effect).zeros(5).u16(width).u8(0).u8(0x5A).zeros(7);
    f.u32(offset).u32(length);
}

// One colour, bytes of 8 positions. An area of 16 x 2 at x 4 with sound and one page: rows are
// padded 4 on each side, 3 bytes a row. The first pixel of the page is lit: bit 3 of byte 0.
std::pair<std::vector<uint8_t>, std::vector<uint8_t>> sound_area_pair() {
    ByteWriter f;
    f.bytes(program_head("P003", 0, 1));
    f.u32(19 + 30 + 1 + 2 + 21);
    f.bytes(hex("00 0400 0300 1000 0200")).u8(0).bytes(hex("AA BB CC"));
    f.bytes(hex("01 11121314 15161718 191A1B1C 1D1E1F20")).u32(2).bytes("hi", 2);
    f.zeros(5).u16(1);
    page_record(f, 1, 16, 14, 6);
    auto program = f.take();
    close_with_crc(program);
    return {program, data_file("D003", hex("F7 FF FF  FF FF FF"))};
}

const ScreenMode kOneColour{32, 8, 1, 0, 1};

TEST(ProgramDecoderG6, ReadsSoundPagesAndPixelsThroughTheDataFile) {
    const auto [program, data] = sound_area_pair();
    const DecodeResultG6 r = decode_program_g6(program, data, kOneColour);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    const DecodedProgramG6 &p = *r.program;
    EXPECT_EQ(p.name, "P003");
    EXPECT_EQ(p.dataName, "D003");
    EXPECT_EQ(p.hasBackground, 0);
    ASSERT_EQ(p.areas.size(), 1u);
    const DecodedAreaG6 &a = p.areas[0];
    EXPECT_EQ(a.offset, 33u);
    EXPECT_EQ(a.bodyLength, 73u);
    EXPECT_EQ(a.extra, (std::array<uint8_t, 3>{0xAA, 0xBB, 0xCC}));
    ASSERT_TRUE(a.sound);
    EXPECT_EQ(a.sound->header[16], 0x20);
    EXPECT_EQ(a.sound->text, "hi");
    ASSERT_EQ(a.pages.size(), 1u);
    EXPECT_EQ(a.pages[0].dataOffset, 14u);
    EXPECT_EQ(a.pages[0].pageWidth(), 16);
    EXPECT_EQ(a.pages[0].header[10], 0x5A);
    EXPECT_EQ(a.pages[0].pixels.data(), data.data() + 13) << "offset 14 is position 13";

    Rgb canvas{32, 8, std::vector<uint32_t>(32 * 8, 0)};
    paint_area_page(canvas, kOneColour, panel_area(a), 0);
    std::size_t lit = 0;
    for (const uint32_t px : canvas.pixels)
        lit += px != 0;
    EXPECT_EQ(lit, 1u);
    EXPECT_EQ(canvas.at(4, 3), 0xFF0000u);
}

// A background of 16 x 6 with a frame strip of 8 x 1 (one byte), its page 14 x 4 at column 1
// (rows of 16 positions, 2 bytes), then an empty text area.
TEST(ProgramDecoderG6, BackgroundBlockHoldsSevenBytesMoreThanItsLengthSays) {
    ByteWriter f;
    f.bytes(program_head("P001", 1, 2));
    f.u32(19 + 30 + (1 + 7) + 1);
    f.bytes(hex("0B 0000 0000 1000 0600"));
    f.bytes(hex("01 010203040506 00000000000000")).u8(0x00); // frame header and strip
    f.zeros(3).u8(0).zeros(5).u16(1);
    page_record(f, 0, 14, 14, 8);
    f.u32(21).bytes(hex("00 0000 0000 1000 0600")).zeros(10).u16(0);
    auto program = f.take();
    close_with_crc(program);
    const auto data = data_file("D001", std::vector<uint8_t>(8, 0x00));

    const DecodeResultG6 r = decode_program_g6(program, data, kOneColour);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 2u);
    const DecodedAreaG6 &b = r.program->areas[0];
    EXPECT_EQ(b.bodyBytes, 65u);
    ASSERT_TRUE(b.frame);
    EXPECT_EQ(b.frame->strip.size(), 1u);
    const auto rect = draw_rect(kOneColour, panel_area(b));
    ASSERT_TRUE(rect);
    EXPECT_EQ(rect->thickness, 1);
    EXPECT_EQ(rect->width, 14);
    EXPECT_EQ(r.program->areas[1].offset, 33u + 4 + 65);
}

// A clock of 8 x 2 at x 0 and an empty text area behind it. Its items point at copies of a
// table of one glyph of 1 x 1 (14 bytes) in the data file, behind the background.
struct ClockCase {
    const char *name;
    ScreenMode mode;
    std::size_t colorSize;  // as the screen writes it
    uint32_t declared;      // as the length word says
    uint8_t count;          // the count byte
    std::size_t itemsThere; // items written
    std::size_t bodyBytes;  // what the reader must find the body to hold
};

std::pair<std::vector<uint8_t>, std::vector<uint8_t>> clock_pair(const ClockCase &c) {
    const std::vector<uint8_t> table = hex("0A000000 0100 00000000 01 01 01 00");
    const std::size_t background = encoded_page_size(c.mode, 0, 8, 2);
    ByteWriter d;
    d.u8(9).bytes("D002", 4).zeros(8).bytes(std::vector<uint8_t>(background, 0xFF));
    ByteWriter f;
    f.bytes(program_head("P002", 0, 2));
    f.u32(c.declared);
    f.bytes(hex("02 0000 0000 0800 0200")).u8(0).u8(0xAA).u8(1).zeros(25).u16(0);
    f.u32(14).u32(static_cast<uint32_t>(background)).u8(c.count);
    uint32_t offset = 14 + static_cast<uint32_t>(background);
    for (std::size_t i = 0; i < c.itemsThere; ++i) {
        f.u16(static_cast<uint16_t>(1 + i)).u16(0).u8(static_cast<uint8_t>(3 + i)).u8(0);
        f.u8(1).zeros(c.colorSize - 1).u32(offset).u32(14);
        d.bytes(table);
        offset += 14;
    }
    while (f.size() < 37 + c.bodyBytes)
        f.u8(0); // the items an unknown format counts and never writes
    f.u32(21).bytes(hex("00 0000 0000 1000 0600")).zeros(10).u16(0);
    auto program = f.take();
    close_with_crc(program);
    auto data = d.take();
    close_with_crc(data);
    return {program, data};
}

TEST(ProgramDecoderG6, ClockBodiesEndBehindTheirItemsOrAtTheirLength) {
    const ClockCase cases[] = {
        // 48 + 3 x 16 declared; the third item was never written.
        {"fewer items than counted", kOneColour, 2, 96, 3, 2, 96},
        // Full colour in pixel mode 4: records of 5 bytes counted as 3, no background bytes.
        {"longer records than counted", {32, 8, 4, 4, 1}, 5, 82, 2, 2, 86},
    };
    for (const ClockCase &c : cases) {
        SCOPED_TRACE(c.name);
        const auto [program, data] = clock_pair(c);
        const DecodeResultG6 r = decode_program_g6(program, data, c.mode);
        ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
        ASSERT_EQ(r.program->areas.size(), 2u);
        const DecodedAreaG6 &a = r.program->areas[0];
        ASSERT_TRUE(a.clock);
        EXPECT_EQ(a.bodyLength, c.declared);
        EXPECT_EQ(a.bodyBytes, c.bodyBytes);
        EXPECT_EQ(a.clock->battleRecord[0], 0xAA);
        EXPECT_EQ(a.clock->clock.unitCount, c.count);
        ASSERT_EQ(a.clock->clock.items.size(), 2u);
        EXPECT_EQ(a.clock->clock.items[1].type, 4);
        EXPECT_EQ(a.clock->tables[1].offset, a.clock->tables[0].offset + 14);
        EXPECT_EQ(r.program->areas[1].offset, 33u + 4 + c.bodyBytes);
    }
}

TEST(ProgramDecoderG6, SaysWhichFileStopsMakingSenseAndWhere) {
    const auto [program, data] = sound_area_pair();
    struct Case {
        const char *name;
        std::vector<uint8_t> program, data;
        bool inDataFile;
        std::size_t offset;
    };
    auto broken_data = data;
    broken_data[13] ^= 1;
    auto longer_data = data_file("D003", hex("F7 FF FF  FF FF FF  00"));
    std::vector<uint8_t> wrong_type(program.begin(), program.end() - 4);
    wrong_type[37] = 5;
    close_with_crc(wrong_type);
    const Case cases[] = {
        {"data CRC", program, broken_data, true, 19},
        {"data the records do not reach", program, longer_data, false, program.size() - 4},
        {"area type", wrong_type, data, false, 37},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const DecodeResultG6 r = decode_program_g6(c.program, c.data, kOneColour);
        ASSERT_FALSE(r.ok());
        EXPECT_EQ(r.inDataFile, c.inDataFile);
        EXPECT_EQ(r.error->offset, c.offset) << r.error->what;
    }
}

} // namespace
} // namespace zel::sim
