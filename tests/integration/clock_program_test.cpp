// The road of a G5 program with clocks: built through the exported entries, written to the
// embedded simulator, read back by its panel reader and shown at a given moment.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "clock/clock_fixtures.h"
#include "clock/time_area.h"
#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "program_road.h"
#include "sim/panel/clock_painter.h"
#include "sim/panel/program_decoder.h"
#include "support/sim_fixture.h"

namespace zel {
namespace {

using namespace zel::test;
using exports::current_program_g5;

constexpr const char *kHost = "127.0.0.1";
constexpr uint32_t kScreenW = 160;
constexpr uint32_t kScreenH = 32;
constexpr uint32_t kGreen = 0x00FF00;
constexpr uint32_t kYellow = 0xFFFF00;

class ClockRoad : public SimTest {
  protected:
    void SetUp() override {
        zelDual_program_deleteProgram();
        start_sim(0x0051);
        zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(2), 0x0051, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram(); }

    // A digital clock (date and time on two rows, green) at (16, 0), 96 x 32, and an analog
    // clock at (120, 0), 32 x 32, integrated and written as P001.
    std::vector<uint8_t> write_program() {
        ZelProgramHeader_G5 h = program_header(1);
        EXPECT_EQ(zelDual_program_addProgram(&h), 0);
        const ZelAreaRecord_G5 digital = area_record(2, 16, 0, 96, 32);
        const ZelAreaRecord_G5 analog = area_record(2, 120, 0, 32, 32);
        EXPECT_EQ(zelDual_program_AddArea(1, &digital), 0);
        EXPECT_EQ(zelDual_program_AddArea(2, &analog), 0);
        TimeContentRecord c{};
        c.arrMode = 1;
        c.fontColor = 2;
        c.fontName = kDejaVu;
        c.fontSize = 9;
        c.horizontalAlign = 1;
        c.dateEnable = 1;
        c.timeEnable = 1;
        EXPECT_EQ(zelDual_program_fontPath_timeAreaAddContent(1, &c), 0);
        AnalogClockRecord hands{};
        hands.hourHandLength = 7;
        hands.hourHandColor = 1;
        hands.minuteHandLength = 12;
        hands.minuteHandColor = 3;
        const ZelDialMarkColors marks{1, 1, 1};
        EXPECT_EQ(zelDual_program_timeAreaAddAnalogClock(2, &hands, 0, &marks), 0);
        const std::vector<uint8_t> image = integrate();
        EXPECT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P001", 0,
                                           static_cast<uint32_t>(image.size()), 1, image.data()),
                  0);
        return image;
    }
};

bool glyph_ink(const std::vector<uint8_t> &glyph, uint32_t x, uint32_t y) {
    const uint8_t byte = glyph[3 + y * glyph[0] + x / 8];
    return ((byte >> (7 - x % 8)) & 1) == 0; // a two-colour screen: ink is a 0 bit
}

TEST_F(ClockRoad, DecodedClockShowsTheGivenTimeWithTheLibrarysGlyphs) {
    sim::PanelOptions options = panel_in("panel", kScreenW, kScreenH, 2);
    options.clockTime = sim::parse_clock_time("2026-11-15 13:45:30");
    sim::install_panel_output(sim(), options);
    const std::vector<uint8_t> image = write_program();
    const std::vector<uint8_t> file = landed_file(sim(), "P001"); // decoded areas point into it
    ASSERT_EQ(file, image);
    const sim::ScreenMode mode{kScreenW, kScreenH, 2, 0, 1};
    const sim::DecodeResult r = sim::decode_program(file, mode);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 2u);
    const sim::DecodedArea &digital = r.program->areas[0];
    ASSERT_TRUE(digital.clock);
    ASSERT_EQ(digital.clock->items.size(), 6u);

    const sim::ClockTime at = *options.clockTime;
    sim::Rgb shown{kScreenW, kScreenH, std::vector<uint32_t>(kScreenW * kScreenH, 0)};
    sim::paint_clock(shown, mode, digital, at);
    sim::DecodedArea background = digital; // the same area without its items
    background.clock->items.clear();
    sim::Rgb bare{kScreenW, kScreenH, std::vector<uint32_t>(kScreenW * kScreenH, 0)};
    sim::paint_clock(bare, mode, background, at);

    // Every field shows the digits of the given moment in the library's own glyphs, in the
    // clock's colour over the background, at the item's place in the area.
    const TimeArea &area = *current_program_g5()->find_area_of<TimeArea>(1);
    const ParsedTable digits = parse_table(area.digitTable);
    const std::vector<std::vector<std::size_t>> values = {{2, 0, 2, 6}, {1, 1}, {1, 5},
                                                          {1, 3},       {4, 5}, {3, 0}};
    for (std::size_t i = 0; i < 6; ++i) {
        const sim::DecodedClockItem &item = digital.clock->items[i];
        ASSERT_EQ(item.type, i);
        for (std::size_t k = 0; k < values[i].size(); ++k) {
            const std::vector<uint8_t> &glyph = digits.glyphs[values[i][k]];
            const uint32_t width = glyph[1];
            for (uint32_t gy = 0; gy < glyph[2]; ++gy) {
                for (uint32_t gx = 0; gx < width; ++gx) {
                    const uint32_t px = 16 + item.x + static_cast<uint32_t>(k) * width + gx;
                    const uint32_t py = item.y + gy;
                    if (px >= 112) continue; // beyond the area
                    EXPECT_EQ(shown.at(px, py), glyph_ink(glyph, gx, gy) ? kGreen : bare.at(px, py))
                        << "item " << i << " cell " << k << " at " << px << "," << py;
                }
            }
        }
    }

    // The analog clock: at 13:45:30 the minute hand (12 long, yellow) points nearly left.
    const sim::DecodedArea &analog = r.program->areas[1];
    ASSERT_TRUE(analog.clock);
    sim::paint_clock(shown, mode, analog, at);
    const double a = (45.5 * 6.0) * 3.14159265358979 / 180.0;
    EXPECT_EQ(shown.at(120 + 16 + static_cast<uint32_t>(std::lround(std::sin(a) * 8)),
                       16 + static_cast<uint32_t>(std::lround(-std::cos(a) * 8))),
              kYellow);

    // The panel shows the clocks at the moment of its command line.
    const std::string json = text_file("panel/P001.json");
    EXPECT_NE(json.find("\"time\": \"2026-11-15 13:45:30\", \"png\": \"P001-area0-page0.png\""),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("\"png\": \"P001-area1-page0.png\""), std::string::npos);
    EXPECT_NE(json.find("\"unitCount\": 6"), std::string::npos);
    expect_png("panel/P001-area0-page0.png", kScreenW, kScreenH);
    expect_png("panel/P001-panel.png", kScreenW, kScreenH);
}

} // namespace
} // namespace zel
