// Full-colour pixels: 5-6-5 words and 8-8-8 bytes, with a portable loop, an AVX2 byte shuffle
// for 8-8-8, and AVX-512 byte permutes that do both sixty-four pixels at a time.
#include "render/plane_packer.h"

#include <array>
#include <cstring>
#include <immintrin.h>

namespace zel::planes {
namespace {

constexpr std::size_t kBytesPerPixel = 4;

// The 5-6-5 word split into its two bytes, each the OR of two channel lookups:
// high = blue's top five bits | green's top three, low = green's next three | red's top five.
struct Tables565 {
    alignas(64) std::array<uint8_t, 256> high_blue;
    alignas(64) std::array<uint8_t, 256> high_green;
    alignas(64) std::array<uint8_t, 256> low_green;
    alignas(64) std::array<uint8_t, 256> low_red;

    explicit Tables565(const GammaTables &gamma) {
        for (std::size_t i = 0; i < 256; ++i) {
            high_blue[i] = static_cast<uint8_t>(gamma.blue[i] & 0xF8U);
            high_green[i] = static_cast<uint8_t>(gamma.green[i] >> 5);
            low_green[i] =
                static_cast<uint8_t>((static_cast<unsigned>(gamma.green[i]) << 3) & 0xE0U);
            low_red[i] = static_cast<uint8_t>(gamma.red[i] >> 3);
        }
    }
};

// Whole words: one table per channel holding its bits at their place in the word.
void pack_565_portable(const uint8_t *p, uint8_t *o, std::size_t count, const GammaTables &gamma) {
    std::array<uint16_t, 256> blue{}, green{}, red{};
    for (std::size_t i = 0; i < 256; ++i) {
        blue[i] = static_cast<uint16_t>((gamma.blue[i] * 256U) & 0xF800U);
        green[i] = static_cast<uint16_t>((gamma.green[i] * 8U) & 0x07E0U);
        red[i] = static_cast<uint16_t>(gamma.red[i] / 8U);
    }
    for (std::size_t i = 0; i < count; ++i, p += kBytesPerPixel, o += 2) {
        const auto word = static_cast<uint16_t>(blue[p[0]] | green[p[1]] | red[p[2]]);
        std::memcpy(o, &word, sizeof word);
    }
}

// Red, green, blue of one pixel, from a little-endian word of blue, green, red, alpha.
inline uint32_t rgb_of(const uint8_t *p) {
    uint32_t v;
    std::memcpy(&v, p, sizeof v);
    return __builtin_bswap32(v) >> 8;
}

void pack_888_portable(const uint8_t *p, uint8_t *o, std::size_t count) {
    // Four bytes stored per pixel, the fourth overwritten by the next pixel; the last by bytes.
    std::size_t i = 0;
    for (; i + 1 < count; ++i, p += kBytesPerPixel, o += 3) {
        const uint32_t rgb = rgb_of(p);
        std::memcpy(o, &rgb, sizeof rgb);
    }
    if (i < count) {
        o[0] = p[2];
        o[1] = p[1];
        o[2] = p[0];
    }
}

// Eight pixels per step: each lane's four pixels shuffled to twelve bytes, the two lanes' bytes
// brought together, 32 bytes stored of which 24 count (the next step overwrites the rest).
__attribute__((target("avx2"))) void pack_888_avx2(const uint8_t *p, uint8_t *o,
                                                   std::size_t count) {
    const __m256i shuffle =
        _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1, 2, 1, 0, 6, 5, 4,
                         10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    const __m256i join = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7);
    std::size_t i = 0;
    for (; count - i >= 11; i += 8, p += 8 * kBytesPerPixel, o += 24) {
        const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(p));
        const __m256i rgb = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(v, shuffle), join);
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(o), rgb);
    }
    pack_888_portable(p, o, count - i);
}

#define ZEL_AVX512 __attribute__((target("avx512f,avx512bw,avx512vbmi")))

// GCC 12's AVX-512 intrinsics start some results from a deliberately undefined register and
// then warn about it once inlined.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

ZEL_AVX512 inline __mmask64 first_bytes(std::size_t n) {
    return n >= 64 ? ~__mmask64{0} : (__mmask64{1} << n) - 1;
}

// Sixteen pixels per step: one byte permute picks red, green, blue of each.
ZEL_AVX512 void pack_888_avx512(const uint8_t *p, uint8_t *o, std::size_t count) {
    alignas(64) uint8_t order[64] = {};
    for (std::size_t j = 0; j < 48; ++j)
        order[j] = static_cast<uint8_t>(4 * (j / 3) + 2 - j % 3);
    const __m512i pick = _mm512_load_si512(order);
    for (std::size_t i = 0; i < count; i += 16, p += 16 * kBytesPerPixel, o += 48) {
        const std::size_t n = count - i < 16 ? count - i : 16;
        const __m512i v = _mm512_maskz_loadu_epi8(first_bytes(n * kBytesPerPixel), p);
        _mm512_mask_storeu_epi8(o, first_bytes(n * 3), _mm512_permutexvar_epi8(pick, v));
    }
}

// A 256-entry byte table in four registers, looked up for 64 indices at once: two 128-entry
// permutes, the index's top bit choosing between them.
struct Table256 {
    __m512i q0, q1, q2, q3;
};

