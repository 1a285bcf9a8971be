// The checks over buffers of a block's and a program file's size: the library's CRC-32 next to
// zlib's own (the library calls zlib, so they should match), and the sixteen-byte CRC-16 next
// to the byte-table loop.
#include "sdk/crc.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <random>
#include <vector>

namespace {

std::vector<uint8_t> random_bytes(std::size_t n) {
    std::mt19937 rng(32);
    std::vector<uint8_t> v(n);
    for (auto &b : v)
        b = static_cast<uint8_t>(rng());
    return v;
}

template <class F> void run_check(benchmark::State &state, F check) {
    const auto data = random_bytes(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        auto crc = check(data.data(), data.size());
        benchmark::DoNotOptimize(crc);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_Crc32(benchmark::State &state) {
    run_check(state, zel::crc32_ieee);
}
void BM_Crc32Zlib(benchmark::State &state) {
    run_check(state, [](const uint8_t *p, std::size_t n) {
        return ::crc32(::crc32(0L, Z_NULL, 0), p, static_cast<uInt>(n));
    });
}
void BM_Crc16(benchmark::State &state) {
    run_check(state, zel::crc16);
}
void BM_Crc16Bytewise(benchmark::State &state) {
    run_check(state, zel::crc16_bytewise);
}

// A header's body, a block, a large block, a program file.
void sizes(benchmark::internal::Benchmark *b) {
    b->ArgName("bytes");
    for (const int64_t n : {64, 1024, 16384, 1 << 20})
        b->Arg(n);
}

BENCHMARK(BM_Crc32)->Apply(sizes);
BENCHMARK(BM_Crc32Zlib)->Apply(sizes);
BENCHMARK(BM_Crc16)->Apply(sizes);
BENCHMARK(BM_Crc16Bytewise)->Apply(sizes);

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"CRC-32: the library against zlib's crc32", "BM_Crc32", "BM_Crc32Zlib"}) &&
    zel::bench::compare(
        {"CRC-16: sixteen-byte steps against the byte-table loop", "BM_Crc16", "BM_Crc16Bytewise"});

} // namespace
