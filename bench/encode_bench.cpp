// Pixel encoding speed: the library's encoder next to the position-by-position reference that
// the tests compare it with, on small, medium and large pages in every colour mode and pixel
// mode that produces output. Reports megapixels per second ("Mpix/s"). BM_encodePixels runs
// the kernel the processor gets (AVX2 where available); BM_encodePixels_portable forces the
// kernel that runs everywhere else. BM_copy_page copies the page's bytes with memcpy: the
// floor for full colour, whose kernels read the whole page and write most of it. The ratios
// are printed at the end.
#include "render/area.h"
#include "render/encode.h"
#include "render/plane_packer.h"

#include "../tests/support/pixel_reference.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>

#include <cstring>
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

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"Pixel encoding: the best kernel against the bit-by-bit reference",
                         "BM_encodePixels", "BM_reference", 20}) &&
    zel::bench::compare({"Pixel encoding: the portable kernel against the bit-by-bit reference",
                         "BM_encodePixels_portable", "BM_reference"}) &&
    zel::bench::compare({"Full colour: the best kernel against copying the page with memcpy",
                         "BM_encodePixels", "BM_copy_page"});

} // namespace
