// Pixel encoding: the one place that knows how a controller wants its pixels. Everything that
// is painted (text, pictures, clocks, frames, backgrounds) ends as a 32-bit cairo bitmap and
// leaves through encodePixels as the bytes of a program file or a dynamic area's message.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zel {

class TKarea;

// The controllers' bit planes hold this many positions each (512 KiB of bits): a page in
// colour modes 1 to 3 (padded row length × height) may not exceed it.
inline constexpr uint64_t kPlanePositions = 4194304;

// How one kind of screen wants its pixels; callers fill it from the screen settings.
struct PixelFormat {
    int32_t colorMode = 0;      // 1, 2, 3: that many bit planes; 4: full colour
    uint32_t tranPixelMode = 0; // planes: 0 bytes, 4 words; full colour: 3 5-6-5, 5 8-8-8, 1 zeros
    int32_t doubleColor = 0;    // two planes: 1 puts red in plane 1, every other value green
};

// The area's gamma tables, used only by the 16-bit full-colour mode.
struct GammaTables {
    std::span<const uint8_t, 256> red;
    std::span<const uint8_t, 256> green;
    std::span<const uint8_t, 256> blue;
};

// The tables of an area (all areas have the same ones).
GammaTables area_gamma(const TKarea &area);

// Encodes one page for the controller.
//
// `pixels` is a CAIRO_FORMAT_ARGB32 bitmap as it lies in memory (blue, green, red, alpha per
// pixel), `width` × 4 bytes per row, rows from the top; alpha is ignored and the stored
// (premultiplied) channel values are used as they stand. `x` is the page's left edge on the
// screen: in colour modes 1 to 3 every row is padded to the screen's packing grid (8 pixels, or
// 32 in tranPixelMode 4) with dark positions, and the planes are active-low.
//
// `out` is replaced by the encoded bytes and sized to them exactly; its size is the encoded
// length. Combinations without a layout (colour 4 with mode 0 or 4, colours 1 to 3 with modes
// other than 0 and 4, any other colour mode) give an empty result. A bitmap shorter than
// width × height × 4 bytes is read as if the missing pixels were dark.
//
// Throws std::out_of_range ("invalid bitset<N> position") when a page in colour modes 1 to 3
// has more than kPlanePositions padded positions; `out` is then empty. The exported entries
// catch it at the C boundary.
void encodePixels(std::span<const uint8_t> pixels, std::vector<uint8_t> &out, uint32_t x,
                  uint32_t width, uint32_t height, const PixelFormat &format,
                  const GammaTables &gamma);

// Reads red, green and blue of the pixel at (`column`, `row`) of an ARGB32 bitmap whose rows
// are `rowLength` pixels long. A pixel outside `pixels` reads as black.
void readPixel(std::span<const uint8_t> pixels, uint32_t column, uint32_t row, uint32_t rowLength,
               uint8_t *red, uint8_t *green, uint8_t *blue);

// Reads the pixels 0 to `lastX` (inclusive) of row `y`, taking `lastX` itself as the row length
// (the clock glyph tables depend on exactly this addressing), and stores blue, green, red of
// each into `out` in turn when `skip` is 0; stores nothing otherwise. Stops storing at the end
// of `out`. Returns the number of bytes stored.
std::size_t scanPixelRow(std::span<const uint8_t> pixels, std::span<uint8_t> out, int32_t y,
                         int32_t lastX, uint8_t skip);

} // namespace zel
