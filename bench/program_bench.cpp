// Integration of a typical program: four areas on a 256 × 32 two-colour screen, two text areas
// of ten pages each, a picture area of four pictures and a digital clock. The G5 program and
// the G6 program of the same content are each built once and integrated over and over (every
// integration renders and encodes everything again); the ratio is G6 against G5.
#include "support/quiet_stdout.h"
#include "support/ratio.h"

#include "../tests/program/program_fixtures.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

using namespace zel::test;

constexpr uint16_t kG5Type = 0x0051;
constexpr uint16_t kG6Type = 0x0063;

// The library writes its debugging files into the working directory: run in a directory of
// our own.
void enter_scratch_directory() {
    static const bool entered = [] {
        char path[] = "/tmp/zel-program-bench-XXXXXX";
        return mkdtemp(path) != nullptr && chdir(path) == 0;
    }();
    if (!entered) std::abort();
}

// Ten lines of text, one page each in a 16-pixel-high area.
std::string ten_lines(const char *what) {
    std::string text;
    for (int i = 1; i <= 10; ++i)
        text += std::string(what) + " " + std::to_string(i) + (i < 10 ? "\n" : "");
    return text;
}

TimeContentRecord clock_content() {
    TimeContentRecord c;
    std::memset(&c, 0, sizeof c);
    c.arrMode = 1;
    c.fontColor = 2;
    c.fontName = kDejaVu;
    c.fontSize = 9;
    c.horizontalAlign = 1;
    c.dateEnable = 1;
    c.timeEnable = 1;
    return c;
}

const char *const kPictures[] = {"red.png", "green.png", "yellow.png", "white.png"};

void write_pictures() {
    const uint32_t colours[] = {0xFF0000, 0x00FF00, 0xFFFF00, 0xFFFFFF};
    for (int i = 0; i < 4; ++i)
        write_png(kPictures[i], 64, 32, colours[i]);
}

bool build_g5() {
    zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(2), kG5Type, 1);
    ZelProgramHeader_G5 h = program_header(1);
    const ZelAreaRecord_G5 areas[] = {area_record(0, 0, 0, 128, 16), area_record(0, 0, 16, 128, 16),
                                      area_record(0, 128, 0, 64, 32),
                                      area_record(2, 192, 0, 64, 32)};
    bool ok = zelDual_program_addProgram(&h) == 0;
    for (uint16_t id = 1; id <= 4; ++id)
        ok = ok && zelDual_program_AddArea(id, &areas[id - 1]) == 0;
    const TextPageParams_G5 p = text_params(1, 1, 12, 1);
    ok = ok && zelDual_program_fontPath_picturesAreaAddTxt(1, ten_lines("Car park").c_str(),
                                                           kDejaVu, &p) == 0;
    ok = ok && zelDual_program_fontPath_picturesAreaAddTxt(2, ten_lines("Level").c_str(), kDejaVu,
                                                           &p) == 0;
    for (uint16_t i = 0; i < 4; ++i)
        ok = ok && zelDual_program_pictureAreaAddPic(3, i, &p, kPictures[i]) == 0;
    const TimeContentRecord c = clock_content();
    return ok && zelDual_program_fontPath_timeAreaAddContent(4, &c) == 0;
}

bool build_g6() {
    zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(2), kG6Type, 1);
    const ZelProgramHeader_G6 h = program_header_g6(2);
    const ZelAreaRecord_G6 areas[] = {
        area_record_g6(0, 0, 0, 128, 16), area_record_g6(0, 0, 16, 128, 16),
        area_record_g6(0, 128, 0, 64, 32), area_record_g6(2, 192, 0, 64, 32)};
    bool ok = zelDual_program_addProgram_G6(&h) == 0;
    for (uint16_t id = 1; id <= 4; ++id)
        ok = ok && zelDual_program_addArea_G6(id, &areas[id - 1]) == 0;
    const TextPageParams_G6 p = text_params_g6(1, 1, 12, 1);
    ok = ok && zelDual_program_fontPath_picturesAreaAddTxt_G6(1, ten_lines("Car park").c_str(),
                                                              kDejaVu, &p) == 0;
    ok = ok && zelDual_program_fontPath_picturesAreaAddTxt_G6(2, ten_lines("Level").c_str(),
                                                              kDejaVu, &p) == 0;
    for (uint16_t i = 0; i < 4; ++i)
        ok = ok && zelDual_program_pictureAreaAddPic_G6(3, i, &p, kPictures[i]) == 0;
    const TimeContentRecord c = clock_content();
    return ok && zelDual_program_fontPath_timeAreaAddContent_G6(4, &c) == 0;
}

void BM_IntegrateG5(benchmark::State &state) {
    enter_scratch_directory();
    zel::bench::QuietStdout quiet;
    write_pictures();
    if (!build_g5()) {
        zelDual_program_deleteProgram();
        state.SkipWithError("building the G5 program failed");
        return;
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        ZelProgramFile_G5 file;
        std::memset(&file, 0, sizeof file);
        if (zelDual_program_IntegrateProgramFile(&file) != 0) {
            state.SkipWithError("integration failed");
            break;
        }
        bytes = file.fileLen;
        zelDual_program_freeBuffer(&file);
    }
    zelDual_program_deleteProgram();
    state.counters["file bytes"] = static_cast<double>(bytes);
}

void BM_IntegrateG6(benchmark::State &state) {
    enter_scratch_directory();
    zel::bench::QuietStdout quiet;
    write_pictures();
    if (!build_g6()) {
        zelDual_program_deleteProgram_G6();
        state.SkipWithError("building the G6 program failed");
        return;
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        ZelProgramFile_G6 files;
        std::memset(&files, 0, sizeof files);
        if (zelDual_program_IntegrateProgramFile_G6(&files) != 0) {
            state.SkipWithError("integration failed");
            break;
        }
        bytes = files.programFileLen + files.dataFileLen;
        zelDual_program_freeBuffer_G6(&files);
    }
    zelDual_program_deleteProgram_G6();
    state.counters["file bytes"] = static_cast<double>(bytes);
}

BENCHMARK(BM_IntegrateG5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IntegrateG6)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool kRatios =
    zel::bench::compare({"Integration of the typical program: G5 against G6 of the same content",
                         "BM_IntegrateG5", "BM_IntegrateG6"});

} // namespace
