// The drawing surfaces of the clock painters: a caller's ARGB32 buffer (cells, backgrounds,
// dials) or a surface of cairo's own (previews), each with its context.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zel {

class ClockCanvas {
  public:
    // Over `rgba`, width × height pixels with rows of width × 4 bytes. A size that is not
    // positive, or a buffer shorter than the size, gives cairo's inert error surface: every
    // call runs through and paints nothing.
    ClockCanvas(std::vector<uint8_t> &rgba, int32_t width, int32_t height);
    // A surface of cairo's own, for a preview.
    ClockCanvas(int32_t width, int32_t height);
    ~ClockCanvas();
    ClockCanvas(const ClockCanvas &) = delete;
    ClockCanvas &operator=(const ClockCanvas &) = delete;

    cairo_t *cr() const { return m_cr; }

    // Fills everything with transparent black.
    void clear();
    // Leaves the picture in a PNG file of the working directory. cairo's status is not read:
    // a directory that is not writable simply gets no file.
    void write_png_file(const char *name);
    // Appends the picture as a PNG to `png`.
    void append_png(std::string &png);

  private:
    cairo_surface_t *m_surface = nullptr;
    cairo_t *m_cr = nullptr;
};

// Extents of a UTF-8 text and of the context's font.
cairo_text_extents_t clock_text_extents(cairo_t *cr, const std::string &utf8);
cairo_font_extents_t clock_font_extents(cairo_t *cr);

// The GBK text as UTF-8 (what did not convert is dropped, as everywhere).
std::string clock_utf8(std::string gbk);

// Switches the context's anti-aliasing off for lines and shapes.
void set_shapes_antialias_none(cairo_t *cr);

} // namespace zel
