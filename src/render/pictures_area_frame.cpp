#include "render/pictures_area_frame.h"

#include <cairo.h>

namespace zel {

PicturesAreaFrame::~PicturesAreaFrame() {
    if (m_surface != nullptr) cairo_surface_destroy(m_surface);
}

void PicturesAreaFrame::load(const std::string &pngPath) {
    if (m_surface != nullptr) cairo_surface_destroy(m_surface);
    path = pngPath;
    m_surface = cairo_image_surface_create_from_png(pngPath.c_str());
    cairo_surface_flush(m_surface);
    // An unreadable file gives cairo's error surface: size 0 × 0 and no data.
    frameThickness = cairo_image_surface_get_height(m_surface);
    frameLength = cairo_image_surface_get_width(m_surface);
    framePixels = cairo_image_surface_get_data(m_surface);
}

} // namespace zel
