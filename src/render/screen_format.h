// The pixel format of the screen that the process-wide settings describe: what the pages,
// frames and backgrounds of programs and dynamic areas are encoded for.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "render/encode.h"

namespace zel {

class TKarea;

// g_screenColor, g_tranPixelMode and g_doubleColor as they stand now.
PixelFormat screen_pixel_format();

// encodePixels with the current screen settings and the area's gamma tables.
void encode_for_screen(const TKarea &area, std::span<const uint8_t> pixels,
                       std::vector<uint8_t> &out, uint32_t x, uint32_t width, uint32_t height);

} // namespace zel
