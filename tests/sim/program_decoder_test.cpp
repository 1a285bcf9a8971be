// The simulator's reader of G5 program files, fed with files laid out by hand.
#include <gtest/gtest.h>

#include <algorithm>

#include "hand_made.h"
#include "sdk/bytes.h"
#include "sim/panel/panel_png.h"
#include "sim/panel/program_decoder.h"
#include "support/hex.h"

namespace zel::sim {
namespace {

using test::hex;

std::vector<uint8_t> header(const char *name) {
    std::vector<uint8_t> h = hex("00 00000000 00 00 01 0000 FF FFFF 12 12 FFFF 12 12");
    for (int i = 0; i < 4; ++i)
        h[1 + static_cast<std::size_t>(i)] = static_cast<uint8_t>(name[i]);
    return h;
}

// One colour, bytes of 8 positions. An area of 16 x 2 at x 4: rows are padded 4 on the left
// and 4 on the right, 3 bytes a row. The first pixel of the page is lit: bit 3 of byte 0.
std::vector<uint8_t> one_area_file() {
    ByteWriter f;
    f.bytes(header("P003"));
    f.u8(0).u8(0).u8(0).u8(1); // no periods, no frame, background mark, one area
    const std::vector<uint8_t> pixels = hex("F7 FF FF  FF FF FF");
    f.u32(12 + 17 + 6);
    f.bytes(hex("00 0400 0300 1000 0200")).u8(0).u16(1);
    f.u32(13 + 6).bytes(hex("00 01 00 00 0000 00 1000 00000000")).bytes(pixels);
    auto file = f.take();
    close_with_crc(file);
    return file;
}

const ScreenMode kOneColour{32, 8, 1, 0, 1};

TEST(ProgramDecoder, ReadsAreasPagesAndPixelsOfAHandMadeFile) {
    const auto file = one_area_file();
    const DecodeResult r = decode_program(file);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    const DecodedProgram &p = *r.program;
    EXPECT_EQ(p.name, "P003");
    EXPECT_EQ(p.playPeriodFlag, 0);
    EXPECT_FALSE(p.frame);
    EXPECT_EQ(p.areaCount, 1);
    ASSERT_EQ(p.areas.size(), 1u);
    const DecodedArea &a = p.areas[0];
    EXPECT_EQ(a.offset, 23u);
    EXPECT_EQ(a.bodyLength, 35u);
    EXPECT_EQ(a.x, 4);
    EXPECT_EQ(a.y, 3);
    EXPECT_EQ(a.width, 16);
    EXPECT_EQ(a.height, 2);
    ASSERT_EQ(a.pages.size(), 1u);
    EXPECT_EQ(a.pages[0].effect(), 1);
    EXPECT_EQ(a.pages[0].pageWidth(), 16);

    Rgb canvas{32, 8, std::vector<uint32_t>(32 * 8, 0)};
    paint_area_page(canvas, kOneColour, a, 0);
    EXPECT_EQ(canvas.at(4, 3), 0xFF0000u);
    EXPECT_EQ(canvas.at(5, 3), 0u);
    EXPECT_EQ(canvas.at(3, 3), 0u);
    std::size_t lit = 0;
    for (const uint32_t px : canvas.pixels)
        lit += px != 0;
    EXPECT_EQ(lit, 1u);
}

TEST(ProgramDecoder, FindsFrameStripsThatCarryNoLength) {
    ByteWriter f;
    f.bytes(header("P004"));
    f.u8(0);
    // A program frame whose first byte is 0, as the host gave it, with a 4-byte strip.
    f.bytes(hex("00 05 06 07 08 0900")).bytes(hex("00 FF 7F 00"));
    f.u8(0).u8(1);
    // An area of 20 x 8 at x 0 with a frame strip 8 pixels long and 2 high (one byte a row):
    // pages are 16 x 4 at column 2, so rows are padded 2 + 6, three bytes each.
    const std::vector<uint8_t> page(12, 0xFF);
    f.u32(18 + 2 + 17 + 12);
    f.bytes(hex("00 0000 0000 1400 0800")).bytes(hex("01 01 02 03 04 0500")).bytes(hex("0F F0"));
    f.u16(1).u32(13 + 12).bytes(hex("00 00 00 00 0000 00 1000 00000000")).bytes(page);
    auto file = f.take();
    close_with_crc(file);

    const DecodeResult r = decode_program(file);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    const DecodedProgram &p = *r.program;
    EXPECT_TRUE(p.playPeriods.empty());
    ASSERT_TRUE(p.frame);
    EXPECT_EQ(p.frame->header[0], 0);
    EXPECT_EQ(p.frame->strip.size(), 4u);
    ASSERT_EQ(p.areas.size(), 1u);
    ASSERT_TRUE(p.areas[0].frame);
    EXPECT_EQ(p.areas[0].frame->strip.size(), 2u);
    const auto rect = draw_rect(kOneColour, p.areas[0]);
    ASSERT_TRUE(rect);
    EXPECT_EQ(rect->thickness, 2);
    EXPECT_EQ(rect->left, 2);
    EXPECT_EQ(rect->top, 2);
    EXPECT_EQ(rect->width, 16);
    EXPECT_EQ(rect->height, 4);
}

TEST(ProgramDecoder, CountsPlayPeriodsByWhatFollowsThem) {
    ByteWriter f;
    f.bytes(header("P005"));
    f.u8(1).bytes(hex("010203040506 111213141516 212223242526"));
    f.u8(0).u8(0).u8(0);
    auto file = f.take();
    close_with_crc(file);
    const DecodeResult r = decode_program(file);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->playPeriods.size(), 3u);
    EXPECT_EQ(r.program->playPeriods[2],
              (std::array<uint8_t, 6>{0x21, 0x22, 0x23, 0x24, 0x25, 0x26}));
    EXPECT_TRUE(r.program->areas.empty());
}

TEST(ProgramDecoder, RejectsDamagedFilesWithTheOffset) {
    auto file = one_area_file();
    auto flipped = file;
    flipped[60] ^= 0x10; // a pixel byte; the CRC no longer fits
    DecodeResult r = decode_program(flipped);
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error->offset, flipped.size() - 4);

