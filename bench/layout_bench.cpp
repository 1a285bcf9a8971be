// Line breaking and page rendering of picture areas.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>
#include <string>
#include <unistd.h>

#include "render/area.h"
#include "render/line_breaking.h"
#include "render/pictures_area.h"
#include "render/text_painter.h"
#include "sdk/bytes.h"
#include "support/ratio.h"

namespace {

const char *const kDejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char *const kWenQuanYi = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";

// GBK text of `characters` characters, Latin and Chinese mixed, without line ends.
std::string mixedText(std::size_t characters) {
    std::mt19937 rng(1);
    std::string out;
    for (std::size_t i = 0; i < characters; ++i) {
        if (rng() % 2 == 0) {
            out += static_cast<char>('a' + rng() % 26);
        } else {
            out += static_cast<char>(0xB0 + rng() % 0x27);
            out += static_cast<char>(0xA1 + rng() % 0x5E);
        }
    }
    return out;
}

template <class Measurer> void breakText(benchmark::State &state) {
    zel::TKarea area;
    area.fontPath = kWenQuanYi;
    const int32_t width = 512; // about 30 characters of 16 pixels a line
    zel::TextScratch scratch(area, width, 32, 21.0, 0, 0, true);
    std::string text = mixedText(static_cast<std::size_t>(state.range(0)));
    zel::TKarea::convertGbkToUcs2(text);
    std::size_t lines = 0;
    for (auto _ : state) {
        Measurer measurer(scratch.context(), text);
        lines = zel::break_lines(text, width, measurer).size();
        benchmark::DoNotOptimize(lines);
    }
    state.counters["lines"] = static_cast<double>(lines);
}

void BM_BreakLinesLiteral(benchmark::State &state) {
    breakText<zel::LiteralPrefixMeasurer>(state);
}
void BM_BreakLinesIncremental(benchmark::State &state) {
    breakText<zel::IncrementalPrefixMeasurer>(state);
}
BENCHMARK(BM_BreakLinesLiteral)->Arg(200)->Arg(2000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_BreakLinesIncremental)->Arg(200)->Arg(2000)->Unit(benchmark::kMicrosecond);

[[maybe_unused]] const bool kRatios = zel::bench::compare(
    {"Line breaking: the incremental measurer against measuring every prefix anew",
     "BM_BreakLinesIncremental", "BM_BreakLinesLiteral"});

// A 12-point text on three pages of a 128 × 32 area (one line of 16-pixel text per page, as
// the rows are 19 pixels), painted and encoded for the default screen.
void BM_RenderThreePages(benchmark::State &state) {
    // Each painted page is also written to "0.png" in the working directory.
    char dir[] = "/tmp/zel_bench_XXXXXX";
    if (::mkdtemp(dir) == nullptr || ::chdir(dir) != 0) {
        state.SkipWithError("no scratch directory");
        return;
    }
    zel::PicturesArea area;
    area.set_area_header(0, {0, 0, 128, 32});
    zel::TextStyleRecord style;
    style.arrMode = zel::MULTILINE;
    style.fontSize = 12;
    style.fontColor = 1;
    area.addTextByPath("First page\nSecond page\nThird page", kDejaVu, style, {});
    if (area.PageString.size() != 3) {
        state.SkipWithError("the text does not make three pages");
        return;
    }
    for (auto _ : state) {
        area.renderPages();
        benchmark::DoNotOptimize(area.encodedTotal);
    }
    state.counters["pages"] = static_cast<double>(area.pageCount);
}
BENCHMARK(BM_RenderThreePages)->Unit(benchmark::kMicrosecond);

} // namespace
