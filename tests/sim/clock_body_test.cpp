// The simulator's reading of clock areas, fed with files laid out by hand, and the clock it
// draws at a given moment.
#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "hand_made.h"
#include "sdk/bytes.h"
#include "sim/panel/clock_body.h"
#include "sim/panel/clock_painter.h"
#include "sim/panel/program_decoder.h"
#include "support/hex.h"

namespace zel::sim {
namespace {

using test::hex;

void program_head(ByteWriter &f, uint8_t areas) {
    f.bytes(hex("00 50303039 00 00 01 0000 FF FFFF 12 12 FFFF 12 12")); // "P009"
    f.u8(0).u8(0).u8(0).u8(areas); // no periods, no frame, background mark, count
}

// Ten glyphs of 3 x 2 pixels, one byte a row, for a screen of single colours (ink is a 0 bit):
// digit k has ink at column k % 3 of its first row, and a full second row from 5 on.
std::vector<uint8_t> digit_table() {
    ByteWriter t;
    t.u32(2 + 4 * 10 + 10 * 5).u16(10);
    for (uint32_t i = 0; i < 10; ++i)
        t.u32(i * 5);
    for (uint8_t k = 0; k < 10; ++k) {
        t.u8(1).u8(3).u8(2);
        t.u8(static_cast<uint8_t>(~(0x80 >> (k % 3))));
        t.u8(k >= 5 ? 0x1F : 0xFF);
    }
    return t.take();
}

// The ink a digit of digit_table() puts at (x, y) of its cell.
bool digit_ink(std::size_t k, uint32_t x, uint32_t y) {
    return y == 0 ? x == k % 3 : k >= 5;
}

const ScreenMode kOneColour{32, 8, 1, 0, 1};

// A clock area of 16 x 8 at x 0: a background with its top left pixel lit, the seconds at
// (2, 1) in red and the hours at (9, 4) on a 12-hour clock.
std::vector<uint8_t> clock_file() {
    const auto table = digit_table();
    ByteWriter body;
    body.bytes(hex("02 0000 0000 1000 0800 00 00 00"));
    std::vector<uint8_t> background(16, 0xFF);
    background[0] = 0x7F;
    body.bytes(background).u8(2);
    body.u16(2).u16(1).u8(5).u8(0).u8(1).u8(0).bytes(table);
    body.u16(9).u16(4).u8(3).u8(0).u8(1).u8(1).bytes(table);
    ByteWriter f;
    program_head(f, 1);
    f.u32(static_cast<uint32_t>(body.size())).bytes(body.data());
    auto file = f.take();
    close_with_crc(file);
    return file;
}

TEST(ClockBody, ReadsItemsAndDrawsTheGlyphsOfTheGivenTime) {
    const auto file = clock_file();
    const DecodeResult r = decode_program(file, kOneColour);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 1u);
    const DecodedArea &area = r.program->areas[0];
    ASSERT_TRUE(area.clock);
    EXPECT_EQ(area.clock->background.size(), 16u);
    EXPECT_EQ(area.clock->unitCount, 2);
    ASSERT_EQ(area.clock->items.size(), 2u);
    EXPECT_EQ(area.clock->items[0].type, 5);
    EXPECT_EQ(area.clock->items[1].color.size(), 2u);
    EXPECT_EQ(area.end, file.size() - 4);

