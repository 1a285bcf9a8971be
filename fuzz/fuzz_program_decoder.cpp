// The simulator's reader of G5 program files, fed with anything. Every input is read twice:
// as it comes (mostly stopped by the CRC) and with its last four bytes replaced by the right
// CRC, so that the structure behind the check gets exercised; and each time for every kind of
// screen, which clock bodies need, with their clocks drawn.
#include <cstddef>
#include <cstdint>
#include <vector>
#include <zlib.h>

#include "sim/panel/clock_painter.h"
#include "sim/panel/panel_png.h"
#include "sim/panel/program_decoder.h"

namespace {

void read_all(const std::vector<uint8_t> &file) {
    using namespace zel::sim;
    static const ScreenMode kModes[] = {{96, 48, 1, 0, 1},
                                        {96, 48, 2, 4, 2},
                                        {96, 48, 3, 0, 1},
                                        {96, 48, 4, 3, 1},
                                        {96, 48, 4, 5, 1}};
    static const ClockTime kTime{2026, 11, 15, 13, 45, 30};
    const DecodeResult plain = decode_program(file);
    for (const ScreenMode &mode : kModes) {
        // Once as the structure alone, once with the screen that clock bodies need.
        for (const DecodeResult &r : {plain, decode_program(file, mode)}) {
            if (!r.ok()) continue;
            Rgb canvas{
                mode.width, mode.height,
                std::vector<uint32_t>(static_cast<std::size_t>(mode.width) * mode.height, 0)};
            for (const DecodedArea &area : r.program->areas) {
                for (std::size_t page = 0; page < area.pages.size(); ++page) {
                    paint_area_page(canvas, mode, area, page);
                }
                paint_clock(canvas, mode, area, kTime);
            }
            (void)panel_json("FUZZ", file, mode, r, {"a.png", "b.png"}, kTime);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    std::vector<uint8_t> file(data, data + size);
    read_all(file);
    if (file.size() >= 4) {
        const auto crc =
            static_cast<uint32_t>(crc32(0L, file.data(), static_cast<uInt>(file.size() - 4)));
        for (std::size_t i = 0; i < 4; ++i) {
            file[file.size() - 4 + i] = static_cast<uint8_t>(crc >> (8 * i));
        }
        read_all(file);
    }
    return 0;
}
