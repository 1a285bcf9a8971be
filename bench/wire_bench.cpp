// Framing and unframing of packets next to a plain copy of the same bytes. The packets carry
// random bytes, so about one byte in 64 needs an escape (a file block looks like that).
#include "support/ratio.h"
#include "wire/packet.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

std::vector<uint8_t> random_bytes(std::size_t n) {
    std::mt19937 rng(5);
    std::vector<uint8_t> v(n);
    for (auto &b : v)
        b = static_cast<uint8_t>(rng());
    return v;
}

void BM_Frame(benchmark::State &state) {
    const auto inner = random_bytes(static_cast<std::size_t>(state.range(0)));
    std::vector<uint8_t> out;
    for (auto _ : state) {
        zel::frame_bytes(inner, out);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

void BM_Unframe(benchmark::State &state) {
    std::vector<uint8_t> frame;
    zel::frame_bytes(random_bytes(static_cast<std::size_t>(state.range(0))), frame);
    std::vector<uint8_t> out(frame.size());
    for (auto _ : state) {
        const std::size_t n = zel::unframe_bytes(frame, out.data());
        benchmark::DoNotOptimize(n);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

// The reference: the packet's bytes copied into a buffer sized for them, as framing does.
void BM_Memcpy(benchmark::State &state) {
    const auto inner = random_bytes(static_cast<std::size_t>(state.range(0)));
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.resize(inner.size());
        std::memcpy(out.data(), inner.data(), inner.size());
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
        out.clear();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

// A short command, a default block, a large block (unframing takes at most 32767 bytes).
void sizes(benchmark::internal::Benchmark *b) {
    b->ArgName("bytes");
    for (const int64_t n : {64, 1024, 16000})
        b->Arg(n);
}

BENCHMARK(BM_Frame)->Apply(sizes);
BENCHMARK(BM_Unframe)->Apply(sizes);
BENCHMARK(BM_Memcpy)->Apply(sizes);

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"Framing against memcpy of the same bytes", "BM_Frame", "BM_Memcpy"}) &&
    zel::bench::compare({"Unframing against memcpy of the same bytes", "BM_Unframe", "BM_Memcpy"});

} // namespace
