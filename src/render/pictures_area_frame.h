// The PNG strip of an area frame or a program frame.
//
// The frame is never painted into a page: its pixels are encoded once and shipped beside the
// pages, and the controller draws it around the rectangle. Its only effect on page generation
// is the margin it takes on every side, which is the strip's height.
#pragma once

#include <cstdint>
#include <string>

typedef struct _cairo_surface cairo_surface_t;

namespace zel {

class PicturesAreaFrame {
  public:
    PicturesAreaFrame() = default;
    ~PicturesAreaFrame();
    PicturesAreaFrame(const PicturesAreaFrame &) = delete;
    PicturesAreaFrame &operator=(const PicturesAreaFrame &) = delete;

    // Reads the PNG at `pngPath`, replacing what was held. A file that cannot be read as a PNG
    // leaves framePixels null and both sizes 0; the caller tells that case by framePixels.
    void load(const std::string &pngPath);

    int32_t frameThickness = 0; // the PNG's height: the margin on each side of the area
    int32_t frameLength = 0;    // the PNG's width
    // The decoded pixels, frameLength × 4 bytes per row (blue, green, red, alpha), owned by
    // the surface below; null when nothing was loaded.
    const uint8_t *framePixels = nullptr;
    std::string path;

  private:
    cairo_surface_t *m_surface = nullptr;
};

} // namespace zel
