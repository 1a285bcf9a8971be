// Helpers of the picture area tests: areas at a given place, PNG files, UCS-2 lines.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "render/pictures_area.h"
#include "sdk/bytes.h"

namespace zel::test {

inline const char *const kDejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline const char *const kWenQuanYi = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";

// Gives the area the add-area record of a picture area at (x, y), width × height.
inline void place(PicturesArea &area, uint16_t x, uint16_t y, uint16_t width, uint16_t height) {
    area.set_area_header(0, {x, y, width, height});
}

// ASCII to UCS-2LE.
inline std::string ucs2(const std::string &ascii) {
    std::string out;
    for (const char c : ascii) {
        out.push_back(c);
        out.push_back('\0');
    }
    return out;
}

inline std::vector<std::string> ucs2Lines(std::initializer_list<const char *> lines) {
    std::vector<std::string> out;
    for (const char *line : lines)
        out.push_back(ucs2(line));
    return out;
}

// Writes a PNG of width × height filled with one opaque colour.
inline void writePng(const std::string &path, int width, int height, double r, double g, double b) {
    cairo_surface_t *s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t *cr = cairo_create(s);
    cairo_set_source_rgb(cr, r, g, b);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(s, path.c_str());
    cairo_surface_destroy(s);
}

// A PNG held in memory, decoded: its size and its ARGB32 pixels (premultiplied).
struct DecodedPng {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    uint32_t at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    // The pixels as a page bitmap holds them: blue, green, red, alpha.
    std::vector<uint8_t> bytes() const {
        std::vector<uint8_t> out(pixels.size() * 4);
        if (!out.empty()) std::memcpy(out.data(), pixels.data(), out.size());
        return out;
    }
};

inline DecodedPng decodePng(const std::string &bytes) {
    std::FILE *f = std::fopen("decoded.png", "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
    cairo_surface_t *s = cairo_image_surface_create_from_png("decoded.png");
    DecodedPng png{cairo_image_surface_get_width(s), cairo_image_surface_get_height(s), {}};
    const auto *data = reinterpret_cast<const uint32_t *>(cairo_image_surface_get_data(s));
    if (data != nullptr) png.pixels.assign(data, data + png.width * png.height);
    cairo_surface_destroy(s);
    return png;
}

} // namespace zel::test
