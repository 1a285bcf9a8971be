// The road of a G6 program: built through the exported entries, integrated into its program
// and data files, both written to the embedded simulator with zelDual_cmd_ofsWriteFile, and
// read back by the simulator's reader.
#include <gtest/gtest.h>

#include <cairo.h>
#include <filesystem>

#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "program_road.h"
#include "render/pictures_area_g6.h"
#include "sim/panel/clock_painter.h"
#include "sim/panel/program_decoder_g6.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/sim_fixture.h"

namespace zel {
namespace {

using namespace zel::test;

constexpr const char *kHost = "127.0.0.1";
constexpr uint16_t kScreenW = 160;
constexpr uint16_t kScreenH = 32;
// A G6 controller whose pixels go in 32-bit words of bit planes.
constexpr uint16_t kG6Type = 0x0063;
const sim::ScreenMode kMode{kScreenW, kScreenH, 1, 4, 1};

class G6ProgramRoad : public SimTest {
  protected:
    void SetUp() override {
        zelDual_program_deleteProgram_G6();
        start_sim(kG6Type);
        zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(1), kG6Type, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram_G6(); }

    int32_t write(const std::vector<uint8_t> &bytes, const std::string &name, uint8_t type) {
        return zelDual_cmd_ofsWriteFile(kHost, port(), name.c_str(), type,
                                        static_cast<uint32_t>(bytes.size()), 1, bytes.data());
    }

    // Area 1: a lit background at (96, 0), 64 x 32. Area 2: text at (32, 8), 64 x 16. Area 3:
    // a white picture with sound at (0, 0), 32 x 32.
    static void build_program() {
        FakeClock clock; // building talks to no peer: the first access need not sleep for real
        StdoutCapture quiet;
        const ZelProgramHeader_G6 h = program_header_g6(1);
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
        const ZelAreaRecord_G6 background = area_record_g6(11, 96, 0, 64, 32);
        const ZelAreaRecord_G6 text = area_record_g6(0, 32, 8, 64, 16);
        const ZelAreaRecord_G6 picture = area_record_g6(0, 0, 0, 32, 32);
        ASSERT_EQ(zelDual_program_addArea_G6(1, &background), 0);
        ASSERT_EQ(zelDual_program_addArea_G6(2, &text), 0);
        ASSERT_EQ(zelDual_program_addArea_G6(3, &picture), 0);
        const TextPageParams_G6 p = text_params_g6(0, 1, 12, 1);
        ASSERT_EQ(zelDual_program_backGroundColor_G6(1, &p, 1), 0);
        ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt_G6(2, "Hi", kDejaVu, &p), 0);
        write_png("white.png", 32, 32, 0xFFFFFF);
        ASSERT_EQ(zelDual_program_pictureAreaAddPic_G6(3, 0, &p, "white.png"), 0);
        const ZelSoundParams_G6 s{{1, 2, 3, 4}, 5, 6, {7, 8, 9, 10}};
        ASSERT_EQ(zelDual_program_pictureAreaEnableSound_G6(3, &s, "Welcome"), 0);
    }
};

TEST_F(G6ProgramRoad, BothFilesLandAndReadBackWithEveryAreaAtItsPlace) {
    sim::install_panel_output(sim(), panel_in("panel", kScreenW, kScreenH));
    build_program();
    const FilesG6 files = integrate_g6();
    ASSERT_FALSE(files.program.empty());
    ASSERT_EQ(write(files.program, files.programName, files.programType), 0);
    EXPECT_FALSE(std::filesystem::exists("panel/P001.json")) << "the data file is missing";
    ASSERT_EQ(write(files.data, files.dataName, files.dataType), 0);
    const std::vector<uint8_t> program = landed_file(sim(), "P001");
    const std::vector<uint8_t> data = landed_file(sim(), "D001");
    ASSERT_EQ(program, files.program);
    ASSERT_EQ(data, files.data);

    const sim::DecodeResultG6 r = sim::decode_program_g6(program, data, kMode);
    ASSERT_TRUE(r.ok()) << r.inDataFile << " " << r.error->offset << ": " << r.error->what;
    EXPECT_EQ(r.program->hasBackground, 1);
    ASSERT_EQ(r.program->areas.size(), 3u);

    // The background: one page, lit all over its rectangle.
    sim::Rgb canvas{kScreenW, kScreenH, std::vector<uint32_t>(kScreenW * kScreenH, 0)};
    sim::paint_area_page(canvas, kMode, sim::panel_area(r.program->areas[0]), 0);
    EXPECT_EQ(canvas.at(96, 0), 0xFF0000u);
    EXPECT_EQ(canvas.at(159, 31), 0xFF0000u);
    EXPECT_EQ(canvas.at(95, 0), 0u);

    // The text page, lit exactly where the library painted the text.
    canvas.pixels.assign(canvas.pixels.size(), 0);
    sim::paint_area_page(canvas, kMode, sim::panel_area(r.program->areas[1]), 0);
    const auto &painted = *exports::current_program_g6()->find_area_of<PicturesArea_g6>(2);
    ASSERT_EQ(painted.pageBitmaps.size(), 1u);
    expect_text_page(canvas, painted.pageBitmaps[0], 32, 8, 64, 16);

    const sim::DecodedAreaG6 &picture = r.program->areas[2];
    ASSERT_TRUE(picture.sound);
    EXPECT_EQ(picture.sound->text, "Welcome");
    ASSERT_EQ(picture.pages.size(), 1u);
    EXPECT_EQ(picture.pages[0].dataOffset, 14u + 8 * 32 + 8 * 16)
        << "after the background's page and the text's";

    // The simulator shows the pair once both files have landed.
    const std::string json = text_file("panel/P001.json");
    EXPECT_NE(json.find("\"dataName\": \"D001\""), std::string::npos) << json;
    EXPECT_NE(json.find("\"hasBackground\": 1"), std::string::npos);
    EXPECT_NE(json.find("\"text\": \"Welcome\""), std::string::npos);
    for (const char *name : {"panel/P001-area0-page0.png", "panel/P001-area1-page0.png",
                             "panel/P001-area2-page0.png", "panel/P001-panel.png"})
        expect_png(name, kScreenW, kScreenH);
    // The whole panel: the picture lit, the background lit behind nothing, dark in between.
    cairo_surface_t *png = cairo_image_surface_create_from_png("panel/P001-panel.png");
    cairo_surface_flush(png);
    const auto *pixels = cairo_image_surface_get_data(png);
    const int stride = cairo_image_surface_get_stride(png);
    auto red = [&](int px, int py) {
        return pixels[py * stride + px * 4 + 2] == 0xFF; // B, G, R, A
    };
    EXPECT_TRUE(red(5, 5));
    EXPECT_TRUE(red(150, 30));
    EXPECT_FALSE(red(33, 1));
    cairo_surface_destroy(png);
}

// A full-colour 0x66 controller in pixel mode 5: a digital clock takes fixed glyph items for its
// two ':', an analog clock the long hand record; both bitmaps go to the data file.
TEST_F(G6ProgramRoad, ClocksGoToBothFilesAndShowAtTheSimulatorsTime) {
    start_sim(0x0166);
    zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(4), 0x0166, 1);
    sim::PanelOptions options = panel_in("panel", kScreenW, kScreenH, 4);
    options.clockTime = sim::ClockTime{2026, 11, 15, 12, 34, 56};
    sim::install_panel_output(sim(), options);
    {
        FakeClock clock;
        StdoutCapture quiet;
        const ZelProgramHeader_G6 h = program_header_g6(2);
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
        ZelAreaRecord_G6 digital = area_record_g6(2, 0, 0, 128, 32);
        digital.Transparency = 7;
        const ZelAreaRecord_G6 analog = area_record_g6(2, 128, 0, 32, 32);
        ASSERT_EQ(zelDual_program_addArea_G6(1, &digital), 0);
        ASSERT_EQ(zelDual_program_addArea_G6(2, &analog), 0);
    }
    TimeContentRecord content{};
    content.fontColor = 0x00FF0000;
    content.fontName = kDejaVu;
    content.fontSize = 12;
    content.timeEnable = 1;
    content.timeFormat = 0;
    ASSERT_EQ(zelDual_program_fontPath_timeAreaAddContent_G6(1, &content), 0);
    AnalogClockRecord hands{};
    hands.hourHandLength = 8;
    hands.minuteHandLength = 12;
    hands.hourHandColor = 0x00FFFFFF;
    const ZelDialMarkColors marks{0x00FFFFFF, 0x00FFFFFF, 0};
    ASSERT_EQ(zelDual_program_timeAreaAddAnalogClock_G6(2, &hands, 0, &marks), 0);
    const ZelBattleTime_G6 battle{0x0201, {3, 4, 5, 6, 7, 8, 9}};
    ASSERT_EQ(zelDual_program_timeAreaSetBattleTime_G6(1, &battle), 0);

