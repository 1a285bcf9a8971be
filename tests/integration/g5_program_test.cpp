// The road of a G5 program: built through the exported entries, integrated, written to the
// embedded simulator with zelDual_cmd_ofsWriteFile, and read back by the simulator's reader.
#include <gtest/gtest.h>

#include <filesystem>

#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "program/screen_settings.h"
#include "program_road.h"
#include "render/pictures_area.h"
#include "sdk/crc.h"
#include "support/fake_clock.h"
#include "support/sim_fixture.h"

namespace zel {
namespace {

using namespace zel::test;
using exports::current_program_g5;

constexpr const char *kHost = "127.0.0.1";
constexpr uint16_t kScreenW = 160;
constexpr uint16_t kScreenH = 32;

class G5ProgramRoad : public SimTest {
  protected:
    void SetUp() override {
        zelDual_program_deleteProgram();
        start_sim(0x0051); // bit planes in bytes of 8
        zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(1), 0x0051, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram(); }

    int32_t write(const std::vector<uint8_t> &image, const char *name) {
        return zelDual_cmd_ofsWriteFile(kHost, port(), name, 0, static_cast<uint32_t>(image.size()),
                                        1, image.data());
    }

    // Area 1: text at (32, 8), 64 x 16. Area 2: a white picture inside a frame 2 pixels high
    // at (100, 0), 40 x 32.
    static void build_program() {
        FakeClock clock; // building talks to no peer: the first access need not sleep for real
        ZelProgramHeader_G5 h = program_header(1);
        ASSERT_EQ(zelDual_program_addProgram(&h), 0);
        const ZelAreaRecord_G5 text = area_record(0, 32, 8, 64, 16);
        const ZelAreaRecord_G5 picture = area_record(0, 100, 0, 40, 32);
        ASSERT_EQ(zelDual_program_AddArea(1, &text), 0);
        ASSERT_EQ(zelDual_program_AddArea(2, &picture), 0);
        const TextPageParams_G5 p = text_params(0, 1, 12, 1);
        ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt(1, "Hi", kDejaVu, &p), 0);
        write_png("white.png", 10, 10, 0xFFFFFF);
        write_png("strip.png", 8, 2, 0xFF0000);
        ASSERT_EQ(zelDual_program_pictureAreaAddPic(2, 0, &p, "white.png"), 0);
        const ZelFrameHeader_G5 f = frame_header(1);
        ASSERT_EQ(zelDual_program_picturesAreaAddFrame(2, &f, "strip.png"), 0);
    }
};

TEST_F(G5ProgramRoad, WrittenProgramReadsBackWithTheTextAtItsPlace) {
    sim::install_panel_output(sim(), panel_in("panel", kScreenW, kScreenH));
    build_program();
    const std::vector<uint8_t> image = integrate();
    ASSERT_FALSE(image.empty());
    ASSERT_EQ(write(image, "P001"), 0);
    const std::vector<uint8_t> file = landed_file(sim(), "P001"); // decoded areas point into it
    ASSERT_EQ(file, image);

    const sim::DecodeResult r = sim::decode_program(file);
    ASSERT_TRUE(r.ok()) << r.error->offset << ": " << r.error->what;
    ASSERT_EQ(r.program->areas.size(), 2u);
    const sim::ScreenMode mode{kScreenW, kScreenH, 1, 0, 1};

    // The text page, lit exactly where the library painted the text, at the area's place.
    const sim::DecodedArea &text = r.program->areas[0];
    ASSERT_EQ(text.pages.size(), 1u);
    sim::Rgb canvas{kScreenW, kScreenH, std::vector<uint32_t>(kScreenW * kScreenH, 0)};
    sim::paint_area_page(canvas, mode, text, 0);
    const PicturesArea &painted = *current_program_g5()->find_area_of<PicturesArea>(1);
    ASSERT_EQ(painted.pageBitmaps.size(), 1u);
    expect_text_page(canvas, painted.pageBitmaps[0], 32, 8, 64, 16);

    // The picture area: a frame 2 high, the white page lit all over its 36 x 28 at (102, 2),
    // the red strip around it.
    const sim::DecodedArea &picture = r.program->areas[1];
    ASSERT_TRUE(picture.frame);
    EXPECT_EQ(picture.frame->strip.size(), 2u);
    const auto rect = sim::draw_rect(mode, picture);
    ASSERT_TRUE(rect);
    EXPECT_EQ(rect->thickness, 2);
    EXPECT_EQ(rect->left, 102);
    EXPECT_EQ(rect->width, 36);
    EXPECT_EQ(rect->height, 28);
    canvas.pixels.assign(canvas.pixels.size(), 0);
    sim::paint_area_page(canvas, mode, picture, 0);
    for (uint32_t py = 0; py < kScreenH; ++py) {
        for (uint32_t px = 100; px < 140; ++px) {
            ASSERT_EQ(canvas.at(px, py), 0xFF0000u) << px << "," << py;
        }
    }
    EXPECT_EQ(canvas.at(99, 5), 0u);

    // The simulator's panel pictures and summary.
    for (const char *name :
         {"panel/P001-area0-page0.png", "panel/P001-area1-page0.png", "panel/P001-panel.png"})
        expect_png(name, kScreenW, kScreenH);
    const std::string json = text_file("panel/P001.json");
    EXPECT_NE(json.find("\"programName\": \"P001\""), std::string::npos) << json;
    EXPECT_NE(json.find("\"rect\": {\"x\": 100, \"y\": 0, \"width\": 40, \"height\": 32}"),
              std::string::npos);
    EXPECT_NE(json.find("\"thickness\": 2"), std::string::npos);
    EXPECT_NE(json.find("\"png\": \"P001-area0-page0.png\""), std::string::npos);

    // A file that the controller takes (its CRC fits) but that cannot be read is reported
    // with the offset where it stops making sense: the first page record of area 0, after
    // header, marks, count, block length, area record, frame mark and page count, claims a
    // byte more than its area holds.
    std::vector<uint8_t> damaged(image.begin(), image.end() - 4);
    const std::size_t firstPage = 23 + 4 + 9 + 1 + 2;
    damaged[firstPage] = static_cast<uint8_t>(damaged[firstPage] + 1);
    const uint32_t crc = crc32_ieee(damaged.data(), damaged.size());
    for (int i = 0; i < 4; ++i)
        damaged.push_back(static_cast<uint8_t>(crc >> (8 * i)));
    ASSERT_EQ(write(damaged, "P009"), 0);
    const std::string error = text_file("panel/P009.json");
    EXPECT_NE(error.find("\"error\": {\"offset\": " + std::to_string(firstPage)), std::string::npos)
        << error;
    EXPECT_FALSE(std::filesystem::exists("panel/P009-panel.png"));
}

TEST_F(G5ProgramRoad, TestProgramShortcutSendsP000AndSetsTheScreen) {
    ASSERT_EQ(zelDual_program_pictureArea(nullptr, kHost, port()), 0);
    EXPECT_EQ(g_screenColor.load(), 2);
    EXPECT_EQ(g_tranPixelMode.load(), 0u);
    EXPECT_EQ(g_doubleColor.load(), 2u);
    EXPECT_EQ(sim::file_system(sim()).files(sim::FileSpace::Ofs).size(), 1u);
    const std::vector<uint8_t> file = landed_file(sim(), "P000");
    const sim::DecodeResult r = sim::decode_program(file);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.program->header[7], 1);
    EXPECT_EQ(r.program->header[10], 0xFF);
    ASSERT_EQ(r.program->areas.size(), 1u);
    EXPECT_EQ(r.program->areas[0].x, 943);
    EXPECT_EQ(r.program->areas[0].width, 80);
    EXPECT_EQ(r.program->areas[0].height, 80);
    EXPECT_TRUE(r.program->areas[0].pages.empty());
    EXPECT_NE(current_program_g5(), nullptr) << "the program stays current";
}

} // namespace
} // namespace zel
