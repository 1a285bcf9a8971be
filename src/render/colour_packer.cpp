// Full-colour pixels: 5-6-5 words and 8-8-8 bytes, with a portable loop, an AVX2 byte shuffle
// for 8-8-8, and AVX-512 byte permutes that do both sixty-four pixels at a time.
#include "render/plane_packer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <immintrin.h>
#include <span>
#include <unistd.h>

namespace zel::planes {
namespace {

constexpr std::size_t kBytesPerPixel = 4;

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

// Sixty-four pixels (256 bytes in, 192 out) per step: each 64-byte output register takes its
// red, green and blue bytes from two neighbouring input registers with one two-source permute,
// and the stores are whole registers. The tail goes sixteen pixels at a time, masked.
ZEL_AVX512 void pack_888_avx512(const uint8_t *p, uint8_t *o, std::size_t count) {
    alignas(64) uint8_t order[3][64] = {};
    for (std::size_t k = 0; k < 3; ++k) {
        for (std::size_t j = 0; j < 64; ++j) {
            const std::size_t g = 64 * k + j;
            order[k][j] = static_cast<uint8_t>(4 * (g / 3) + 2 - g % 3 - 64 * k);
        }
    }
    const __m512i pick0 = _mm512_load_si512(order[0]);
    const __m512i pick1 = _mm512_load_si512(order[1]);
    const __m512i pick2 = _mm512_load_si512(order[2]);
    std::size_t i = 0;
    for (; i + 64 <= count; i += 64, p += 64 * kBytesPerPixel, o += 192) {
        const __m512i v0 = _mm512_loadu_si512(p);
        const __m512i v1 = _mm512_loadu_si512(p + 64);
        const __m512i v2 = _mm512_loadu_si512(p + 128);
        const __m512i v3 = _mm512_loadu_si512(p + 192);
        _mm512_storeu_si512(o, _mm512_permutex2var_epi8(v0, pick0, v1));
        _mm512_storeu_si512(o + 64, _mm512_permutex2var_epi8(v1, pick1, v2));
        _mm512_storeu_si512(o + 128, _mm512_permutex2var_epi8(v2, pick2, v3));
    }
    for (; i < count; i += 16, p += 16 * kBytesPerPixel, o += 48) {
        const std::size_t n = count - i < 16 ? count - i : 16;
        const __m512i v = _mm512_maskz_loadu_epi8(first_bytes(n * kBytesPerPixel), p);
        _mm512_mask_storeu_epi8(o, first_bytes(n * 3), _mm512_permutexvar_epi8(pick0, v));
    }
}

// A 256-entry byte table in four registers, looked up for 64 indices at once: two 128-entry
// permutes, the index's top bit choosing between them.
struct Table256 {
    __m512i q0, q1, q2, q3;
};

ZEL_AVX512 inline Table256 load_table(std::span<const uint8_t, 256> t) {
    return {_mm512_loadu_si512(t.data()), _mm512_loadu_si512(t.data() + 64),
            _mm512_loadu_si512(t.data() + 128), _mm512_loadu_si512(t.data() + 192)};
}

ZEL_AVX512 inline __m512i lookup(const Table256 &t, __m512i index) {
    const __m512i lo = _mm512_permutex2var_epi8(t.q0, index, t.q1);
    const __m512i hi = _mm512_permutex2var_epi8(t.q2, index, t.q3);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), lo, hi);
}

// (a & mask) | (b & ~mask), bit by bit.
ZEL_AVX512 inline __m512i select_bits(__m512i mask, __m512i a, __m512i b) {
    return _mm512_ternarylogic_epi32(a, b, mask, 0xE4);
}

// A whole 64-byte register to `o`; with `stream`, around the caches (`o` on a 64-byte boundary).
template <bool stream> ZEL_AVX512 inline void store_line(uint8_t *o, __m512i v) {
    if constexpr (stream)
        _mm512_stream_si512(reinterpret_cast<__m512i *>(o), v);
    else
        _mm512_storeu_si512(o, v);
}

