#include <gtest/gtest.h>

#include <cairo-ft.h>
#include <cairo.h>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "render/area.h"
#include "render/text_painter.h"
#include "render_test_support.h"

namespace zel {
namespace {

using test::kDejaVu;
using test::kWenQuanYi;
using test::ucs2;

// 0x00FF8040 as the canvas stores it: blue, green, red, alpha.
const uint8_t kOrange[4] = {0x40, 0x80, 0xFF, 0xFF};

TextPaintStyle style_of(int32_t width, int32_t height, uint8_t hAlign = 1, uint8_t vAlign = 1) {
    TextPaintStyle style;
    style.drawWidth = width;
    style.drawHeight = height;
    style.fontPixelSize = 16.0;
    style.fontColor = 0x00FF8040;
    style.horizontalAlign = hAlign;
    style.verticalAlign = vAlign;
    return style;
}

struct Area : TKarea {
    explicit Area(const char *path) { fontPath = path; }
};

// Every pixel is 0 or the text colour; returns how many are the colour.
int lit_pixels(const PageBitmap &bitmap) {
    int lit = 0;
    for (std::size_t i = 0; i < bitmap.size(); i += 4) {
        const bool dark =
            bitmap[i] == 0 && bitmap[i + 1] == 0 && bitmap[i + 2] == 0 && bitmap[i + 3] == 0;
        const bool text = std::memcmp(&bitmap[i], kOrange, 4) == 0;
        EXPECT_TRUE(dark || text) << "pixel " << i / 4;
        lit += text ? 1 : 0;
    }
    return lit;
}

// A W-pixel-wide strip of rows [from, from + rows) of a bitmap.
PageBitmap rows_of(const PageBitmap &bitmap, int32_t width, int32_t from, int32_t rows) {
    const auto stride = static_cast<std::size_t>(width) * 4;
    return PageBitmap(bitmap.begin() + static_cast<std::ptrdiff_t>(stride * from),
                      bitmap.begin() + static_cast<std::ptrdiff_t>(stride * (from + rows)));
}

// Columns [from, from + cols) of every row.
PageBitmap columns_of(const PageBitmap &bitmap, int32_t width, int32_t from, int32_t cols) {
    PageBitmap out;
    const auto stride = static_cast<std::size_t>(width) * 4;
    for (std::size_t row = 0; row < bitmap.size() / stride; ++row) {
        const auto begin = bitmap.begin() + static_cast<std::ptrdiff_t>(row * stride + from * 4);
        out.insert(out.end(), begin, begin + cols * 4);
    }
    return out;
}

int first_lit_row(const PageBitmap &bitmap, int32_t width) {
    for (std::size_t i = 0; i < bitmap.size(); i += 4) {
        if (bitmap[i + 3] != 0) {
            return static_cast<int>(i / 4 / static_cast<std::size_t>(width));
        }
    }
    return -1;
}

// ascent + descent of DejaVu Sans at 16 pixels, measured here without the library.
double dejavu_line_height() {
    FT_Library library;
    FT_Init_FreeType(&library);
    FT_Face face;
    FT_New_Face(library, kDejaVu, 0, &face);
    cairo_surface_t *surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
    cairo_t *cr = cairo_create(surface);
    cairo_font_face_t *cairoFace = cairo_ft_font_face_create_for_ft_face(face, 0);
    cairo_set_font_face(cr, cairoFace);
    cairo_set_font_size(cr, 16.0);
    cairo_font_extents_t fe;
    cairo_font_extents(cr, &fe);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
    cairo_font_face_destroy(cairoFace);
    return fe.ascent + fe.descent;
}

TEST(TextPainter, EveryPaintedPixelIsZeroOrTheTextColour) {
    Area latin(kDejaVu);
    Area chinese(kWenQuanYi);
    TKarea family; // resolved by the font system
    family.fontName = "DejaVu Sans";
    const std::string zhongguo = "\x2D\x4E\xFD\x56"; // UCS-2LE of the two characters
    for (const uint8_t synth : {0, 1}) {
        TextPaintStyle style = style_of(64, 40, 0, 0);
        style.fontBold = synth;
        style.fontItalic = synth;
        PageBitmaps pages;
        paintLinesPage(latin, style, {ucs2("Agj"), ucs2("W|")}, pages);
        paintLinesPage(chinese, style, {zhongguo}, pages);
        paintLinesPage(family, style, {ucs2("Agj")}, pages);
        paintOneLine(chinese, style, zhongguo, pages);
        paintRollSlice(chinese, style, "\xD6\xD0\xB9\xFA", 3.0, pages); // GBK of the same
        paintLinesAtOffset(latin, style, {ucs2("Ag"), ucs2("jW")}, -5.0, pages);
        ASSERT_EQ(pages.size(), 6u);
        for (const PageBitmap &page : pages) {
            ASSERT_EQ(page.size(), 64u * 40 * 4);
            EXPECT_GT(lit_pixels(page), 20);
        }
    }
}

TEST(TextPainter, PreviewsArePngsOfTheSamePlacing) {
    Area area(kDejaVu);
    const TextPaintStyle style = style_of(50, 20, 2, 0);
    PageBitmaps pages;
    paintOneLine(area, style, ucs2("Hi"), pages);
    std::string png = "prefix";
    previewOneLine(area, style, ucs2("Hi"), png);
    ASSERT_EQ(png.substr(0, 10), "prefix\x89PNG");
    const test::DecodedPng one = test::decodePng(png.substr(6));
    EXPECT_EQ(one.bytes(), pages[0]);
    EXPECT_EQ(one.width, 50);
    EXPECT_EQ(one.height, 20);

    std::string lines;
    previewLinesPage(area, style, {ucs2("A"), ucs2("B")}, lines);
    const test::DecodedPng preview = test::decodePng(lines);
    EXPECT_EQ(preview.width, 50);
    EXPECT_GT(lit_pixels(preview.bytes()), 10);
}

TEST(TextPainter, OnlyTheLinesPageLeavesItsLastPageInZeroPng) {
    Area area(kDejaVu);
    const TextPaintStyle style = style_of(40, 20);
    std::filesystem::remove("0.png");
    PageBitmaps pages;
    paintOneLine(area, style, ucs2("x"), pages);
    paintRollSlice(area, style, "x", 0, pages);
    paintLinesAtOffset(area, style, {ucs2("x")}, 0, pages);
    EXPECT_FALSE(std::filesystem::exists("0.png"));

    paintLinesPage(area, style, {ucs2("1")}, pages);
    paintLinesPage(area, style, {ucs2("2")}, pages);
    std::ifstream in("0.png", std::ios::binary);
    const test::DecodedPng file = test::decodePng({std::istreambuf_iterator<char>(in), {}});
    ASSERT_EQ(file.width, 40);
    ASSERT_EQ(file.height, 20);
    EXPECT_EQ(file.bytes(), pages.back()); // the second page's
    EXPECT_NE(pages[pages.size() - 2], pages.back());
}

TEST(TextPainter, HorizontalAlignZeroCentresPagesButLeftAlignsSingleLines) {
    Area area(kDejaVu);
    auto paint_page = [&](uint8_t align, const std::string &line) {
        PageBitmaps pages;
        paintLinesPage(area, style_of(80, 20, align, 1), {ucs2(line)}, pages);
        return pages[0];
    };
    auto paint_line = [&](uint8_t align) {
        PageBitmaps pages;
        paintOneLine(area, style_of(80, 20, align, 1), ucs2("ab"), pages);
        return pages[0];
    };
    EXPECT_EQ(paint_page(0, "ab"), paint_page(2, "ab"));
    EXPECT_NE(paint_page(0, "ab"), paint_page(1, "ab"));
    EXPECT_EQ(paint_page(5, "ab"), paint_page(0, "ab")); // other values centre as well
    EXPECT_EQ(paint_line(0), paint_line(1));
    EXPECT_EQ(paint_line(0), paint_line(7));
    EXPECT_NE(paint_line(0), paint_line(2));
    EXPECT_NE(paint_line(2), paint_line(3));

    // Wider than the page: 0, 2 and 3 fall back to x 0; other values still centre and so start
    // left of the page.
    const std::string wide = "WWWWWWWWWWWW";
    EXPECT_EQ(paint_page(0, wide), paint_page(1, wide));
    EXPECT_EQ(paint_page(3, wide), paint_page(1, wide));
    EXPECT_NE(paint_page(4, wide), paint_page(1, wide));
}

TEST(TextPainter, RollSliceIsAWindowOntoTheWholeLine) {
    Area area(kDejaVu);
    const std::string text = "Rolling text, wider than one page";
    PageBitmaps wide;
    paintRollSlice(area, style_of(400, 20), text, 0, wide);
    PageBitmaps slices;
    paintRollSlice(area, style_of(60, 20, 3, 3), text, 60, slices); // alignment is ignored
    paintRollSlice(area, style_of(60, 20), text, -10, slices);
    EXPECT_EQ(slices[0], columns_of(wide[0], 400, 60, 60));
    // A negative offset moves the text right and leaves dark columns at the left.
    EXPECT_EQ(columns_of(slices[1], 60, 0, 10), PageBitmap(20 * 10 * 4, 0));
    EXPECT_EQ(columns_of(slices[1], 60, 10, 50), columns_of(wide[0], 400, 0, 50));
}

TEST(TextPainter, VerticalRollCutsTheColumnIntoSlicesOfThePageHeight) {
    Area area(kDejaVu);
    const std::vector<std::string> lines = {ucs2("one"),  ucs2("two"),  ucs2("three"),
                                            ucs2("four"), ucs2("five"), ucs2("six")};
    const int32_t H = 20;
    const auto column = static_cast<int32_t>(lines.size() * dejavu_line_height());
    PageBitmaps slices;
    paintVerticalRoll(area, style_of(50, H), lines, 1, slices);
    const auto count = static_cast<int32_t>(slices.size());
    EXPECT_GE(count * H, column);
    EXPECT_LT((count - 1) * H, column);

    PageBitmaps tall;
    paintLinesAtOffset(area, style_of(50, count * H), lines, 0, tall);
    for (int32_t k = 0; k < count; ++k) {
        EXPECT_EQ(slices[static_cast<std::size_t>(k)], rows_of(tall[0], 50, k * H, H)) << k;
    }

    PageBitmaps none;
    paintVerticalRoll(area, style_of(50, H), {}, 1, none);
    paintVerticalRoll(area, style_of(50, 0), lines, 1, none);
    EXPECT_TRUE(none.empty());
    paintVerticalRoll(area, style_of(50, 1000), lines, 1, none);
    EXPECT_EQ(none.size(), 1u); // shorter than one page: the remainder slice alone
}

TEST(TextPainter, EmptyLinesKeepTheirRows) {
    Area area(kDejaVu);
    PageBitmaps pages;
    paintLinesPage(area, style_of(40, 80, 1, 1), {ucs2("B")}, pages);
    paintLinesPage(area, style_of(40, 80, 1, 1), {"", "", ucs2("B")}, pages);
    const double shift = first_lit_row(pages[1], 40) - first_lit_row(pages[0], 40);
    EXPECT_NEAR(shift, 2 * dejavu_line_height(), 1.0);
}

TEST(TextPainter, MeasurementCountsBlanksAtTheEnds) {
    Area area(kDejaVu);
    const TextPaintStyle style = style_of(100, 20);
    const double blank = measureGbkText(area, style, "1 1") - measureGbkText(area, style, "11");
    EXPECT_GT(blank, 1.0);
    EXPECT_DOUBLE_EQ(measureGbkText(area, style, " A "),
                     measureGbkText(area, style, "A") + 2 * blank);
    EXPECT_EQ(measureGbkText(area, style, ""), 0.0);
    EXPECT_EQ(measureUcs2Text(area, style, ucs2(" A ")),
              static_cast<int32_t>(measureGbkText(area, style, " A ")));
}

} // namespace
} // namespace zel
