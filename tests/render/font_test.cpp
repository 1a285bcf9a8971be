#include <gtest/gtest.h>

#include <cairo-ft.h>
#include <cairo.h>
#include <cstdio>

#include "render/area.h"
#include "render/font.h"
#include "support/capture.h"

namespace zel {
namespace {

const char *const kDejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// A 1 × 1 canvas and its context, for looking at what a context was given.
struct Probe {
    cairo_surface_t *surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
    cairo_t *cr = cairo_create(surface);
    ~Probe() {
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
    cairo_antialias_t antialias() const {
        cairo_font_options_t *options = cairo_font_options_create();
        cairo_get_font_options(cr, options);
        const cairo_antialias_t result = cairo_font_options_get_antialias(options);
        cairo_font_options_destroy(options);
        return result;
    }
    cairo_font_type_t faceType() const { return cairo_font_face_get_type(cairo_get_font_face(cr)); }
    // The pixel as stored: blue, green, red, alpha.
    uint32_t paintedPixel() {
        cairo_paint(cr);
        cairo_surface_flush(surface);
        const unsigned char *p = cairo_image_surface_get_data(surface);
        return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
    }
};

TEST(Font, PixelSizeIsFourThirdsOfThePointSizeRounded) {
    EXPECT_EQ(font_pixel_size_for(12), 16.0);
    EXPECT_EQ(font_pixel_size_for(16), 21.0); // 21.33
    EXPECT_EQ(font_pixel_size_for(17), 23.0); // 22.67
    EXPECT_EQ(font_pixel_size_for(0), 0.0);
}

TEST(Font, NameWinsOverPathAndEveryChoiceSwitchesAntialiasingOff) {
    TKarea area;
    area.fontName = "DejaVu Sans";
    area.fontPath = "/nonexistent/font.ttf";
    {
        test::StdoutCapture console;
        Probe probe;
        area.applyFont(probe.cr, 1, 1);
        EXPECT_EQ(console.text(), ""); // the path was never tried
        EXPECT_EQ(probe.faceType(), CAIRO_FONT_TYPE_TOY);
        EXPECT_EQ(probe.antialias(), CAIRO_ANTIALIAS_NONE);
    }
    area.fontName.clear();
    area.fontPath = kDejaVu;
    {
        Probe probe;
        area.applyFont(probe.cr, 0, 0);
        EXPECT_EQ(probe.faceType(), CAIRO_FONT_TYPE_FT);
        EXPECT_EQ(probe.antialias(), CAIRO_ANTIALIAS_NONE);
    }
    area.fontPath.clear();
    {
        Probe probe;
        area.applyFont(probe.cr, 0, 0);
        EXPECT_EQ(probe.faceType(), CAIRO_FONT_TYPE_TOY); // cairo's default font
        EXPECT_EQ(probe.antialias(), CAIRO_ANTIALIAS_NONE);
    }
}

TEST(Font, AFileThatDoesNotOpenPrintsItsErrorOnEveryAttempt) {
    std::FILE *junk = std::fopen("junk.ttf", "wb");
    ASSERT_NE(junk, nullptr);
    std::fputs("this is no font", junk);
    std::fclose(junk);

    TKarea area;
    test::StdoutCapture console;
    for (int attempt = 0; attempt < 2; ++attempt) {
        area.fontPath = "/nonexistent/font.ttf";
        Probe missing;
        area.applyFont(missing.cr, 0, 0);
        EXPECT_EQ(missing.faceType(), CAIRO_FONT_TYPE_TOY); // the context kept its font
        EXPECT_EQ(missing.antialias(), CAIRO_ANTIALIAS_NONE);
        area.fontPath = "junk.ttf";
        Probe unreadable;
        area.applyFont(unreadable.cr, 0, 0);
    }
    // FreeType's errors: 1 cannot open resource, 2 unknown file format.
    EXPECT_EQ(console.text(), "Error 1 opening font.\nError 2 opening font.\n"
                              "Error 1 opening font.\nError 2 opening font.\n");
}

TEST(Font, EachSynthesisOfOneFileKeepsItsOwnFace) {
    // Plain first, then bold, then plain again: a plain face that stayed alive must not be
    // turned bold for the second request, nor the bold one back.
    TKarea area;
    area.fontPath = kDejaVu;
    const unsigned int expected[][3] = {
        {0, 0, 0},
        {1, 0, CAIRO_FT_SYNTHESIZE_BOLD},
        {0, 1, CAIRO_FT_SYNTHESIZE_OBLIQUE},
        {1, 1, CAIRO_FT_SYNTHESIZE_BOLD | CAIRO_FT_SYNTHESIZE_OBLIQUE},
        {0, 0, 0}};
    Probe plain;
    area.applyFont(plain.cr, 0, 0);
    for (const auto &e : expected) {
        Probe probe;
        area.applyFont(probe.cr, static_cast<uint8_t>(e[0]), static_cast<uint8_t>(e[1]));
        EXPECT_EQ(cairo_ft_font_face_get_synthesize(cairo_get_font_face(probe.cr)), e[2]);
    }
    EXPECT_EQ(cairo_ft_font_face_get_synthesize(cairo_get_font_face(plain.cr)), 0u);
}

TEST(Font, TextColourCodesAndTwentyFourBitValues) {
    struct Case {
        uint32_t color;
        uint32_t bgra;
    };
    const Case cases[] = {
        {0, 0x000000FF}, {1, 0x0000FFFF},        {2, 0x00FF00FF},          {3, 0x00FFFFFF},
        {4, 0xFF0000FF}, {5, 0xFF00FFFF},        {6, 0xFFFF00FF},          {7, 0xFFFFFFFF},
        {8, 0x080000FF}, {0x123456, 0x563412FF}, {0xAB000080, 0x800000FF}, {0x00FF8040, 0x4080FFFF},
    };
    for (const Case &c : cases) {
        Probe probe;
        TKarea::applyTextColor(probe.cr, c.color);
        EXPECT_EQ(probe.paintedPixel(), c.bgra) << std::hex << c.color;
    }
}

TEST(Font, DynamicEntriesTellFilesByTheirExtensionAnywhere) {
    EXPECT_TRUE(font_argument_is_file("SIMSUN.TTC"));
    EXPECT_TRUE(font_argument_is_file("/usr/share/fonts/a.TtF"));
    EXPECT_TRUE(font_argument_is_file("fonts.ttf/dir/name"));
    EXPECT_FALSE(font_argument_is_file("SimSun"));
    EXPECT_FALSE(font_argument_is_file("font.tt"));
    EXPECT_FALSE(font_argument_is_file("font.otf"));
}

} // namespace
} // namespace zel
