// Pixel encoding speed: the library's encoder next to the position-by-position reference that
// the tests compare it with, on small, medium and large pages in every colour mode and pixel
// mode that produces output. Reports megapixels per second ("Mpix/s"). BM_encodePixels runs
// the kernel the processor gets (AVX2 where available); BM_encodePixels_portable forces the
// kernel that runs everywhere else. For full colour, whose kernels read the whole page and
// write two or three bytes a pixel, BM_copy_page copies the page's bytes with memcpy and
// BM_move_bytes reads them and writes as many bytes as the encoder, computing nothing: on pages
// larger than the core's cache, the floor of any kernel, and so the most its ratio to the
// reference can be there. The ratios are printed at the end.
#include "render/area.h"
#include "render/encode.h"
#include "render/plane_packer.h"

#include "../tests/support/pixel_reference.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <immintrin.h>
#include <random>

namespace {

// An area's left edge that is not on the packing grid, so rows carry padding on both sides.
constexpr uint32_t kLeftEdge = 3;

std::vector<uint8_t> random_page(uint32_t width, uint32_t height) {
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> byte(0, 255);
    std::vector<uint8_t> page(std::size_t{width} * height * 4);
    for (auto &b : page)
        b = static_cast<uint8_t>(byte(rng));
    return page;
}

void set_rate(benchmark::State &state, uint32_t width, uint32_t height) {
    state.counters["Mpix/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * width * height / 1e6,
                           benchmark::Counter::kIsRate);
}

void run_encoder(benchmark::State &state, zel::planes::Kernel kernel) {
    const auto width = static_cast<uint32_t>(state.range(0));
    const auto height = static_cast<uint32_t>(state.range(1));
    const zel::PixelFormat format{static_cast<int32_t>(state.range(2)),
                                  static_cast<uint32_t>(state.range(3)), 1};
    const auto page = random_page(width, height);
    const zel::TKarea area;
    const zel::GammaTables gamma = zel::area_gamma(area);
    std::vector<uint8_t> out;
    for (auto _ : state) {
        zel::planes::encode_pixels_using(kernel, page, out, kLeftEdge, width, height, format,
                                         gamma);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    set_rate(state, width, height);
}

void BM_encodePixels(benchmark::State &state) {
    run_encoder(state, zel::planes::best_kernel());
}

void BM_encodePixels_portable(benchmark::State &state) {
    run_encoder(state, zel::planes::Kernel::Portable);
}

void BM_reference(benchmark::State &state) {
    const auto width = static_cast<uint32_t>(state.range(0));
    const auto height = static_cast<uint32_t>(state.range(1));
    const auto colour = static_cast<int32_t>(state.range(2));
    const auto mode = static_cast<uint32_t>(state.range(3));
    const auto page = random_page(width, height);
    const zel::TKarea area;
    zel::test::ReferenceEncoder reference;
    for (auto _ : state) {
        auto out = reference.encode(page, kLeftEdge, width, height, colour, mode, 1, area.gammaRed,
                                    area.gammaGreen, area.gammaBlue);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    set_rate(state, width, height);
}

void BM_copy_page(benchmark::State &state) {
    const auto width = static_cast<uint32_t>(state.range(0));
    const auto height = static_cast<uint32_t>(state.range(1));
    const auto page = random_page(width, height);
    std::vector<uint8_t> copy(page.size());
    for (auto _ : state) {
        std::memcpy(copy.data(), page.data(), page.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
    set_rate(state, width, height);
}

// Reads the page with 64-byte loads and writes as many bytes as the full-colour encoder does,
// in its steps: 64 pixels (four input lines) make three output lines for 8-8-8 and two for
// 5-6-5, each the exclusive or of two neighbouring input lines. The least any kernel can do
// that reads every pixel and writes every output byte.
__attribute__((target("avx512f"))) void move_bytes_avx512(const uint8_t *in, std::size_t pixels,
                                                          uint8_t *out, std::size_t out_lines) {
    for (std::size_t i = 0; i + 64 <= pixels; i += 64, in += 256) {
        const __m512i v0 = _mm512_loadu_si512(in);
        const __m512i v1 = _mm512_loadu_si512(in + 64);
        const __m512i v2 = _mm512_loadu_si512(in + 128);
        const __m512i v3 = _mm512_loadu_si512(in + 192);
        _mm512_storeu_si512(out, _mm512_xor_si512(v0, v1));
        if (out_lines == 3) {
            _mm512_storeu_si512(out + 64, _mm512_xor_si512(v1, v2));
            _mm512_storeu_si512(out + 128, _mm512_xor_si512(v2, v3));
        } else {
            _mm512_storeu_si512(out + 64, _mm512_xor_si512(v2, v3));
        }
        out += 64 * out_lines;
    }
}

void BM_move_bytes(benchmark::State &state) {
    const auto width = static_cast<uint32_t>(state.range(0));
    const auto height = static_cast<uint32_t>(state.range(1));
    if (!__builtin_cpu_supports("avx512f")) {
        state.SkipWithError("needs AVX-512");
        return;
    }
    const auto page = random_page(width, height);
    const std::size_t out_lines = state.range(3) == 3 ? 2 : 3; // per 64 pixels
    std::vector<uint8_t> out(std::size_t{width} * height * out_lines);
    for (auto _ : state) {
        move_bytes_avx512(page.data(), std::size_t{width} * height, out.data(), out_lines);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    set_rate(state, width, height);
}

// Page sizes × (colour mode, pixel mode) pairs that encode to something.
void page_args(benchmark::internal::Benchmark *b) {
    b->ArgNames({"w", "h", "colour", "mode"});
    const int64_t sizes[][2] = {{64, 32}, {256, 64}, {1024, 256}};
    const int64_t formats[][2] = {{1, 0}, {1, 4}, {2, 0}, {2, 4}, {3, 0}, {3, 4}, {4, 3}, {4, 5}};
    for (const auto &size : sizes) {
        for (const auto &format : formats)
            b->Args({size[0], size[1], format[0], format[1]});
    }
}

// The same names for the full-colour cases only, which the copy is compared with.
void full_colour_args(benchmark::internal::Benchmark *b) {
    b->ArgNames({"w", "h", "colour", "mode"});
    const int64_t sizes[][2] = {{64, 32}, {256, 64}, {1024, 256}};
    for (const auto &size : sizes) {
        for (const int64_t mode : {3, 5})
            b->Args({size[0], size[1], 4, mode});
    }
}

BENCHMARK(BM_encodePixels)->Apply(page_args);
BENCHMARK(BM_encodePixels_portable)->Apply(page_args);
BENCHMARK(BM_reference)->Apply(page_args);
BENCHMARK(BM_copy_page)->Apply(full_colour_args);
BENCHMARK(BM_move_bytes)->Apply(full_colour_args);

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"Pixel encoding: the best kernel against the bit-by-bit reference",
                         "BM_encodePixels", "BM_reference", 20}) &&
    zel::bench::compare({"Pixel encoding: the portable kernel against the bit-by-bit reference",
                         "BM_encodePixels_portable", "BM_reference"}) &&
    zel::bench::compare({"Full colour: the best kernel against copying the page with memcpy",
                         "BM_encodePixels", "BM_copy_page"}) &&
    zel::bench::compare({"Full colour: the best kernel against reading the page and writing as "
                         "many bytes, computing nothing",
                         "BM_encodePixels", "BM_move_bytes"}) &&
    zel::bench::compare({"Full colour: reading the page and writing as many bytes against the "
                         "bit-by-bit reference (beyond the cache, the most any kernel can reach)",
                         "BM_move_bytes", "BM_reference"});

} // namespace
