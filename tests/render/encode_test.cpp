#include "render/encode.h"

#include "render/area.h"
#include "render/plane_packer.h"

#include "support/hex.h"
#include "support/pixel_reference.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

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

TEST_F(EncodeTest, PlanesAreActiveLowFirstPositionInTheTopBit) {
    EXPECT_EQ(encode(Page(16, 3), 0, 1, 0), std::vector<uint8_t>(2 * 3, 0xFF));

    Page page(16, 2);
    page.set(0, 0, 255, 255, 255);
    EXPECT_EQ(encode(page, 0, 1, 0), hex("7F FF FF FF"));

    // Lit from 97 on.
    Page red(8, 1);
    red.set(0, 0, 96, 0, 0);
    EXPECT_EQ(encode(red, 0, 1, 0), hex("FF"));
    red.set(0, 0, 97, 0, 0);
    EXPECT_EQ(encode(red, 0, 1, 0), hex("7F"));

    // Words: 32 positions little-endian, so the first position is bit 7 of the fourth byte.
    Page first(32, 1);
    first.set(0, 0, 255, 0, 0);
    EXPECT_EQ(encode(first, 0, 1, 4), hex("FF FF FF 7F"));
}

TEST_F(EncodeTest, RowsArePaddedToTheScreenGridWithDarkPositions) {
    // x 5, width 20, unit 8: five dark positions, twenty pixels, seven dark positions. x 13
    // lies the same way on the grid.
    Page lit(20, 2);
    for (uint32_t col = 0; col < 20; ++col) {
        lit.set(col, 0, 255, 255, 255);
        lit.set(col, 1, 255, 255, 255);
    }
    EXPECT_EQ(encode(lit, 5, 1, 0), hex("F8 00 00 7F  F8 00 00 7F"));
    EXPECT_EQ(encode(lit, 13, 1, 0), hex("F8 00 00 7F  F8 00 00 7F"));
    EXPECT_EQ(encode(Page(20, 2), 5, 1, 0), std::vector<uint8_t>(8, 0xFF));
    EXPECT_EQ(encode(lit, 5, 1, 4), hex("7F 00 00 F8  7F 00 00 F8"));
}

TEST_F(EncodeTest, TwoColourPlaneOrderFollowsDoubleColor) {
    // Bytes mode writes plane 2's byte first.
    Page page(8, 1);
    page.set(0, 0, 0, 0, 255);
    EXPECT_EQ(encode(page, 0, 2, 0, 1), hex("FF 7F")); // blue alone: plane 1
    EXPECT_EQ(encode(page, 0, 2, 0, 2), hex("7F FF")); // the other order: plane 2
    page.set(0, 0, 0, 255, 255);
    EXPECT_EQ(encode(page, 0, 2, 0, 1), hex("7F FF")); // blue does not count beside green
    page.set(0, 0, 255, 255, 255);
    EXPECT_EQ(encode(page, 0, 2, 0, 1), hex("7F 7F"));
}

TEST_F(EncodeTest, FullColourEncodings) {
    Page page(2, 1);
    page.set(0, 0, 255, 255, 255);
    page.set(1, 0, 200, 0, 0);
    // 5-6-5 through gamma: white reaches entry 254 and still fills every bit; red 200 becomes
    // 156, and 156 / 8 = 19 in the low bits.
    EXPECT_EQ(encode(page, 7, 4, 3), hex("FF FF  13 00"));
    EXPECT_EQ(encode(page, 7, 4, 5), hex("FF FF FF  C8 00 00"));
    EXPECT_TRUE(encode(page, 0, 4, 0).empty());
    EXPECT_TRUE(encode(page, 0, 1, 5).empty());
}

TEST_F(EncodeTest, PagesBeyondThePlanesFailBeforeAnyOutput) {
    std::vector<uint8_t> out;
    const Page limit(2048, 2048); // exactly 4,194,304 positions
    encodePixels(limit.bytes, out, 0, 2048, 2048, {1, 0, 1}, gamma());
    EXPECT_EQ(out.size(), 4194304U / 8);

    const Page big(2100, 2000);
    try {
        encodePixels(big.bytes, out, 0, 2100, 2000, {1, 0, 1}, gamma());
        ADD_FAILURE() << "no failure";
    } catch (const std::out_of_range &e) {
        EXPECT_STREQ(e.what(), "invalid bitset<N> position");
    }
    EXPECT_TRUE(out.empty());
    // The padding counts: one position of offset pushes the exact page over.
    EXPECT_THROW(encodePixels(limit.bytes, out, 1, 2048, 2048, {2, 0, 1}, gamma()),
                 std::out_of_range);
}

TEST_F(EncodeTest, UnsafeInputsStayWithinTheirBuffers) {
    // Width 1 at x 3, three planes of 32-position rows: 12 bytes a row from 4 bytes of bitmap.
    Page tiny(1, 2);
    tiny.set(0, 1, 255, 255, 255);
    EXPECT_EQ(encode(tiny, 3, 3, 4),
              hex("FFFFFFFF FFFFFFEF  FFFFFFFF FFFFFFEF  FFFFFFFF FFFFFFEF"));

    // A bitmap shorter than its size reads as dark where it ends.
    std::vector<uint8_t> out;
    const std::vector<uint8_t> lit_pixels(12 * 4, 0xFF);
    encodePixels(lit_pixels, out, 0, 8, 2, {1, 0, 1}, gamma());
    EXPECT_EQ(out, hex("00 0F"));
}

