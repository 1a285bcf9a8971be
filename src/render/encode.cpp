#include "render/encode.h"

#include "render/area.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace zel {

namespace {

static_assert(std::endian::native == std::endian::little,
              "the bitmap is read eight bytes at a time in little-endian order");

constexpr int32_t kColorSingle = 1;
constexpr int32_t kColorDouble = 2;
constexpr int32_t kColorTriple = 3;
constexpr int32_t kColorFull = 4;

constexpr uint32_t kModePlaneBytes = 0;
constexpr uint32_t kModeZeros = 1;
constexpr uint32_t kMode565 = 3;
constexpr uint32_t kModePlaneWords = 4;
constexpr uint32_t kMode888 = 5;

// A channel counts as lit from this value on, the same for every channel and colour mode.
constexpr uint8_t kLitThreshold = 97;

constexpr std::size_t kBytesPerPixel = 4;
constexpr std::size_t kGroupPixels = 8; // one byte of each plane

// Two ARGB32 pixels in one little-endian word: bytes B0 G0 R0 A0 B1 G1 R1 A1. Adding
// 128 - 97 to the low seven bits of each byte carries into bit 7 exactly when the byte is 97 or
// more (bytes of 128 and more have bit 7 set already); no byte can carry into the next one.
constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
constexpr uint64_t kLitBias = 0x0101010101010101ULL * (128U - kLitThreshold);
constexpr uint64_t kColourHighBits = 0x0080808000808080ULL; // alpha is ignored

inline uint64_t lit_bits(uint64_t two_pixels) {
    return (((two_pixels & kLow7) + kLitBias) | two_pixels) & kColourHighBits;
}

// Lit flags of eight consecutive pixels: blue in bits 0-7, green in 8-15, red in 16-23, the
// first pixel in the most significant bit of each byte. Word k holds pixels 2k and 2k+1; its
// flags sit at bits 7/15/23 and 39/47/55. Shifting word k right by 2k puts pixel 2k where it
// belongs, and a further shift by 33 brings pixel 2k+1 down next to it.
inline uint32_t channel_bytes(const uint8_t *eight_pixels) {
    uint64_t w[4];
    std::memcpy(w, eight_pixels, sizeof w);
    const uint64_t u =
        lit_bits(w[0]) | (lit_bits(w[1]) >> 2) | (lit_bits(w[2]) >> 4) | (lit_bits(w[3]) >> 6);
    return static_cast<uint32_t>((u | (u >> 33)) & 0xFFFFFFU);
}

// Which planes light for which channels. A two-colour screen shows blue in the "red" plane
// when neither red nor green is lit.
enum class PlaneRule { Single, DoubleRedFirst, DoubleGreenFirst, Triple };

template <PlaneRule rule> inline void lit_planes(uint32_t channels, uint8_t planes[3]) {
    const auto b = static_cast<uint8_t>(channels);
    const auto g = static_cast<uint8_t>(channels >> 8);
    const auto r = static_cast<uint8_t>(channels >> 16);
    if constexpr (rule == PlaneRule::Single) {
        planes[0] = static_cast<uint8_t>(r | g | b);
    } else if constexpr (rule == PlaneRule::DoubleRedFirst) {
        planes[0] = static_cast<uint8_t>(r | (b & ~g));
        planes[1] = g;
    } else if constexpr (rule == PlaneRule::DoubleGreenFirst) {
        planes[0] = g;
        planes[1] = static_cast<uint8_t>(r | (b & ~g));
    } else {
        planes[0] = r;
        planes[1] = g;
        planes[2] = b;
    }
}

template <PlaneRule rule> constexpr std::size_t plane_count() {
    if constexpr (rule == PlaneRule::Single)
        return 1;
    else if constexpr (rule == PlaneRule::Triple)
        return 3;
    else
        return 2;
}

struct RowGeometry {
    std::size_t pad_left;
    std::size_t width;
    std::size_t row_pixels; // a multiple of the packing unit
};

// Writes one row's groups of eight positions. tranPixelMode 0 interleaves the planes byte by
// byte (two planes: plane 2 first); tranPixelMode 4 writes each plane as its own block of
// 32-bit little-endian words, the first position in the word's most significant bit, so a
// group's byte lands at the mirrored place within its word.
template <PlaneRule rule, bool words>
void encode_planes(const uint8_t *pixels, uint8_t *out, const RowGeometry &geo, std::size_t height,
                   std::size_t plane_bytes) {
    constexpr std::size_t planes_n = plane_count<rule>();
    const std::size_t groups = geo.row_pixels / kGroupPixels;
    const std::size_t row_stride = geo.width * kBytesPerPixel;
    // Groups whose eight positions are all pixels; those before and after touch the padding.
    const std::size_t first_full = (geo.pad_left + kGroupPixels - 1) / kGroupPixels;
    const std::size_t end_full = (geo.pad_left + geo.width) / kGroupPixels;

    std::size_t group_index = 0; // counts all groups of the page
    for (std::size_t row = 0; row < height; ++row) {
        const uint8_t *row_pixels = pixels + row * row_stride;
        for (std::size_t g = 0; g < groups; ++g, ++group_index) {
            uint32_t channels;
            if (g >= first_full && g < end_full) {
                channels =
                    channel_bytes(row_pixels + (g * kGroupPixels - geo.pad_left) * kBytesPerPixel);
            } else {
                // Padding reads as black; copy whatever pixels this group does hold.
                uint8_t edge[kGroupPixels * kBytesPerPixel] = {};
                const std::size_t start = g * kGroupPixels;
                const std::size_t lo = std::max(start, geo.pad_left);
                const std::size_t hi = std::min(start + kGroupPixels, geo.pad_left + geo.width);
                if (lo < hi) {
                    std::memcpy(edge + (lo - start) * kBytesPerPixel,
                                row_pixels + (lo - geo.pad_left) * kBytesPerPixel,
                                (hi - lo) * kBytesPerPixel);
                }
                channels = channel_bytes(edge);
            }
            uint8_t lit[3] = {};
            lit_planes<rule>(channels, lit);
            // Active-low: a lit position is a 0 bit.
            if constexpr (words) {
                const std::size_t at = (group_index & ~std::size_t{3}) + 3 - (group_index & 3);
                for (std::size_t p = 0; p < planes_n; ++p) {
                    out[p * plane_bytes + at] = static_cast<uint8_t>(~lit[p]);
                }
            } else if constexpr (rule == PlaneRule::Single) {
                *out++ = static_cast<uint8_t>(~lit[0]);
            } else if constexpr (planes_n == 2) {
                *out++ = static_cast<uint8_t>(~lit[1]);
                *out++ = static_cast<uint8_t>(~lit[0]);
            } else {
                *out++ = static_cast<uint8_t>(~lit[0]);
                *out++ = static_cast<uint8_t>(~lit[1]);
                *out++ = static_cast<uint8_t>(~lit[2]);
            }
        }
    }
}

template <PlaneRule rule>
void encode_planes_by_mode(const uint8_t *pixels, std::vector<uint8_t> &out, const RowGeometry &geo,
                           std::size_t height, bool words) {
    const std::size_t plane_bytes = geo.row_pixels / kGroupPixels * height;
    out.resize(plane_bytes * plane_count<rule>());
    if (words) {
        encode_planes<rule, true>(pixels, out.data(), geo, height, plane_bytes);
    } else {
        encode_planes<rule, false>(pixels, out.data(), geo, height, plane_bytes);
    }
}

void encode_full_colour(const uint8_t *pixels, std::vector<uint8_t> &out, std::size_t count,
                        uint32_t mode, const GammaTables &gamma) {
    if (mode == kMode565) {
        // Blue in the top five bits and red in the low five: the controllers expect it so.
        std::array<uint16_t, 256> blue{}, green{}, red{};
        for (std::size_t i = 0; i < 256; ++i) {
            blue[i] = static_cast<uint16_t>((gamma.blue[i] * 256U) & 0xF800U);
            green[i] = static_cast<uint16_t>((gamma.green[i] * 8U) & 0x07E0U);
            red[i] = static_cast<uint16_t>(gamma.red[i] / 8U);
        }
        out.resize(count * 2);
        uint8_t *o = out.data();
        for (std::size_t i = 0; i < count; ++i, pixels += kBytesPerPixel) {
            const auto word =
                static_cast<uint16_t>(blue[pixels[0]] + green[pixels[1]] + red[pixels[2]]);
            *o++ = static_cast<uint8_t>(word);
            *o++ = static_cast<uint8_t>(word >> 8);
        }
    } else if (mode == kMode888) {
        out.resize(count * 3);
        uint8_t *o = out.data();
        for (std::size_t i = 0; i < count; ++i, pixels += kBytesPerPixel) {
            *o++ = pixels[2];
            *o++ = pixels[1];
            *o++ = pixels[0];
        }
    } else if (mode == kModeZeros) {
        // No controller type selects this mode; it is kept so that the combination encodes as
        // it always has.
        out.assign(count * 2, 0);
    }
}

} // namespace

