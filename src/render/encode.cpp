#include "render/encode.h"

#include "render/area.h"
#include "render/plane_packer.h"

#include <algorithm>
#include <stdexcept>

namespace zel {

namespace {

constexpr int32_t kColorSingle = 1;
constexpr int32_t kColorDouble = 2;
constexpr int32_t kColorTriple = 3;
constexpr int32_t kColorFull = 4;

constexpr uint32_t kModePlaneBytes = 0;
constexpr uint32_t kModeZeros = 1;
constexpr uint32_t kMode565 = 3;
constexpr uint32_t kModePlaneWords = 4;
constexpr uint32_t kMode888 = 5;

constexpr std::size_t kBytesPerPixel = 4;

void encode_full_colour(planes::Kernel kernel, const uint8_t *pixels, std::vector<uint8_t> &out,
                        std::size_t count, uint32_t mode, const GammaTables &gamma) {
    if (mode == kMode565) {
        // Blue in the top five bits and red in the low five: the controllers expect it so.
        out.resize(count * 2);
        planes::pack_565(kernel, pixels, out.data(), count, gamma);
    } else if (mode == kMode888) {
        out.resize(count * 3);
        planes::pack_888(kernel, pixels, out.data(), count);
    } else if (mode == kModeZeros) {
        // No controller type selects this mode; it is kept so that the combination encodes as
        // it always has.
        out.assign(count * 2, 0);
    } else {
        out.clear();
    }
}

} // namespace

GammaTables area_gamma(const TKarea &area) {
    return {area.gammaRed, area.gammaGreen, area.gammaBlue};
}

void encodePixels(std::span<const uint8_t> pixels, std::vector<uint8_t> &out, uint32_t x,
                  uint32_t width, uint32_t height, const PixelFormat &format,
                  const GammaTables &gamma) {
    planes::encode_pixels_using(planes::best_kernel(), pixels, out, x, width, height, format,
                                gamma);
}

void planes::encode_pixels_using(Kernel kernel, std::span<const uint8_t> pixels,
                                 std::vector<uint8_t> &out, uint32_t x, uint32_t width,
                                 uint32_t height, const PixelFormat &format,
                                 const GammaTables &gamma) {
    // `out` keeps its bytes until the encoding overwrites them all: a buffer reused for pages
    // of one size is not cleared and filled again each time.
    const int32_t colour = format.colorMode;
    if (colour != kColorSingle && colour != kColorDouble && colour != kColorTriple &&
        colour != kColorFull) {
        out.clear();
        return;
    }

    const std::size_t pixel_count = std::size_t{width} * height;
    planes::Geometry geo{0, width, 0, height};
    if (colour != kColorFull) {
        const uint64_t unit = pixelUnit(format.tranPixelMode);
        const uint64_t right = uint64_t{x} + width;
        geo.pad_left = static_cast<std::size_t>(x % unit);
        const auto pad_right =
            static_cast<std::size_t>(right % unit == 0 ? 0 : unit - right % unit);
        geo.row_pixels = geo.pad_left + width + pad_right;
        // The controllers' planes are fixed-size bitsets: a page beyond them fails the way
        // their checked accessor does at the first position too many, before any output.
        if (uint64_t{geo.row_pixels} * height > kPlanePositions) {
            out.clear();
            throw std::out_of_range("invalid bitset<N> position");
        }
        if (format.tranPixelMode != kModePlaneBytes && format.tranPixelMode != kModePlaneWords) {
            out.clear();
            return;
        }
    }

    // A bitmap that falls short is read as if the rest were dark.
    std::vector<uint8_t> padded;
    const std::size_t needed = pixel_count * kBytesPerPixel;
    const uint8_t *data = pixels.data();
    if (pixels.size() < needed) {
        padded.assign(needed, 0);
        std::copy(pixels.begin(), pixels.end(), padded.begin());
        data = padded.data();
    }

    if (colour == kColorFull) {
        encode_full_colour(kernel, data, out, pixel_count, format.tranPixelMode, gamma);
        return;
    }
    const planes::Rule rule = colour == kColorSingle    ? planes::Rule::Single
                              : colour == kColorTriple  ? planes::Rule::Triple
                              : format.doubleColor == 1 ? planes::Rule::DoubleRedFirst
                                                        : planes::Rule::DoubleGreenFirst;
    out.resize(planes::plane_count(rule) * geo.row_pixels / 8 * height);
    planes::pack(kernel, rule, format.tranPixelMode == kModePlaneWords, data, out.data(), geo);
}

void readPixel(std::span<const uint8_t> pixels, uint32_t column, uint32_t row, uint32_t rowLength,
               uint8_t *red, uint8_t *green, uint8_t *blue) {
    const uint64_t index = (uint64_t{row} * rowLength + column) * kBytesPerPixel;
    if (index + 3 > pixels.size()) {
        *red = *green = *blue = 0;
        return;
    }
    const auto at = static_cast<std::size_t>(index);
    *blue = pixels[at];
    *green = pixels[at + 1];
    *red = pixels[at + 2];
}

std::size_t scanPixelRow(std::span<const uint8_t> pixels, std::span<uint8_t> out, int32_t y,
                         int32_t lastX, uint8_t skip) {
    if (skip != 0 || y < 0 || lastX < 0) return 0;
    std::size_t stored = 0;
    for (int64_t x = 0; x <= lastX && stored + 3 <= out.size(); ++x) {
        uint8_t r = 0, g = 0, b = 0;
        readPixel(pixels, static_cast<uint32_t>(x), static_cast<uint32_t>(y),
                  static_cast<uint32_t>(lastX), &r, &g, &b);
        out[stored++] = b;
        out[stored++] = g;
        out[stored++] = r;
    }
    return stored;
}

} // namespace zel
