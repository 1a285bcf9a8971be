// The simulator's reader of G6 program and data files, fed with anything. The input is a pair:
// a u16 (little-endian) length of the program file, the program file, then the data file. Each
// pair is read twice: as it comes (mostly stopped by the CRCs) and with both files' last four
// bytes replaced by the right CRCs, so that the structure behind the checks gets exercised; and
// each time for every kind of screen, which clock bodies need, with everything drawn.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>
#include <zlib.h>

#include "sim/panel/clock_painter.h"
#include "sim/panel/panel_png_g6.h"
#include "sim/panel/program_decoder_g6.h"

namespace {

void fix_crc(std::vector<uint8_t> &file) {
    if (file.size() < 4) return;
    const auto crc =
        static_cast<uint32_t>(crc32(0L, file.data(), static_cast<uInt>(file.size() - 4)));
    for (std::size_t i = 0; i < 4; ++i) {
        file[file.size() - 4 + i] = static_cast<uint8_t>(crc >> (8 * i));
    }
}

void read_all(const std::vector<uint8_t> &program, const std::vector<uint8_t> &data) {
    using namespace zel::sim;
    static const ScreenMode kModes[] = {{96, 48, 1, 0, 1},
                                        {96, 48, 2, 4, 2},
                                        {96, 48, 4, 3, 1},
                                        {96, 48, 4, 4, 1},
                                        {96, 48, 4, 5, 1}};
    static const ClockTime kTime{2026, 11, 15, 13, 45, 30};
    for (const ScreenMode &mode : kModes) {
        const DecodeResultG6 r = decode_program_g6(program, data, mode);
        (void)panel_json_g6("P001", program, data, mode, r, {"a.png", "b.png"}, kTime);
        if (!r.ok()) continue;
        Rgb canvas{mode.width, mode.height,
                   std::vector<uint32_t>(static_cast<std::size_t>(mode.width) * mode.height, 0)};
        for (const DecodedAreaG6 &area : r.program->areas) {
            const DecodedArea view = panel_area(area);
            for (std::size_t page = 0; page < view.pages.size(); ++page) {
                paint_area_page(canvas, mode, view, page);
            }
            paint_clock(canvas, mode, view, kTime);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, std::size_t size) {
    if (size < 2) return 0;
    const auto declared =
        static_cast<std::size_t>(bytes[0]) | (static_cast<std::size_t>(bytes[1]) << 8);
    const std::size_t split = std::min(size - 2, declared);
    std::vector<uint8_t> program(bytes + 2, bytes + 2 + split);
    std::vector<uint8_t> data(bytes + 2 + split, bytes + size);
    read_all(program, data);
    fix_crc(program);
    fix_crc(data);
    read_all(program, data);
    return 0;
}
