#include "render/picture.h"

#include "render_test_support.h"

#include "support/capture.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>

namespace zel {
namespace {

// Premultiplied ARGB32 values as cairo keeps them.
constexpr uint32_t kRed = 0xFFFF0000;
constexpr uint32_t kGreen = 0xFF00FF00;
constexpr uint32_t kBlue = 0xFF0000FF;
constexpr uint32_t kWhite = 0xFFFFFFFF;

using Fill = std::function<uint32_t(int x, int y)>;

// Writes a w × h PNG whose pixel (x, y) is fill(x, y).
void write_png(const std::string &path, int w, int h, const Fill &fill) {
    cairo_surface_t *s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
    cairo_surface_flush(s);
    unsigned char *data = cairo_image_surface_get_data(s);
    const int stride = cairo_image_surface_get_stride(s);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const uint32_t v = fill(x, y);
            std::memcpy(data + y * stride + x * 4, &v, 4);
        }
    }
    cairo_surface_mark_dirty(s);
    ASSERT_EQ(cairo_surface_write_to_png(s, path.c_str()), CAIRO_STATUS_SUCCESS);
    cairo_surface_destroy(s);
}

// Four equal quadrants, top left, top right, bottom left, bottom right.
Fill quadrants(int w, int h, uint32_t tl, uint32_t tr, uint32_t bl, uint32_t br) {
    return [=](int x, int y) {
        if (y < h / 2) return x < w / 2 ? tl : tr;
        return x < w / 2 ? bl : br;
    };
}

uint32_t pixel(const std::vector<uint8_t> &page, int width, int x, int y) {
    uint32_t v;
    std::memcpy(&v, page.data() + (static_cast<std::size_t>(y) * width + x) * 4, 4);
    return v;
}

// Every pixel of the rectangle [x0, x1) × [y0, y1) has the value.
void expect_region(const std::vector<uint8_t> &page, int width, int x0, int y0, int x1, int y1,
                   uint32_t value) {
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) {
            ASSERT_EQ(pixel(page, width, x, y), value) << "at " << x << "," << y;
        }
    }
}

std::string file_bytes(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(PictureTest, EqualSizeIsCopiedAsItStandsAlphaIncluded) {
    // Column 0 half-transparent white (premultiplied as cairo keeps it), then a transparent
    // row and an opaque red one.
    write_png("equal.png", 3, 2, [](int x, int y) {
        return x == 0 ? 0x80808080U : y == 0 ? 0U : kRed;
    });
    const auto page = paintPicture("equal.png", 3, 2);
    ASSERT_EQ(page.size(), 3U * 2U * 4U);
    expect_region(page, 3, 0, 0, 1, 2, 0x80808080U);
    expect_region(page, 3, 1, 0, 3, 1, 0U);
    expect_region(page, 3, 1, 1, 3, 2, kRed);
}

TEST(PictureTest, SmallerPictureIsEnlargedToFillThePage) {
    // 8 × 8 quadrants on a 16 × 16 page: each quadrant covers 8 × 8 page pixels. The filter
    // blends at the quadrant borders and the page edge, so the quadrants' inner 4 × 4 count.
    write_png("half.png", 8, 8, quadrants(8, 8, kRed, kGreen, kBlue, kWhite));
    const auto page = paintPicture("half.png", 16, 16);
    ASSERT_EQ(page.size(), 16U * 16U * 4U);
    expect_region(page, 16, 2, 2, 6, 6, kRed);
    expect_region(page, 16, 10, 2, 14, 6, kGreen);
    expect_region(page, 16, 2, 10, 6, 14, kBlue);
    expect_region(page, 16, 10, 10, 14, 14, kWhite);
}

TEST(PictureTest, LargerPictureIsReducedAndTheFileIsLeftAlone) {
    // Twice as wide, same height: reduced to the page's width.
    write_png("wide.png", 32, 8, quadrants(32, 8, kBlue, kWhite, kGreen, kRed));
    const std::string before = file_bytes("wide.png");
    const auto page = paintPicture("wide.png", 16, 8);
    ASSERT_EQ(page.size(), 16U * 8U * 4U);
    expect_region(page, 16, 2, 1, 6, 3, kBlue);
    expect_region(page, 16, 10, 1, 14, 3, kWhite);
    expect_region(page, 16, 2, 5, 6, 7, kGreen);
    expect_region(page, 16, 10, 5, 14, 7, kRed);
    EXPECT_EQ(file_bytes("wide.png"), before);
}

TEST(PictureTest, WiderButLowerPictureShowsOnlyTheUpperHalfOfItsStretch) {
    // 32 × 8 on a 16 × 16 page: factors 2 across and 0.5 down. The reduction happens inside
    // the picture's own 8 rows, so only the stretched top half (the picture's upper quadrants,
    // red and blue) arrives, in page rows 0 to 7; rows 8 to 15 stay untouched and dark. (The
    // reduction reads rows it has already written, so red and blue do not split evenly below
    // the first row.)
    write_png("wide_low.png", 32, 8, quadrants(32, 8, kRed, kBlue, kGreen, kWhite));
    const auto page = paintPicture("wide_low.png", 16, 16);
    ASSERT_EQ(page.size(), 16U * 16U * 4U);
    EXPECT_EQ(pixel(page, 16, 0, 0), kRed);
    EXPECT_EQ(pixel(page, 16, 15, 0), kBlue);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 16; ++x) {
            const uint32_t v = pixel(page, 16, x, y);
            EXPECT_TRUE(v == kRed || v == kBlue) << std::hex << v << " at " << x << "," << y;
        }
    }
    expect_region(page, 16, 0, 8, 16, 16, 0);
}

TEST(PictureTest, FileThatIsNoPictureGivesABlankPageSilently) {
    std::ofstream("text.png") << "not a picture\n";
    test::StdoutCapture capture;
    const auto page = paintPicture("text.png", 8, 4);
    std::string png;
    previewPicture("text.png", 8, 4, png);
    EXPECT_EQ(capture.text(), "");
    EXPECT_EQ(page, std::vector<uint8_t>(8 * 4 * 4, 0));
    const test::DecodedPng preview = test::decodePng(png);
    EXPECT_EQ(preview.width, 8);
    EXPECT_EQ(preview.height, 4);
    EXPECT_EQ(preview.bytes(), page);
}

TEST(PictureTest, PreviewIsThePaintedPageAsPng) {
    write_png("equal.png", 4, 2, quadrants(4, 2, kRed, kGreen, kBlue, kWhite));
    std::string png = "kept";
    previewPicture("equal.png", 4, 2, png);
    ASSERT_EQ(png.substr(0, 4), "kept");
    const test::DecodedPng preview = test::decodePng(png.substr(4));
    EXPECT_EQ(preview.width, 4);
    EXPECT_EQ(preview.bytes(), paintPicture("equal.png", 4, 2));

    // A page without pixels: no bitmap, and no PNG can be written.
    EXPECT_TRUE(paintPicture("equal.png", 0, 2).empty());
    std::string none;
    previewPicture("equal.png", -1, 2, none);
    EXPECT_EQ(none, "");
}

} // namespace
} // namespace zel
