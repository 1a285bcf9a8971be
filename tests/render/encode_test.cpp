#include "render/encode.h"

#include "render/area.h"

#include "support/hex.h"
#include "support/pixel_reference.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

namespace zel {
namespace {

using test::hex;

// A page of ARGB32 pixels as cairo leaves it: blue, green, red, alpha.
struct Page {
    uint32_t width;
    uint32_t height;
    std::vector<uint8_t> bytes;

    Page(uint32_t w, uint32_t h) : width(w), height(h), bytes(std::size_t{w} * h * 4, 0) {}
    void set(uint32_t col, uint32_t row, uint8_t r, uint8_t g, uint8_t b) {
        const std::size_t at = (std::size_t{row} * width + col) * 4;
        bytes[at] = b;
        bytes[at + 1] = g;
        bytes[at + 2] = r;
        bytes[at + 3] = 0xFF;
    }
    void fill(uint8_t r, uint8_t g, uint8_t b) {
        for (uint32_t row = 0; row < height; ++row)
            for (uint32_t col = 0; col < width; ++col)
                set(col, row, r, g, b);
    }
};

class EncodeTest : public ::testing::Test {
  protected:
    std::vector<uint8_t> encode(const Page &page, uint32_t x, int32_t colour, uint32_t mode,
                                int32_t doubleColor = 1) {
        std::vector<uint8_t> out{0xEE}; // replaced, never appended to
        encodePixels(page.bytes, out, x, page.width, page.height, {colour, mode, doubleColor},
                     gamma());
        return out;
    }
    GammaTables gamma() const { return area_gamma(m_area); }