// Sixty-four pixels per step: their blue, green and red bytes gathered into one register each
// and put through their gamma tables; the word's high byte is blue's top five bits and green's
// top three, its low byte green's next three and red's top five (16-bit shifts move the bits,
// the masks drop what crosses from the neighbouring byte); two permutes interleave low and
// high bytes into 128 bytes of words. With `stream`, whole steps store around the caches.
template <bool stream>
ZEL_AVX512 void pack_565_avx512(const uint8_t *p, uint8_t *o, std::size_t count,
                                const GammaTables &gamma) {
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
    const Table256 gamma_blue = load_table(gamma.blue);
    const Table256 gamma_green = load_table(gamma.green);
    const Table256 gamma_red = load_table(gamma.red);
    const __m512i top_five = _mm512_set1_epi8(static_cast<char>(0xF8));
    const __m512i top_three = _mm512_set1_epi8(static_cast<char>(0xE0));

    for (std::size_t i = 0; i < count; i += 64, p += 64 * kBytesPerPixel, o += 128) {
        const std::size_t n = count - i < 64 ? count - i : 64;
        const std::size_t in_bytes = n * kBytesPerPixel;
        __m512i v[4];
        for (std::size_t k = 0; k < 4; ++k) {
            const std::size_t at = 64 * k;
            if (n == 64)
                v[k] = _mm512_loadu_si512(p + at);
            else
                v[k] = in_bytes > at ? _mm512_maskz_loadu_epi8(first_bytes(in_bytes - at), p + at)
                                     : _mm512_setzero_si512();
        }
        const __m512i bg01 = _mm512_permutex2var_epi8(v[0], pick_bg, v[1]);
        const __m512i bg23 = _mm512_permutex2var_epi8(v[2], pick_bg, v[3]);
        const __m512i r01 = _mm512_permutex2var_epi8(v[0], pick_r, v[1]);
        const __m512i r23 = _mm512_permutex2var_epi8(v[2], pick_r, v[3]);
        const __m512i b = lookup(gamma_blue, _mm512_shuffle_i64x2(bg01, bg23, 0x44));
        const __m512i g = lookup(gamma_green, _mm512_shuffle_i64x2(bg01, bg23, 0xEE));
        const __m512i r = lookup(gamma_red, _mm512_shuffle_i64x2(r01, r23, 0x44));
        const __m512i high = select_bits(top_five, b, _mm512_srli_epi16(g, 5));
        const __m512i low =
            select_bits(top_three, _mm512_slli_epi16(g, 3), _mm512_srli_epi16(r, 3));
        const __m512i w0 = _mm512_permutex2var_epi8(low, join_lo, high);
        const __m512i w1 = _mm512_permutex2var_epi8(low, join_hi, high);
        if (n == 64) { // whole registers: a masked store costs more even with every lane set
            store_line<stream>(o, w0);
            store_line<stream>(o + 64, w1);
            continue;
        }
        const std::size_t out_bytes = n * 2;
        _mm512_mask_storeu_epi8(o, first_bytes(out_bytes), w0);
        if (out_bytes > 64) _mm512_mask_storeu_epi8(o + 64, first_bytes(out_bytes - 64), w1);
    }
}

// A page whose pixels and words together outgrow the core's second-level cache is bound by
// moving them: its words are stored around the caches, which saves reading each output line
// in before it is written. A page that fits stays in the cache for whoever reads it next.
// (8-8-8, three lines stored a step, measured slower streamed, so it never is.)
std::size_t streaming_threshold() {
    static const std::size_t bytes = [] {
        const long l2 = ::sysconf(_SC_LEVEL2_CACHE_SIZE);
        return l2 > 0 ? static_cast<std::size_t>(l2) : std::size_t{1} << 20;
    }();
    return bytes;
}

// Packs with the ordinary stores or, when the page outgrows the cache, the ordinary way up to
// the output's first 64-byte boundary and streamed from there.
ZEL_AVX512 void pack_565_avx512(const uint8_t *p, uint8_t *o, std::size_t count,
                                const GammaTables &gamma) {
    const auto address = reinterpret_cast<std::uintptr_t>(o);
    // Words are 2 bytes: from an odd address they never reach a boundary.
    if (count * (kBytesPerPixel + 2) <= streaming_threshold() || address % 2 != 0) {
        pack_565_avx512<false>(p, o, count, gamma);
        return;
    }
    const std::size_t head = std::min(count, ((64 - address % 64) % 64) / 2);
    pack_565_avx512<false>(p, o, head, gamma);
    pack_565_avx512<true>(p + head * kBytesPerPixel, o + head * 2, count - head, gamma);
    _mm_sfence(); // the streamed words are seen before anything stored after them
}

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

} // namespace

void pack_565(Kernel kernel, const uint8_t *pixels, uint8_t *out, std::size_t count,
              const GammaTables &gamma) {
    if (kernel == Kernel::Avx512 && kernel_supported(kernel)) {
        pack_565_avx512(pixels, out, count, gamma);
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
