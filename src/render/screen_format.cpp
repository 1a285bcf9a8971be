#include "render/screen_format.h"

#include "render/area.h"
#include "sdk/screen_globals.h"

namespace zel {

PixelFormat screen_pixel_format() {
    return {static_cast<int32_t>(g_screenColor.load(std::memory_order_relaxed)),
            g_tranPixelMode.load(std::memory_order_relaxed),
            // Only the value 1 is told apart, so reading the unsigned setting as signed
            // changes nothing.
            static_cast<int32_t>(g_doubleColor.load(std::memory_order_relaxed))};
}

void encode_for_screen(const TKarea &area, std::span<const uint8_t> pixels,
                       std::vector<uint8_t> &out, uint32_t x, uint32_t width, uint32_t height) {
    encodePixels(pixels, out, x, width, height, screen_pixel_format(), area_gamma(area));
}

} // namespace zel