    // 13:45:37: seconds 3 and 7 from x 2, hours "01" from x 9 (the 12-hour flag is set).
    Rgb canvas{32, 8, std::vector<uint32_t>(32 * 8, 0)};
    paint_clock(canvas, kOneColour, area, *parse_clock_time("2026-11-15 13:45:37"));
    std::set<std::pair<uint32_t, uint32_t>> want{{0, 0}}; // the background's pixel
    const std::pair<std::pair<uint32_t, uint32_t>, std::vector<std::size_t>> cells[] = {
        {{2, 1}, {3, 7}}, {{9, 4}, {0, 1}}};
    for (const auto &[at, digits] : cells) {
        for (std::size_t c = 0; c < digits.size(); ++c) {
            for (uint32_t y = 0; y < 2; ++y) {
                for (uint32_t x = 0; x < 3; ++x) {
                    if (digit_ink(digits[c], x, y)) {
                        want.insert({at.first + 3 * static_cast<uint32_t>(c) + x, at.second + y});
                    }
                }
            }
        }
    }
    for (uint32_t y = 0; y < 8; ++y) {
        for (uint32_t x = 0; x < 32; ++x) {
            EXPECT_EQ(canvas.at(x, y), want.count({x, y}) ? 0xFF0000u : 0u) << x << "," << y;
        }
    }
    // Without a screen the body is not read.
    EXPECT_FALSE(decode_program(file).program->areas[0].clock);
}

TEST(ClockBody, FullColourItemsRunPastTheDeclaredLengthAndTheNextBlockFollowsThem) {
    // Full colour, 3 bytes a pixel: a clock of 4 x 2 has a background of 24 bytes, and its one
    // item a colour record of 5 bytes where the length counted 2. An empty text area follows.
    const ScreenMode full{32, 8, 4, 5, 1};
    ByteWriter table;
    table.u32(2 + 4 + 4).u16(1).u32(0).u8(1).u8(2).u8(1).u8(0xC0); // one glyph, 2 x 1, all ink
    ByteWriter body;
    body.bytes(hex("02 0100 0000 0400 0200 00 00 00")).zeros(24).u8(1);
    body.u16(0).u16(1).u8(4).u8(0).bytes(hex("00FF0000 00")).bytes(table.data());
    ByteWriter f;
    program_head(f, 2);
    f.u32(static_cast<uint32_t>(body.size() - 3)).bytes(body.data());
    f.u32(12).bytes(hex("00 1000 0000 0800 0200 00 0000"));
    auto file = f.take();
    close_with_crc(file);

    const DecodeResult r = decode_program(file, full);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 2u);
    const DecodedArea &clock = r.program->areas[0];
    EXPECT_EQ(clock.bodyLength, body.size() - 3);
    EXPECT_EQ(clock.end, 23 + 4 + body.size());
    EXPECT_EQ(r.program->areas[1].offset, clock.end);
    ASSERT_TRUE(clock.clock);
    EXPECT_EQ(item_colour(clock.clock->items[0].color), 0x00FF00u);
    // Minute 0 shows glyph 0 twice: its ink (a 1 bit on this screen) in green, at x 1 and 3.
    Rgb canvas{32, 8, std::vector<uint32_t>(32 * 8, 0)};
    paint_clock(canvas, full, clock, *parse_clock_time("2026-01-01 00:00:00"));
    EXPECT_EQ(canvas.at(1, 1), 0x00FF00u);
    EXPECT_EQ(canvas.at(4, 1), 0x00FF00u);
    EXPECT_EQ(canvas.at(1, 0), 0u);
    EXPECT_EQ(canvas.at(5, 1), 0u) << "clipped to the area's 4 columns";
}

TEST(ClockBody, RejectsTablesWhoseOffsetsDisagree) {
    auto table = digit_table();
    table[6 + 4] = 4; // the second glyph's offset should be 5
    EXPECT_FALSE(decode_glyph_table(table));
    EXPECT_TRUE(decode_glyph_table(digit_table()));
    EXPECT_TRUE(decode_glyph_table(hex("02000000 0000"))) << "an empty table";
    EXPECT_FALSE(decode_glyph_table(hex("03000000 0000 00")));
}

TEST(ClockBody, TimesAndTheFieldsTheyShow) {
    EXPECT_FALSE(parse_clock_time("2026-02-29 10:00:00"));
    EXPECT_TRUE(parse_clock_time("2024-02-29 10:00:00"));
    EXPECT_FALSE(parse_clock_time("2026-11-15 24:00:00"));
    EXPECT_FALSE(parse_clock_time("2026-11-15 1:00:00"));
    const ClockTime sunday = *parse_clock_time("2026-11-15 00:05:09");
    EXPECT_EQ(format_clock_time(sunday), "2026-11-15 00:05:09");
    EXPECT_EQ(week_day(sunday), 0);
    EXPECT_EQ(week_day(*parse_clock_time("2000-01-01 00:00:00")), 6);
    EXPECT_EQ(item_glyphs(7, false, sunday), (std::vector<std::size_t>{6})) << "Monday first";
    EXPECT_EQ(item_glyphs(0, false, sunday), (std::vector<std::size_t>{2, 0, 2, 6}));
    EXPECT_EQ(item_glyphs(3, true, sunday), (std::vector<std::size_t>{1, 2})) << "0 h is 12";
    EXPECT_EQ(item_glyphs(3, false, sunday), (std::vector<std::size_t>{0, 0}));
    EXPECT_EQ(item_glyphs(6, false, sunday), (std::vector<std::size_t>{0})) << "AM";
    EXPECT_EQ(item_glyphs(5, false, sunday), (std::vector<std::size_t>{0, 9}));
}

} // namespace
} // namespace zel::sim