GammaTables area_gamma(const TKarea &area) {
    return {area.gammaRed, area.gammaGreen, area.gammaBlue};
}

void encodePixels(std::span<const uint8_t> pixels, std::vector<uint8_t> &out, uint32_t x,
                  uint32_t width, uint32_t height, const PixelFormat &format,
                  const GammaTables &gamma) {
    out.clear();
    const int32_t colour = format.colorMode;
    if (colour != kColorSingle && colour != kColorDouble && colour != kColorTriple &&
        colour != kColorFull) {
        return;
    }

    const std::size_t pixel_count = std::size_t{width} * height;
    RowGeometry geo{0, width, 0};
    if (colour != kColorFull) {
        const uint64_t unit = pixelUnit(format.tranPixelMode);
        const uint64_t right = uint64_t{x} + width;
        geo.pad_left = static_cast<std::size_t>(x % unit);
        const auto pad_right =
            static_cast<std::size_t>(right % unit == 0 ? 0 : unit - right % unit);
        geo.row_pixels = geo.pad_left + width + pad_right;
        // The reference planes are fixed bitsets: their checked accessor fails at the first
        // position beyond them, before anything has been written out.
        if (uint64_t{geo.row_pixels} * height > kPlanePositions) {
            throw std::out_of_range("invalid bitset<N> position");
        }
        if (format.tranPixelMode != kModePlaneBytes && format.tranPixelMode != kModePlaneWords) {
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
        encode_full_colour(data, out, pixel_count, format.tranPixelMode, gamma);
        return;
    }
    const bool words = format.tranPixelMode == kModePlaneWords;
    switch (colour) {
    case kColorSingle:
        encode_planes_by_mode<PlaneRule::Single>(data, out, geo, height, words);
        break;
    case kColorDouble:
        if (format.doubleColor == 1) {
            encode_planes_by_mode<PlaneRule::DoubleRedFirst>(data, out, geo, height, words);
        } else {
            encode_planes_by_mode<PlaneRule::DoubleGreenFirst>(data, out, geo, height, words);
        }
        break;
    default:
        encode_planes_by_mode<PlaneRule::Triple>(data, out, geo, height, words);
        break;
    }
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