    // A page record that claims more than its area holds, with a CRC that fits.
    auto broken = std::vector<uint8_t>(file.begin(), file.end() - 4);
    broken[23 + 4 + 12] = 13 + 7;
    close_with_crc(broken);
    r = decode_program(broken);
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error->offset, 23u + 4 + 12) << r.error->what;

    // An area block longer than the file, at the first block.
    broken = std::vector<uint8_t>(file.begin(), file.end() - 4);
    broken[23] = 0xF0;
    close_with_crc(broken);
    r = decode_program(broken);
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error->offset, 23u) << r.error->what;

    r = decode_program(std::vector<uint8_t>(26, 0));
    ASSERT_FALSE(r.ok());
    EXPECT_EQ(r.error->offset, 26u);
}

TEST(ProgramDecoder, PixelLayoutsOfEveryScreenKind) {
    // Words of 32 positions, low byte first: a lit first pixel is bit 7 of the fourth byte.
    const ScreenMode words{32, 1, 1, 4, 1};
    auto img = decode_pixels(words, hex("FF FF FF 7F"), 0, 32, 1);
    ASSERT_TRUE(img);
    EXPECT_EQ(img->at(0, 0), 0xFF0000u);
    EXPECT_EQ(img->at(1, 0), 0u);

    // Two colours in bytes: plane 2 first. Plane 1 is red when doubleColor is 1.
    ScreenMode two{8, 1, 2, 0, 1};
    img = decode_pixels(two, hex("FF 7F"), 0, 8, 1);
    EXPECT_EQ(img->at(0, 0), 0xFF0000u);
    img = decode_pixels(two, hex("7F 7F"), 0, 8, 1);
    EXPECT_EQ(img->at(0, 0), 0xFFFF00u);
    two.doubleColor = 2;
    img = decode_pixels(two, hex("FF 7F"), 0, 8, 1);
    EXPECT_EQ(img->at(0, 0), 0x00FF00u);

    // 5-6-5 with blue on top: white is FF FF; red 200 went through the gamma to the word 19.
    const ScreenMode full{2, 1, 4, 3, 1};
    img = decode_pixels(full, hex("FF FF 13 00"), 0, 2, 1);
    ASSERT_TRUE(img);
    EXPECT_EQ(img->at(0, 0) & 0xF0F0F0u, 0xF0F0F0u);
    EXPECT_NEAR(static_cast<double>(img->at(1, 0) >> 16), 200.0, 6.0);
    EXPECT_EQ(img->at(1, 0) & 0xFFFFu, 0u);

    // A byte count that does not fit the screen kind is refused.
    EXPECT_FALSE(decode_pixels(words, hex("FF FF FF"), 0, 32, 1));
    EXPECT_EQ(encoded_page_size(ScreenMode{0, 0, 1, 0, 1}, 5, 20, 1), 4u);
    EXPECT_EQ(encoded_page_size(ScreenMode{0, 0, 4, 0, 1}, 0, 20, 4), 0u);

    // A full-colour screen of mode 4 carries no pixel bytes: a page is dark, and a size the file
    // makes up stops at the screen (a fuzzed G6 clock background once asked for 5.9 GB).
    img = decode_pixels(ScreenMode{96, 48, 4, 4, 1}, {}, 0, 65535, 22616);
    ASSERT_TRUE(img);
    EXPECT_EQ(img->width, 96u);
    EXPECT_EQ(img->height, 48u);
    EXPECT_EQ(std::count(img->pixels.begin(), img->pixels.end(), 0u), 96 * 48);
}

} // namespace
} // namespace zel::sim
