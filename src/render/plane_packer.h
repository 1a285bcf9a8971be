// Packing of pages into the controllers' bit planes (colour modes 1 to 3): the hot part of
// encodePixels, on the path of every page of every program and dynamic area. Internal to the
// encoder; the tests reach it to check every kernel against the same reference.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "render/encode.h"

namespace zel::planes {

// How eight pixels become one byte per plane, and full-colour pixels their bytes. Portable
// works on 64-bit words anywhere; Avx2 tests eight pixels at once; Avx512 (AVX-512 BW with the
// byte permutes of VBMI) packs full colour sixty-four pixels at a time and does the planes as
// Avx2 does. The best one the processor has is chosen at run time. All give the same bytes.
enum class Kernel { Portable, Avx2, Avx512 };

bool kernel_supported(Kernel kernel);
Kernel best_kernel();

// Which planes light for which channels.
enum class Rule {
    Single,           // one plane: any channel
    DoubleRedFirst,   // doubleColor 1: plane 1 red (or a lone blue), plane 2 green
    DoubleGreenFirst, // other doubleColor values: plane 1 green, plane 2 red (or a lone blue)
    Triple,           // planes red, green, blue
};

std::size_t plane_count(Rule rule);

struct Geometry {
    std::size_t pad_left;   // dark positions before the first pixel of a row
    std::size_t width;      // pixels per row of the bitmap
    std::size_t row_pixels; // positions per row, a multiple of 8 (of 32 for words)
    std::size_t height;
};

// Writes plane_count(rule) × row_pixels / 8 × height bytes to `out` from a bitmap of
// width × height ARGB32 pixels. Planes are active-low, the first position in the most
// significant bit. Bytes (`words` false) interleave the planes per eight positions, plane 2
// before plane 1 for two planes; words (`words` true) write each plane as a block of 32-bit
// little-endian words.
void pack(Kernel kernel, Rule rule, bool words, const uint8_t *pixels, uint8_t *out,
          const Geometry &geo);

// Full colour, `count` pixels. 5-6-5: one little-endian word per pixel, blue (through its
// gamma table) in the top five bits, green in the middle six, red in the low five. 8-8-8: red,
// green, blue bytes. `out` has room for 2 or 3 bytes per pixel exactly.
void pack_565(Kernel kernel, const uint8_t *pixels, uint8_t *out, std::size_t count,
              const GammaTables &gamma);
void pack_888(Kernel kernel, const uint8_t *pixels, uint8_t *out, std::size_t count);

// encodePixels with the given kernel; encodePixels itself uses best_kernel().
void encode_pixels_using(Kernel kernel, std::span<const uint8_t> pixels, std::vector<uint8_t> &out,
                         uint32_t x, uint32_t width, uint32_t height, const PixelFormat &format,
                         const GammaTables &gamma);

} // namespace zel::planes