    const FilesG6 files = integrate_g6();
    ASSERT_FALSE(files.program.empty());
    ASSERT_EQ(write(files.program, files.programName, files.programType), 0);
    ASSERT_EQ(write(files.data, files.dataName, files.dataType), 0);

    const sim::ScreenMode mode{kScreenW, kScreenH, 4, 5, 1};
    const sim::DecodeResultG6 r = sim::decode_program_g6(files.program, files.data, mode);
    ASSERT_TRUE(r.ok()) << r.inDataFile << " " << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 2u);
    const sim::DecodedClockG6 &d = *r.program->areas[0].clock;
    EXPECT_EQ(d.battleRecord[1], 1);
    EXPECT_EQ(d.battleRecord[2], 1);
    EXPECT_EQ(d.battleRecord[11], 7) << "Transparency";
    EXPECT_EQ(d.clock.unitCount, 5);
    std::vector<uint8_t> types;
    for (const auto &item : d.clock.items)
        types.push_back(item.type);
    EXPECT_EQ(types, (std::vector<uint8_t>{12, 12, 3, 4, 5}));
    const sim::DecodedClockG6 &a = *r.program->areas[1].clock;
    ASSERT_EQ(a.clock.items.size(), 1u);
    EXPECT_EQ(a.clock.items[0].table.size(), 23u);
    EXPECT_EQ(r.program->areas[1].bodyLength, 77u);

    // The panel shows the clock at the simulator's time: the digits are lit in red.
    const std::string json = text_file("panel/P002.json");
    EXPECT_NE(json.find("\"time\": \"2026-11-15 12:34:56\""), std::string::npos) << json;
    sim::Rgb canvas{kScreenW, kScreenH, std::vector<uint32_t>(kScreenW * kScreenH, 0)};
    sim::paint_clock(canvas, mode, sim::panel_area(r.program->areas[0]), *options.clockTime);
    std::size_t red = 0;
    for (const uint32_t px : canvas.pixels)
        red += px == 0xFF0000u;
    EXPECT_GT(red, 20u);
    EXPECT_TRUE(std::filesystem::exists("panel/P002-area1-page0.png"));
}

} // namespace
} // namespace zel
