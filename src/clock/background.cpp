#include "clock/background.h"

#include <cairo.h>
#include <cstdio>

#include "render/picture.h"
#include "render/screen_format.h"
#include "sdk/console.h"

namespace zel {

void BackGround::setBackgroundColor(uint32_t color, const PageDisplayRecord_G6 & /*record*/) {
    compute_draw_rect();
    displayRecord = displayRecord_G6.display_record();
    backgroundColor = color;
}

void BackGround::fillBackground(uint32_t color) {
    // A rectangle without pixels (a frame thicker than half the area) paints nothing.
    const int32_t w = drawWidth > 0 ? drawWidth : 0;
    const int32_t h = drawHeight > 0 ? drawHeight : 0;
    PageBitmap page(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 4, 0);
    if (w > 0 && h > 0) {
        cairo_surface_t *surface = cairo_image_surface_create_for_data(
            page.data(), CAIRO_FORMAT_ARGB32, w, h,
            cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, w));
        cairo_t *cr = cairo_create(surface);
        applyTextColor(cr, color);
        cairo_paint(cr);
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
    pageBitmaps.push_back(std::move(page));
}

void BackGround::renderBackground() {
    encodedTotal = 0;
    compute_draw_rect();
    if (soundEnabled != 0) soundLength = static_cast<uint32_t>(soundData.size());
    pageBitmaps.clear();
    encodedPages.clear();

    if (backgroundColor == kNoBackgroundColor) {
        for (const char *path : m_PageList) {
            std::FILE *file = path != nullptr ? std::fopen(path, "r") : nullptr;
            if (file == nullptr) {
                // The number is always 0, whichever picture is missing.
                console_printf("%s%d\n", "Error:The picture does not exist.ID:", 0);
                continue;
            }
            pageBitmaps.push_back(paintPicture(path, drawWidth, drawHeight));
            std::fclose(file);
        }
    } else {
        fillBackground(backgroundColor);
    }
    pageCount = static_cast<uint32_t>(pageBitmaps.size());

    for (const PageBitmap &bitmap : pageBitmaps) {
        std::vector<uint8_t> out;
        if (drawWidth >= 0 && drawHeight >= 0) {
            encode_for_screen(*this, bitmap, out, pageLeft, static_cast<uint32_t>(drawWidth),
                              static_cast<uint32_t>(drawHeight));
        }
        encodedTotal += static_cast<uint32_t>(out.size());
        encodedPages.push_back(std::move(out));
    }
}

} // namespace zel