TEST(PixelReadTest, ScanPixelRowTakesTheLastColumnAsRowLength) {
    // 4 × 2 pixels, each pixel's blue byte numbering it.
    std::vector<uint8_t> pixels;
    for (uint8_t i = 0; i < 8; ++i) {
        pixels.insert(pixels.end(),
                      {i, static_cast<uint8_t>(0x10 + i), static_cast<uint8_t>(0x20 + i), 0xFF});
    }
    // Row 1 with last column 3 starts at pixel 3.
    std::vector<uint8_t> row(12, 0xEE);
    EXPECT_EQ(scanPixelRow(pixels, row, 1, 3, 0), 12U);
    EXPECT_EQ(row, hex("03 13 23  04 14 24  05 15 25  06 16 26"));
    EXPECT_EQ(scanPixelRow(pixels, row, 0, 3, 1), 0U);

    uint8_t r = 0, g = 0, b = 0;
    readPixel(pixels, 0, 2, 4, &r, &g, &b); // beyond the bitmap
    EXPECT_EQ(std::vector<uint8_t>({r, g, b}), hex("00 00 00"));
}

// Every kernel against the position-by-position reference over random pages, offsets and
// every setting. Channel values cluster around the threshold half of the time, so that every
// combination of lit channels occurs.
TEST_F(EncodeTest, MatchesThePositionByPositionEncoder) {
    std::vector<planes::Kernel> kernels;
    for (const auto kernel :
         {planes::Kernel::Portable, planes::Kernel::Avx2, planes::Kernel::Avx512})
        if (planes::kernel_supported(kernel)) kernels.push_back(kernel);

    std::mt19937 rng(20240607);
    const uint8_t values[] = {0, 96, 97, 255};
    auto pick = [&](uint32_t n) { return std::uniform_int_distribution<uint32_t>(0, n)(rng); };
    test::ReferenceEncoder reference;
    const GammaTables tables = gamma();
    int compared = 0;
    // One output buffer per kernel, reused from page to page with whatever it last held.
    std::vector<std::vector<uint8_t>> outs(kernels.size(), std::vector<uint8_t>(7, 0xEE));
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
                    const auto expected =
                        reference.encode(pixels, x, width, height, colour, mode, doubleColor,
                                         tables.red, tables.green, tables.blue);
                    for (std::size_t k = 0; k < kernels.size(); ++k) {
                        const planes::Kernel kernel = kernels[k];
                        std::vector<uint8_t> &out = outs[k];
                        planes::encode_pixels_using(kernel, pixels, out, x, width, height,
                                                    {colour, mode, doubleColor}, tables);
                        ASSERT_EQ(out, expected)
                            << "kernel " << static_cast<int>(kernel) << " width " << width
                            << " height " << height << " x " << x << " colour " << colour
                            << " mode " << mode << " doubleColor " << doubleColor;
                    }
                    ++compared;
                }
            }
        }
    }
    EXPECT_EQ(compared, 40 * 6 * 6 * 3);
}

// A page larger than the core's caches takes the streaming path of the full-colour kernels;
// their output starts wherever the host's buffer does, so every kind of start within a cache
// line is tried.
TEST_F(EncodeTest, LargeFullColourPagesMatchTheReferenceAtEveryOutputStart) {
    constexpr uint32_t width = 1024, height = 300;
    std::mt19937 rng(5);
    std::vector<uint8_t> pixels(std::size_t{width} * height * 4);
    for (auto &byte : pixels)
        byte = static_cast<uint8_t>(rng());
    const GammaTables tables = gamma();
    test::ReferenceEncoder reference;
    for (const uint32_t mode : {3u, 5u}) {
        const auto expected = reference.encode(pixels, 0, width, height, 4, mode, 1, tables.red,
                                               tables.green, tables.blue);
        std::vector<uint8_t> buffer(expected.size() + 64);
        for (const auto kernel : {planes::Kernel::Portable, planes::Kernel::Avx512}) {
            if (!planes::kernel_supported(kernel)) continue;
            for (const std::size_t start : {0, 1, 2, 30, 62, 63}) {
                std::fill(buffer.begin(), buffer.end(), 0xEE);
                uint8_t *out = buffer.data() + start;
                if (mode == 3)
                    planes::pack_565(kernel, pixels.data(), out, pixels.size() / 4, tables);
                else
                    planes::pack_888(kernel, pixels.data(), out, pixels.size() / 4);
                ASSERT_TRUE(std::equal(expected.begin(), expected.end(), out))
                    << "mode " << mode << " kernel " << static_cast<int>(kernel) << " start "
                    << start;
                EXPECT_EQ(out[expected.size()], 0xEE) << "nothing past the output";
            }
        }
    }
}

} // namespace
} // namespace zel
