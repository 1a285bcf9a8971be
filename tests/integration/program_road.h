// What the program roads share: the file as it landed in the simulator, the panel it writes,
// and the check that a decoded text page is lit exactly where the library painted it.
#pragma once

#include <cairo.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "sim/app/panel_hook.h"
#include "sim/panel/panel_png.h"
#include "sim/panel/program_decoder.h"
#include "sim/protocol/sim_files.h"

namespace zel::test {

inline std::vector<uint8_t> landed_file(sim::Simulator &s, const char *name) {
    const auto file = sim::file_system(s).find(sim::FileSpace::Ofs, sim::file_name(name));
    return file ? file->bytes : std::vector<uint8_t>{};
}

inline sim::PanelOptions panel_in(const char *folder, uint32_t width, uint32_t height,
                                  int32_t colorMode = 1) {
    sim::PanelOptions options;
    options.folder = folder;
    options.width = width;
    options.height = height;
    options.colorMode = colorMode;
    return options;
}

inline std::string text_file(const char *path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void expect_png(const char *name, int width, int height) {
    cairo_surface_t *png = cairo_image_surface_create_from_png(name);
    EXPECT_EQ(cairo_surface_status(png), CAIRO_STATUS_SUCCESS) << name;
    EXPECT_EQ(cairo_image_surface_get_width(png), width) << name;
    EXPECT_EQ(cairo_image_surface_get_height(png), height) << name;
    cairo_surface_destroy(png);
}

// `canvas` holds one decoded page of a text area at (x, y), `bitmap` the page as the library
// painted it (32 bits a pixel, `width` wide): lit exactly where the painting is bright.
inline void expect_text_page(const sim::Rgb &canvas, const std::vector<uint8_t> &bitmap, uint32_t x,
                             uint32_t y, uint32_t width, uint32_t height) {
    std::size_t litCount = 0;
    for (uint32_t py = 0; py < canvas.height; ++py) {
        for (uint32_t px = 0; px < canvas.width; ++px) {
            bool want = false;
            if (px >= x && px < x + width && py >= y && py < y + height) {
                const std::size_t at = ((py - y) * std::size_t{width} + (px - x)) * 4;
                want = bitmap[at] >= 97 || bitmap[at + 1] >= 97 || bitmap[at + 2] >= 97;
            }
            ASSERT_EQ(canvas.at(px, py) != 0, want) << px << "," << py;
            litCount += want;
        }
    }
    EXPECT_GT(litCount, 20u);
}

} // namespace zel::test
