#include "render/pictures_area_frame.h"

#include <algorithm>
#include <cairo.h>
#include <span>

#include "render/screen_format.h"

namespace zel {

std::array<uint8_t, kFrameRecordSize> FrameHeaderG5::bytes() const {
    return {frameMark,
            frameParam1,
            frameParam2,
            frameParam3,
            frameParam4,
            static_cast<uint8_t>(frameParam5 & 0xFF),
            static_cast<uint8_t>(frameParam5 >> 8)};
}

std::array<uint8_t, kFrameRecordSizeG6> FrameParamsG6::header() const {
    return {kFrameMark,
            frameParam1,
            frameParam2,
            frameParam3[0],
            frameParam3[1],
            frameParam3[2],
            frameParam4,
            0,
            0,
            0,
            0,
            0,
            0,
            0};
}

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

std::vector<uint8_t> PicturesAreaFrame::encode(const TKarea &area) const {
    const auto bytes = static_cast<std::size_t>(std::max(frameLength, 0)) *
                       static_cast<std::size_t>(std::max(frameThickness, 0)) * 4;
    std::vector<uint8_t> out;
    encode_for_screen(area, std::span<const uint8_t>(framePixels, framePixels ? bytes : 0), out, 0,
                      static_cast<uint32_t>(frameLength), static_cast<uint32_t>(frameThickness));
    return out;
}

} // namespace zel