  private:
    TKarea m_area;
};

TEST_F(EncodeTest, SingleColourPlaneIsActiveLowMostSignificantBitFirst) {
    Page dark(16, 3);
    EXPECT_EQ(encode(dark, 0, 1, 0), std::vector<uint8_t>(2 * 3, 0xFF));

    Page one(16, 2);
    one.set(0, 0, 255, 255, 255);
    EXPECT_EQ(encode(one, 0, 1, 0), hex("7F FF FF FF"));

    // Any lit channel lights the single plane.
    Page channels(8, 1);
    channels.set(1, 0, 255, 0, 0);
    channels.set(3, 0, 0, 255, 0);
    channels.set(7, 0, 0, 0, 255);
    EXPECT_EQ(encode(channels, 0, 1, 0), hex("AE"));
}

TEST_F(EncodeTest, ChannelIsLitFrom97InEveryChannel) {
    struct Case {
        uint8_t r, g, b;
        uint8_t expected;
    };
    const Case cases[] = {
        {96, 0, 0, 0xFF}, {97, 0, 0, 0x7F}, {0, 96, 0, 0xFF},   {0, 97, 0, 0x7F},
        {0, 0, 96, 0xFF}, {0, 0, 97, 0x7F}, {96, 96, 96, 0xFF}, {128, 0, 0, 0x7F},
    };
    for (const Case &c : cases) {
        Page page(8, 1);
        page.set(0, 0, c.r, c.g, c.b);
        EXPECT_EQ(encode(page, 0, 1, 0), std::vector<uint8_t>{c.expected})
            << int(c.r) << "," << int(c.g) << "," << int(c.b);
    }
    // Alpha plays no part: a transparent pixel with lit channels is lit.
    Page alpha(8, 1);
    alpha.bytes = {0, 0, 200, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 0,
                   0, 0, 0,   0, 0, 0, 0, 0,   0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(encode(alpha, 0, 1, 0), hex("7F"));
}

TEST_F(EncodeTest, RowsArePaddedToTheScreenGridWithDarkPositions) {
    // x 5, width 20, unit 8: five dark positions, twenty pixels, seven dark positions.
    Page lit(20, 2);
    lit.fill(255, 255, 255);
    EXPECT_EQ(encode(lit, 5, 1, 0), hex("F8 00 00 7F  F8 00 00 7F"));
    Page dark(20, 2);
    EXPECT_EQ(encode(dark, 5, 1, 0), std::vector<uint8_t>(8, 0xFF));

    // Only the grid counts, not the area: x 13 has the same padding as x 5.
    EXPECT_EQ(encode(lit, 13, 1, 0), hex("F8 00 00 7F  F8 00 00 7F"));

    // Mode 4 packs 32 positions into a little-endian word, the first in the top bit.
    Page first(32, 1);
    first.set(0, 0, 255, 0, 0);
    EXPECT_EQ(encode(first, 0, 1, 4), hex("FF FF FF 7F"));
    EXPECT_EQ(encode(lit, 5, 1, 4), hex("7F 00 00 F8  7F 00 00 F8"));
    // Mode 4 pads to 32: a row at x 40 of width 8 becomes one word with the pixels in its
    // second byte of positions.
    Page eight(8, 1);
    eight.fill(255, 255, 255);
    EXPECT_EQ(encode(eight, 40, 1, 4), hex("FF FF 00 FF"));
}

TEST_F(EncodeTest, TwoColourPlaneOrderFollowsDoubleColor) {
    // Mode 0 writes plane 2's byte before plane 1's.
    struct Case {
        uint8_t r, g, b;
        int32_t doubleColor;
        const char *expected;
    };
    const Case cases[] = {
        {0, 0, 255, 1, "FF 7F"},     // blue alone shows in plane 1
        {255, 255, 255, 1, "7F 7F"}, // white lights both
        {255, 0, 0, 1, "FF 7F"},     {0, 255, 0, 1, "7F FF"},
        {0, 255, 255, 1, "7F FF"}, // blue is ignored once green is lit
        {255, 0, 255, 1, "FF 7F"},   {0, 0, 255, 2, "7F FF"},
        {0, 255, 0, 2, "FF 7F"},     {255, 0, 0, 0, "7F FF"},
        {255, 255, 0, 0, "7F 7F"},
    };
    for (const Case &c : cases) {
        Page page(8, 1);
        page.set(0, 0, c.r, c.g, c.b);
        EXPECT_EQ(encode(page, 0, 2, 0, c.doubleColor), hex(c.expected))
            << int(c.r) << "," << int(c.g) << "," << int(c.b) << " doubleColor " << c.doubleColor;
    }
    // Mode 4 writes whole planes, plane 1 first.
    Page blue(32, 1);
    blue.set(0, 0, 0, 0, 255);
    EXPECT_EQ(encode(blue, 0, 2, 4, 1), hex("FF FF FF 7F  FF FF FF FF"));
}

TEST_F(EncodeTest, ThreeColourPlanesAreRedGreenBlue) {
    Page page(8, 2);
    page.set(0, 0, 255, 0, 0);
    page.set(1, 0, 0, 255, 0);
    page.set(2, 0, 0, 0, 255);
    page.set(7, 1, 255, 255, 255);
    EXPECT_EQ(encode(page, 0, 3, 0), hex("7F BF DF  FE FE FE"));

    Page wide(32, 2);
    wide.set(0, 0, 255, 0, 0);
    wide.set(1, 1, 0, 0, 255);
    EXPECT_EQ(encode(wide, 0, 3, 4),
              hex("FF FF FF 7F  FF FF FF FF"    // plane 1
                  "FF FF FF FF  FF FF FF FF"    // plane 2
                  "FF FF FF FF  FF FF FF BF")); // plane 3
}

TEST_F(EncodeTest, FullColourEncodings) {
    Page page(2, 1);
    page.set(0, 0, 255, 255, 255);
    page.set(1, 0, 200, 0, 0);
    // 5-6-5 through gamma: white reaches entry 254 and still fills every bit; red 200 becomes
    // 156, and 156 / 8 = 19 in the low bits.
    EXPECT_EQ(encode(page, 0, 4, 3), hex("FF FF  13 00"));
    // x plays no part in full colour.
    EXPECT_EQ(encode(page, 7, 4, 3), hex("FF FF  13 00"));

    Page rgb(2, 1);
    rgb.set(0, 0, 0x11, 0x22, 0x33);
    rgb.set(1, 0, 0x44, 0x55, 0x66);
    EXPECT_EQ(encode(rgb, 0, 4, 5), hex("11 22 33  44 55 66"));
    EXPECT_EQ(encode(rgb, 0, 4, 1), hex("00 00  00 00"));
}

TEST_F(EncodeTest, CombinationsWithoutALayoutEncodeToNothing) {
    Page page(8, 2);
    page.fill(255, 255, 255);
    EXPECT_TRUE(encode(page, 0, 4, 0).empty());
    EXPECT_TRUE(encode(page, 0, 4, 4).empty());
    EXPECT_TRUE(encode(page, 0, 4, 2).empty());
    for (int32_t colour : {1, 2, 3}) {
        for (uint32_t mode : {1U, 3U, 5U}) {
            EXPECT_TRUE(encode(page, 0, colour, mode).empty()) << colour << "/" << mode;
        }
    }
    EXPECT_TRUE(encode(page, 0, 0, 0).empty());
    EXPECT_TRUE(encode(page, 0, 5, 0).empty());
    EXPECT_TRUE(encode(page, 0, -1, 4).empty());
}

TEST_F(EncodeTest, PagesBeyondThePlanesFail) {
    std::vector<uint8_t> out;
    auto run = [&](const Page &page, uint32_t x, int32_t colour, uint32_t mode) {
        out.assign(3, 0xEE);
        encodePixels(page.bytes, out, x, page.width, page.height, {colour, mode, 1}, gamma());
    };

    const Page limit(2048, 2048); // exactly 4,194,304 positions
    run(limit, 0, 1, 0);
    EXPECT_EQ(out.size(), 4194304U / 8);

    const Page big(2100, 2000);
    try {
        run(big, 0, 1, 0);
        ADD_FAILURE() << "no failure";
    } catch (const std::out_of_range &e) {
        EXPECT_STREQ(e.what(), "invalid bitset<N> position");
    }
    EXPECT_TRUE(out.empty());
    // The planes fill before the mode is looked at, so a mode without a layout fails as well.
    EXPECT_THROW(run(big, 0, 3, 5), std::out_of_range);
    // The padding counts: one position of offset pushes an exact page over.
    EXPECT_THROW(run(limit, 1, 2, 0), std::out_of_range);
    // Full colour uses no planes.
    run(big, 0, 4, 5);
    EXPECT_EQ(out.size(), 2100U * 2000U * 3U);
}

TEST_F(EncodeTest, OutputIsSizedToTheResultNotToTheBitmap) {
    // A one-pixel area at x 3 in three colours with 32-position rows: 12 bytes per row,
    // three times the 4 bytes of its bitmap.
    Page tiny(1, 2);
    tiny.set(0, 1, 255, 255, 255);
    EXPECT_EQ(encode(tiny, 3, 3, 4),
              hex("FF FF FF FF  FF FF FF EF"    // plane 1, position 3 of row 2
                  "FF FF FF FF  FF FF FF EF"    // plane 2
                  "FF FF FF FF  FF FF FF EF")); // plane 3
}

TEST_F(EncodeTest, MissingPixelsOfAShortBitmapReadAsDark) {
    Page page(8, 2);
    page.fill(255, 255, 255);
    std::vector<uint8_t> out;
    const std::span<const uint8_t> first_row_and_a_half(page.bytes.data(), 12 * 4);
    encodePixels(first_row_and_a_half, out, 0, 8, 2, {1, 0, 1}, gamma());
    EXPECT_EQ(out, hex("00 0F"));
    encodePixels({}, out, 0, 2, 1, {4, 5, 1}, gamma());
    EXPECT_EQ(out, hex("00 00 00  00 00 00"));
}

TEST(PixelReadTest, ReadPixelAndScanPixelRowAddressing) {
    // 4 × 2 pixels, each pixel's blue byte numbering it.
    std::vector<uint8_t> pixels;
    for (uint8_t i = 0; i < 8; ++i) {
        pixels.insert(pixels.end(),
                      {i, static_cast<uint8_t>(0x10 + i), static_cast<uint8_t>(0x20 + i), 0xFF});
    }
    uint8_t r = 0, g = 0, b = 0;
    readPixel(pixels, 1, 1, 4, &r, &g, &b);
    EXPECT_EQ(std::vector<uint8_t>({r, g, b}), hex("25 15 05"));
    readPixel(pixels, 0, 2, 4, &r, &g, &b); // beyond the bitmap
    EXPECT_EQ(std::vector<uint8_t>({r, g, b}), hex("00 00 00"));

    // The last column doubles as the row length: row 1 with lastX 3 starts at pixel 3.
    std::vector<uint8_t> row(12, 0xEE);
    EXPECT_EQ(scanPixelRow(pixels, row, 1, 3, 0), 12U);
    EXPECT_EQ(row, hex("03 13 23  04 14 24  05 15 25  06 16 26"));

    std::vector<uint8_t> untouched(12, 0xEE);
    EXPECT_EQ(scanPixelRow(pixels, untouched, 0, 3, 1), 0U);
    EXPECT_EQ(untouched, std::vector<uint8_t>(12, 0xEE));

    std::vector<uint8_t> shorter(7, 0xEE);
    EXPECT_EQ(scanPixelRow(pixels, shorter, 0, 3, 0), 6U);
    EXPECT_EQ(shorter, hex("00 10 20  01 11 21  EE"));
}

// The word-wise encoder against the position-by-position reference over random pages, offsets
// and every setting. Channel values cluster around the threshold so that every combination of
// lit channels occurs.
TEST_F(EncodeTest, MatchesThePositionByPositionEncoder) {
    std::mt19937 rng(20240607);
    const uint8_t values[] = {0, 96, 97, 255};
    auto pick = [&](uint32_t n) { return std::uniform_int_distribution<uint32_t>(0, n)(rng); };
    test::ReferenceEncoder reference;
    const GammaTables tables = gamma();
    int compared = 0;
    for (int round = 0; round < 40; ++round) {
        const uint32_t width = round < 4 ? static_cast<uint32_t>(round) : pick(80);
        const uint32_t height = pick(4);
        const uint32_t x = round % 3 == 0 ? 0 : pick(70);
        std::vector<uint8_t> pixels(std::size_t{width} * height * 4);
        const bool extremes = round % 2 == 0;
        for (auto &byte : pixels) {
            byte = extremes ? values[pick(3)] : static_cast<uint8_t>(pick(255));
        }
        for (int32_t colour = 0; colour <= 5; ++colour) {
            for (uint32_t mode = 0; mode <= 5; ++mode) {
                for (int32_t doubleColor : {0, 1, 2}) {
                    std::vector<uint8_t> out;
                    encodePixels(pixels, out, x, width, height, {colour, mode, doubleColor},
                                 tables);
                    const auto expected =
                        reference.encode(pixels, x, width, height, colour, mode, doubleColor,
                                         tables.red, tables.green, tables.blue);
                    ASSERT_EQ(out, expected)
                        << "width " << width << " height " << height << " x " << x << " colour "
                        << colour << " mode " << mode << " doubleColor " << doubleColor;
                    ++compared;
                }
            }
        }
    }
    EXPECT_EQ(compared, 40 * 6 * 6 * 3);
}

} // namespace
} // namespace zel