ZEL_AVX512 inline Table256 load_table(const std::array<uint8_t, 256> &t) {
    return {_mm512_load_si512(t.data()), _mm512_load_si512(t.data() + 64),
            _mm512_load_si512(t.data() + 128), _mm512_load_si512(t.data() + 192)};
}

ZEL_AVX512 inline __m512i lookup(const Table256 &t, __m512i index, __mmask64 upper) {
    const __m512i lo = _mm512_permutex2var_epi8(t.q0, index, t.q1);
    const __m512i hi = _mm512_permutex2var_epi8(t.q2, index, t.q3);
    return _mm512_mask_blend_epi8(upper, lo, hi);
}

// Sixty-four pixels per step: their blue, green and red bytes gathered into one register each,
// four table lookups, and the low and high bytes interleaved into 128 bytes of words.
ZEL_AVX512 void pack_565_avx512(const uint8_t *p, uint8_t *o, std::size_t count,
                                const Tables565 &tables) {
    alignas(64) uint8_t blue_green[64], red[64], words_lo[64], words_hi[64];
    for (std::size_t j = 0; j < 64; ++j) {
        blue_green[j] = static_cast<uint8_t>(j < 32 ? 4 * j : 4 * (j - 32) + 1);
        red[j] = static_cast<uint8_t>(4 * (j % 32) + 2);
        words_lo[j] = static_cast<uint8_t>((j % 2 ? 64 : 0) + j / 2);
        words_hi[j] = static_cast<uint8_t>((j % 2 ? 64 : 0) + 32 + j / 2);
    }
    const __m512i pick_bg = _mm512_load_si512(blue_green);
    const __m512i pick_r = _mm512_load_si512(red);
    const __m512i join_lo = _mm512_load_si512(words_lo);
    const __m512i join_hi = _mm512_load_si512(words_hi);
    const Table256 high_blue = load_table(tables.high_blue);
    const Table256 high_green = load_table(tables.high_green);
    const Table256 low_green = load_table(tables.low_green);
    const Table256 low_red = load_table(tables.low_red);

    for (std::size_t i = 0; i < count; i += 64, p += 64 * kBytesPerPixel, o += 128) {
        const std::size_t n = count - i < 64 ? count - i : 64;
        const std::size_t in_bytes = n * kBytesPerPixel;
        __m512i v[4];
        for (std::size_t k = 0; k < 4; ++k) {
            const std::size_t at = 64 * k;
            v[k] = in_bytes > at ? _mm512_maskz_loadu_epi8(first_bytes(in_bytes - at), p + at)
                                 : _mm512_setzero_si512();
        }
        const __m512i bg01 = _mm512_permutex2var_epi8(v[0], pick_bg, v[1]);
        const __m512i bg23 = _mm512_permutex2var_epi8(v[2], pick_bg, v[3]);
        const __m512i r01 = _mm512_permutex2var_epi8(v[0], pick_r, v[1]);
        const __m512i r23 = _mm512_permutex2var_epi8(v[2], pick_r, v[3]);
        const __m512i b = _mm512_shuffle_i64x2(bg01, bg23, 0x44);
        const __m512i g = _mm512_shuffle_i64x2(bg01, bg23, 0xEE);
        const __m512i r = _mm512_shuffle_i64x2(r01, r23, 0x44);
        const __mmask64 b_upper = _mm512_movepi8_mask(b);
        const __mmask64 g_upper = _mm512_movepi8_mask(g);
        const __mmask64 r_upper = _mm512_movepi8_mask(r);
        const __m512i high =
            _mm512_or_si512(lookup(high_blue, b, b_upper), lookup(high_green, g, g_upper));
        const __m512i low =
            _mm512_or_si512(lookup(low_green, g, g_upper), lookup(low_red, r, r_upper));
        const __m512i w0 = _mm512_permutex2var_epi8(low, join_lo, high);
        const __m512i w1 = _mm512_permutex2var_epi8(low, join_hi, high);
        const std::size_t out_bytes = n * 2;
        _mm512_mask_storeu_epi8(o, first_bytes(out_bytes), w0);
        if (out_bytes > 64) _mm512_mask_storeu_epi8(o + 64, first_bytes(out_bytes - 64), w1);
    }
}

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

} // namespace

void pack_565(Kernel kernel, const uint8_t *pixels, uint8_t *out, std::size_t count,
              const GammaTables &gamma) {
    if (kernel == Kernel::Avx512 && kernel_supported(kernel)) {
        pack_565_avx512(pixels, out, count, Tables565(gamma));
    } else {
        pack_565_portable(pixels, out, count, gamma);
    }
}

void pack_888(Kernel kernel, const uint8_t *pixels, uint8_t *out, std::size_t count) {
    if (!kernel_supported(kernel)) kernel = Kernel::Portable;
    switch (kernel) {
    case Kernel::Avx512:
        pack_888_avx512(pixels, out, count);
        break;
    case Kernel::Avx2:
        pack_888_avx2(pixels, out, count);
        break;
    case Kernel::Portable:
        pack_888_portable(pixels, out, count);
        break;
    }
}

} // namespace zel::planes
