#include "clock/clock_canvas.h"

#include "render/area.h"
#include "render/text_painter.h"

namespace zel {

ClockCanvas::ClockCanvas(std::vector<uint8_t> &rgba, int32_t width, int32_t height) {
    const bool fits =
        width > 0 && height > 0 &&
        rgba.size() >= static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    if (fits) {
        const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
        m_surface = cairo_image_surface_create_for_data(rgba.data(), CAIRO_FORMAT_ARGB32, width,
                                                        height, stride);
    } else {
        // A negative size gives the error surface; 0 × 0 a valid one with nothing to paint.
        m_surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width < 0 ? -1 : 0,
                                               height < 0 ? -1 : 0);
    }
    m_cr = cairo_create(m_surface);
}

ClockCanvas::ClockCanvas(int32_t width, int32_t height)
    : m_surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      m_cr(cairo_create(m_surface)) {}

ClockCanvas::~ClockCanvas() {
    cairo_destroy(m_cr);
    cairo_surface_destroy(m_surface);
}

void ClockCanvas::clear() {
    cairo_set_source_rgba(m_cr, 0, 0, 0, 0);
    cairo_paint(m_cr);
}

void ClockCanvas::write_png_file(const char *name) {
    cairo_surface_flush(m_surface);
    cairo_surface_write_to_png(m_surface, name);
}

void ClockCanvas::append_png(std::string &png) {
    cairo_surface_flush(m_surface);
    cairo_surface_write_to_png_stream(m_surface, pngAppend, &png);
}

cairo_text_extents_t clock_text_extents(cairo_t *cr, const std::string &utf8) {
    cairo_text_extents_t te{};
    cairo_text_extents(cr, utf8.c_str(), &te);
    return te;
}

cairo_font_extents_t clock_font_extents(cairo_t *cr) {
    cairo_font_extents_t fe{};
    cairo_font_extents(cr, &fe);
    return fe;
}

std::string clock_utf8(std::string gbk) {
    TKarea::convertGbkToUtf8(gbk);
    return gbk;
}

void set_shapes_antialias_none(cairo_t *cr) {
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
}

} // namespace zel
