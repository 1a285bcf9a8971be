#include "render/plane_packer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <immintrin.h>

namespace zel::planes {

namespace {

static_assert(std::endian::native == std::endian::little,
              "the bitmap is read several bytes at a time in little-endian order");

// A channel counts as lit from this value on, the same for every channel and colour mode.
constexpr uint8_t kLitThreshold = 97;
constexpr std::size_t kBytesPerPixel = 4;
constexpr std::size_t kGroupPixels = 8; // one byte of each plane
constexpr std::size_t kGroupBytes = kGroupPixels * kBytesPerPixel;
constexpr std::size_t kWordPixels = 32; // one word of each plane

inline uint64_t load64(const uint8_t *p) {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

inline void store32(uint8_t *p, uint32_t v) {
    std::memcpy(p, &v, sizeof v);
}

// Lit planes from channel flags (bytes blue, green, red in bits 0-7, 8-15, 16-23), as plane 1
// in bits 0-7, plane 2 in 8-15, plane 3 in 16-23. A two-colour screen shows blue in its "red"
// plane when neither red nor green is lit.
template <Rule rule> inline uint32_t lit_planes(uint32_t b, uint32_t g, uint32_t r) {
    if constexpr (rule == Rule::Single) {
        return r | g | b;
    } else if constexpr (rule == Rule::DoubleRedFirst) {
        return (r | (b & ~g)) | g << 8;
    } else if constexpr (rule == Rule::DoubleGreenFirst) {
        return g | (r | (b & ~g)) << 8;
    } else {
        return r | g << 8 | b << 16;
    }
}

template <Rule rule> constexpr std::size_t planes_of() {
    if constexpr (rule == Rule::Single)
        return 1;
    else if constexpr (rule == Rule::Triple)
        return 3;
    else
        return 2;
}

// Portable: two ARGB32 pixels in one little-endian word, bytes B0 G0 R0 A0 B1 G1 R1 A1.
// Adding 128 - 97 to the low seven bits of each byte carries into bit 7 exactly when the byte
// is 97 or more (bytes of 128 and more have bit 7 set already); no byte carries into the next.
constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
constexpr uint64_t kLitBias = 0x0101010101010101ULL * (128U - kLitThreshold);
constexpr uint64_t kColourHighBits = 0x0080808000808080ULL; // alpha is ignored

inline uint64_t lit_bits(uint64_t two_pixels) {
    return (((two_pixels & kLow7) + kLitBias) | two_pixels) & kColourHighBits;
}

template <Rule rule> struct PortableKernel {
    // Whole words cost four groups' work plus reassembly here: bytes mode stays per group.
    static constexpr bool kWide = false;
    // Edges go through a zeroed copy (below).
    static constexpr bool kMaskedEdges = false;

    // Dark bits of eight pixels, one byte per plane (upper bits undefined). Word k holds pixels
    // 2k and 2k+1 with flags at bits 7/15/23 and 39/47/55; shifting it right by 2k puts pixel
    // 2k at its place in the byte, a further shift by 33 brings pixel 2k+1 next to it.
    static uint32_t dark(const uint8_t *p) {
        const uint64_t u = lit_bits(load64(p)) | (lit_bits(load64(p + 8)) >> 2) |
                           (lit_bits(load64(p + 16)) >> 4) | (lit_bits(load64(p + 24)) >> 6);
        const auto flags = static_cast<uint32_t>(u | (u >> 33));
        return ~lit_planes<rule>(flags & 0xFFU, (flags >> 8) & 0xFFU, (flags >> 16) & 0xFFU);
    }

    // Dark words of 32 pixels, one per plane: the first group's byte is the word's top byte.
    static void dark_words(const uint8_t *p, uint32_t words[3]) {
        const uint32_t v0 = dark(p), v1 = dark(p + kGroupBytes), v2 = dark(p + 2 * kGroupBytes),
                       v3 = dark(p + 3 * kGroupBytes);
        for (std::size_t plane = 0; plane < 3; ++plane) {
            const auto shift = static_cast<unsigned>(8 * plane);
            words[plane] = ((v0 >> shift) & 0xFFU) << 24 | ((v1 >> shift) & 0xFFU) << 16 |
                           ((v2 >> shift) & 0xFFU) << 8 | ((v3 >> shift) & 0xFFU);
        }
    }
};

template <Rule rule> struct Avx2Kernel {
    // Four groups at once are cheaper than four single groups: bytes mode uses words too.
    static constexpr bool kWide = true;
    // Edges load only their pixels, the padding lanes masked to zero (black).
    static constexpr bool kMaskedEdges = true;

    // Eight pixels in one register, in reverse order, so that the lanes' sign bits read by
    // movemask put the first pixel in the most significant bit. max(v, 97) == v marks the
    // bytes of 97 and more; shifting a lane left by 8, 16 or 24 moves red, green or blue into
    // its sign bit. Each returned plane lane carries the plane's flag in its sign bit.
    struct Lit {
        __m256i plane1, plane2, plane3;
    };

    __attribute__((target("avx2"))) static Lit lit(const uint8_t *p) {
        return lit(_mm256_loadu_si256(reinterpret_cast<const __m256i *>(p)));
    }

    // Eight positions from `start` of a row whose pixels lie at positions
    // [geo.pad_left, geo.pad_left + geo.width): a masked load touches only those pixels. The
    // address is formed as an integer, since it may lie before the row.
    __attribute__((target("avx2"))) static Lit lit_edge(const uint8_t *row, std::size_t start,
                                                        const Geometry &geo) {
        const __m256i lanes = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
        const auto first = static_cast<int32_t>(start) - static_cast<int32_t>(geo.pad_left);
        const __m256i index = _mm256_add_epi32(lanes, _mm256_set1_epi32(first));
        const __m256i mask = _mm256_andnot_si256(
            _mm256_cmpgt_epi32(_mm256_setzero_si256(), index),
            _mm256_cmpgt_epi32(_mm256_set1_epi32(static_cast<int32_t>(geo.width)), index));
        const auto address = reinterpret_cast<uintptr_t>(row) +
                             static_cast<uintptr_t>(static_cast<intptr_t>(first) * 4);
        return lit(_mm256_maskload_epi32(reinterpret_cast<const int *>(address), mask));
    }

    __attribute__((target("avx2"))) static Lit lit(__m256i loaded) {
        const __m256i reverse = _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0);
        const __m256i threshold = _mm256_set1_epi8(static_cast<char>(kLitThreshold));
        const __m256i v = _mm256_permutevar8x32_epi32(loaded, reverse);
        const __m256i flags = _mm256_cmpeq_epi8(_mm256_max_epu8(v, threshold), v);
        const __m256i r = _mm256_slli_epi32(flags, 8);
        const __m256i g = _mm256_slli_epi32(flags, 16);
        const __m256i b = _mm256_slli_epi32(flags, 24);
        if constexpr (rule == Rule::Single) {
            return {_mm256_or_si256(_mm256_or_si256(r, g), b), g, b};
        } else if constexpr (rule == Rule::Triple) {
            return {r, g, b};
        } else {
            const __m256i red_plane = _mm256_or_si256(r, _mm256_andnot_si256(g, b));
            if constexpr (rule == Rule::DoubleRedFirst) {
                return {red_plane, g, b};
            } else {
                return {g, red_plane, b};
            }
        }
    }

    __attribute__((target("avx2"))) static uint32_t sign_bits(__m256i v) {
        return static_cast<uint32_t>(_mm256_movemask_ps(_mm256_castsi256_ps(v)));
    }

    // Dark bits of eight pixels, one byte per plane (upper bits undefined).
    __attribute__((target("avx2"))) static uint32_t dark(const uint8_t *p) { return dark(lit(p)); }

    __attribute__((target("avx2"))) static uint32_t dark_edge(const uint8_t *row, std::size_t start,
                                                              const Geometry &geo) {
        return dark(lit_edge(row, start, geo));
    }

    __attribute__((target("avx2"))) static uint32_t dark(const Lit &l) {
        constexpr std::size_t n = planes_of<rule>();
        uint32_t bits = sign_bits(l.plane1);
        if constexpr (n > 1) bits |= sign_bits(l.plane2) << 8;
        if constexpr (n > 2) bits |= sign_bits(l.plane3) << 16;
        return ~bits;
    }

    // The sign bits of four groups' lanes as one word, group 0 in the top byte: saturating
    // packs keep the signs, and the dword permutation undoes the packs' per-half interleave.
    __attribute__((target("avx2"))) static uint32_t word(__m256i g0, __m256i g1, __m256i g2,
                                                         __m256i g3) {
        const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
        const __m256i bytes =
            _mm256_packs_epi16(_mm256_packs_epi32(g3, g2), _mm256_packs_epi32(g1, g0));
        return static_cast<uint32_t>(
            _mm256_movemask_epi8(_mm256_permutevar8x32_epi32(bytes, order)));
    }

    // Dark words of 32 pixels, one per plane.
    __attribute__((target("avx2"))) static void dark_words(const uint8_t *p, uint32_t words[3]) {
        dark_words(lit(p), lit(p + kGroupBytes), lit(p + 2 * kGroupBytes), lit(p + 3 * kGroupBytes),
                   words);
    }

    __attribute__((target("avx2"))) static void
    dark_words_edge(const uint8_t *row, std::size_t start, const Geometry &geo, uint32_t words[3]) {
        dark_words(lit_edge(row, start, geo), lit_edge(row, start + kGroupPixels, geo),
                   lit_edge(row, start + 2 * kGroupPixels, geo),
                   lit_edge(row, start + 3 * kGroupPixels, geo), words);
    }

    __attribute__((target("avx2"))) static void
    dark_words(const Lit &l0, const Lit &l1, const Lit &l2, const Lit &l3, uint32_t words[3]) {
        constexpr std::size_t n = planes_of<rule>();
        words[0] = ~word(l0.plane1, l1.plane1, l2.plane1, l3.plane1);
        if constexpr (n > 1) words[1] = ~word(l0.plane2, l1.plane2, l2.plane2, l3.plane2);
        if constexpr (n > 2) words[2] = ~word(l0.plane3, l1.plane3, l2.plane3, l3.plane3);
    }
};

template <class K, Rule rule, bool words>
inline void pack_rows(const uint8_t *pixels, uint8_t *out, const Geometry &geo) {
    constexpr std::size_t planes_n = planes_of<rule>();
    const std::size_t groups = geo.row_pixels / kGroupPixels;
    const std::size_t plane_size = groups * geo.height;
    const std::size_t row_stride = geo.width * kBytesPerPixel;

    for (std::size_t row = 0; row < geo.height; ++row) {
        const uint8_t *row_pixels = pixels + row * row_stride;
        // Padding reads as black: a stretch of positions that is not all pixels is copied
        // into a zeroed buffer with whatever pixels it holds.
        auto copy_partial = [&](std::size_t start, std::size_t count, uint8_t *buffer) {
            const std::size_t lo = std::max(start, geo.pad_left);
            const std::size_t hi = std::min(start + count, geo.pad_left + geo.width);
            if (lo < hi) {
                std::memcpy(buffer + (lo - start) * kBytesPerPixel,
                            row_pixels + (lo - geo.pad_left) * kBytesPerPixel,
                            (hi - lo) * kBytesPerPixel);
            }
        };
        auto inside = [&](std::size_t start, std::size_t count) {
            return start >= geo.pad_left && start + count <= geo.pad_left + geo.width;
        };

        // 32 positions at a time: a plane word each, the first position in the top bit.
        auto words_at = [&](std::size_t start, uint32_t w[3]) {
            if (inside(start, kWordPixels)) {
                K::dark_words(row_pixels + (start - geo.pad_left) * kBytesPerPixel, w);
            } else if constexpr (K::kMaskedEdges) {
                K::dark_words_edge(row_pixels, start, geo, w);
            } else {
                uint8_t edge[kWordPixels * kBytesPerPixel] = {};
                copy_partial(start, kWordPixels, edge);
                K::dark_words(edge, w);
            }
        };

        if constexpr (words) {
            uint8_t *row_out = out + row * groups;
            for (std::size_t start = 0; start < geo.row_pixels; start += kWordPixels) {
                uint32_t w[3] = {};
                words_at(start, w);
                for (std::size_t p = 0; p < planes_n; ++p) {
                    store32(row_out + p * plane_size + start / kGroupPixels, w[p]);
                }
            }
        } else {
            std::size_t start = 0;
            if constexpr (K::kWide) {
                // Bytes mode from words: four groups, each writing its planes' bytes in turn.
                for (; start + kWordPixels <= geo.row_pixels; start += kWordPixels) {
                    uint32_t w[3] = {};
                    words_at(start, w);
                    for (unsigned shift = 24;; shift -= 8) {
                        if constexpr (planes_n == 1) {
                            *out++ = static_cast<uint8_t>(w[0] >> shift);
                        } else if constexpr (planes_n == 2) {
                            *out++ = static_cast<uint8_t>(w[1] >> shift);
                            *out++ = static_cast<uint8_t>(w[0] >> shift);
                        } else {
                            *out++ = static_cast<uint8_t>(w[0] >> shift);
                            *out++ = static_cast<uint8_t>(w[1] >> shift);
                            *out++ = static_cast<uint8_t>(w[2] >> shift);
                        }
                        if (shift == 0) break;
                    }
                }
            }
            for (; start < geo.row_pixels; start += kGroupPixels) {
                uint32_t v;
                if (inside(start, kGroupPixels)) {
                    v = K::dark(row_pixels + (start - geo.pad_left) * kBytesPerPixel);
                } else if constexpr (K::kMaskedEdges) {
                    v = K::dark_edge(row_pixels, start, geo);
                } else {
                    uint8_t edge[kGroupBytes] = {};
                    copy_partial(start, kGroupPixels, edge);
                    v = K::dark(edge);
                }
                if constexpr (planes_n == 1) {
                    *out++ = static_cast<uint8_t>(v);
                } else if constexpr (planes_n == 2) {
                    *out++ = static_cast<uint8_t>(v >> 8);
                    *out++ = static_cast<uint8_t>(v);
                } else {
                    *out++ = static_cast<uint8_t>(v);
                    *out++ = static_cast<uint8_t>(v >> 8);
                    *out++ = static_cast<uint8_t>(v >> 16);
                }
            }
        }
    }
}

// The AVX2 instantiation must be compiled for AVX2 as a whole so that the kernel inlines.
template <Rule rule, bool words>
__attribute__((target("avx2"), flatten)) void pack_rows_avx2(const uint8_t *pixels, uint8_t *out,
                                                             const Geometry &geo) {
    pack_rows<Avx2Kernel<rule>, rule, words>(pixels, out, geo);
}

template <Rule rule>
void pack_rule(Kernel kernel, bool words, const uint8_t *pixels, uint8_t *out,
               const Geometry &geo) {
    if (kernel == Kernel::Avx2) {
        if (words) {
            pack_rows_avx2<rule, true>(pixels, out, geo);
        } else {
            pack_rows_avx2<rule, false>(pixels, out, geo);
        }
    } else if (words) {
        pack_rows<PortableKernel<rule>, rule, true>(pixels, out, geo);
    } else {
        pack_rows<PortableKernel<rule>, rule, false>(pixels, out, geo);
    }
}

} // namespace

bool kernel_supported(Kernel kernel) {
    static const bool avx2 = __builtin_cpu_supports("avx2") != 0;
    static const bool avx512 = avx2 && __builtin_cpu_supports("avx512bw") != 0 &&
                               __builtin_cpu_supports("avx512vbmi") != 0;
    switch (kernel) {
    case Kernel::Portable:
        return true;
    case Kernel::Avx2:
        return avx2;
    case Kernel::Avx512:
        return avx512;
    }
    return false;
}

Kernel best_kernel() {
    if (kernel_supported(Kernel::Avx512)) return Kernel::Avx512;
    return kernel_supported(Kernel::Avx2) ? Kernel::Avx2 : Kernel::Portable;
}

std::size_t plane_count(Rule rule) {
    switch (rule) {
    case Rule::Single:
        return 1;
    case Rule::Triple:
        return 3;
    default:
        return 2;
    }
}

void pack(Kernel kernel, Rule rule, bool words, const uint8_t *pixels, uint8_t *out,
          const Geometry &geo) {
    if (!kernel_supported(kernel)) kernel = Kernel::Portable;
    if (kernel == Kernel::Avx512) kernel = Kernel::Avx2; // the planes gain nothing from wider lanes
    switch (rule) {
    case Rule::Single:
        pack_rule<Rule::Single>(kernel, words, pixels, out, geo);
        break;
    case Rule::DoubleRedFirst:
        pack_rule<Rule::DoubleRedFirst>(kernel, words, pixels, out, geo);
        break;
    case Rule::DoubleGreenFirst:
        pack_rule<Rule::DoubleGreenFirst>(kernel, words, pixels, out, geo);
        break;
    case Rule::Triple:
        pack_rule<Rule::Triple>(kernel, words, pixels, out, geo);
        break;
    }
}

} // namespace zel::planes
