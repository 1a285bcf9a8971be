// The PNG strip of an area frame or a program frame.
//
// The frame is never painted into a page: its pixels are encoded once and shipped beside the
// pages, and the controller draws it around the rectangle. Its only effect on page generation
// is the margin it takes on every side, which is the strip's height.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

typedef struct _cairo_surface cairo_surface_t;

namespace zel {

class TKarea;

inline constexpr std::size_t kFrameRecordSize = 7;    // G5 frame header
inline constexpr std::size_t kFrameRecordSizeG6 = 14; // G6 frame header
inline constexpr uint8_t kFrameMark = 1;              // byte 0 of every area frame header

// The 7-byte G5 frame header of the program files. The parameters are the controller's; the
// library passes them on without reading them.
struct FrameHeaderG5 {
    uint8_t frameMark = 0;
    uint8_t frameParam1 = 0;
    uint8_t frameParam2 = 0;
    uint8_t frameParam3 = 0;
    uint8_t frameParam4 = 0;
    uint16_t frameParam5 = 0;

    std::array<uint8_t, kFrameRecordSize> bytes() const;
};

// The six parameter bytes that a host gives for a G6 frame.
struct FrameParamsG6 {
    uint8_t frameParam1 = 0;
    uint8_t frameParam2 = 0;
    std::array<uint8_t, 3> frameParam3{};
    uint8_t frameParam4 = 0;

    // The 14-byte G6 frame header: the mark 1, the six bytes, seven zeros.
    std::array<uint8_t, kFrameRecordSizeG6> header() const;
};

class PicturesAreaFrame {
  public:
    PicturesAreaFrame() = default;
    ~PicturesAreaFrame();
    PicturesAreaFrame(const PicturesAreaFrame &) = delete;
    PicturesAreaFrame &operator=(const PicturesAreaFrame &) = delete;

    // Reads the PNG at `pngPath`, replacing what was held. A file that cannot be read as a PNG
    // leaves framePixels null and both sizes 0; the caller tells that case by framePixels.
    void load(const std::string &pngPath);

    // The strip encoded for the current screen settings (x 0, the strip's own size), with the
    // gamma tables of `area`. Throws as encodePixels throws for a strip beyond the bit planes.
    std::vector<uint8_t> encode(const TKarea &area) const;

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
