// The clock entries as a host calls them: the area kind, the refusals, the G6 messages, a G5
// program file with a digital and an analog clock.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

#include "clock/time_area.h"
#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "support/capture.h"

namespace zel {
namespace {

using namespace zel::test;
using exports::current_program_g5;

TimeContentRecord content_record(const char *font) {
    TimeContentRecord r{};
    r.arrMode = 1;
    r.fontColor = 3;
    r.fontName = font;
    r.fontSize = 9;
    r.horizontalAlign = 1;
    r.dateEnable = 1;
    r.dateFormat = 0;
    r.timeEnable = 1;
    r.timeFormat = 0;
    return r;
}

AnalogClockRecord hands_record() {
    AnalogClockRecord r{};
    r.hourHandLength = 8;
    r.hourHandColor = 1;
    r.minuteHandLength = 12;
    r.minuteHandColor = 2;
    r.secondHandLength = 14;
    r.secondHandColor = 3;
    return r;
}

class ClockEntries : public ::testing::Test {
  protected:
    void SetUp() override {
        zelDual_program_deleteProgram();
        zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(1), 0x0051, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram(); }

    static void g5_program_with_clocks() {
        ZelProgramHeader_G5 h = program_header(3);
        ASSERT_EQ(zelDual_program_addProgram(&h), 0);
        const ZelAreaRecord_G5 digital = area_record(2, 0, 0, 96, 32);
        const ZelAreaRecord_G5 analog = area_record(2, 96, 0, 32, 32);
        ASSERT_EQ(zelDual_program_AddArea(1, &digital), 0);
        ASSERT_EQ(zelDual_program_AddArea(2, &analog), 0);
    }
};

TEST_F(ClockEntries, AreaTypeTwoMakesAClockAreaAndOtherAreasAreRefused) {
    g5_program_with_clocks();
    ProgramObj *program = current_program_g5();
    ASSERT_NE(program->find_area_of<TimeArea>(1), nullptr);
    EXPECT_EQ(program->area_count(), 2u);

    const ZelAreaRecord_G5 text = area_record(0, 0, 0, 8, 8);
    ASSERT_EQ(zelDual_program_AddArea(3, &text), 0);
    const TimeContentRecord c = content_record(kDejaVu);
    const AnalogClockRecord hands = hands_record();
    const ZelDialMarkColors marks{1, 2, 4};
    const uint8_t png[8] = {};
    OnePageResult page;
    for (const uint16_t id : {uint16_t{3}, uint16_t{9}}) { // a text area, no area at all
        EXPECT_EQ(zelDual_program_timeAreaAddContent(id, &c), -1);
        EXPECT_EQ(zelDual_program_fontPath_timeAreaAddContent(id, &c), -1);
        EXPECT_EQ(zelDual_program_timeAreaChangeContent(id, &c), -1);
        EXPECT_EQ(zelDual_program_timeAreaGetOnePage(id, &page), -1);
        const uint8_t *data = page.pngData; // a packed field: read it by value
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(zelDual_program_timeAreaAddAnalogClock(id, &hands, 0, &marks), -1);
        EXPECT_EQ(zelDual_program_timeAreaChangeDialPic(id, "dial.png"), -1);
        EXPECT_EQ(zelDual_program_timeAreaChangeDialPicAdd_G56(id, png, sizeof png), -1);
        EXPECT_EQ(zelDual_program_timeAreaRemoveDialPic(id), -1);
    }
    EXPECT_EQ(zelDual_program_timeAreaAddContent(1, nullptr), -1);
    EXPECT_EQ(zelDual_program_timeAreaAddAnalogClock(1, &hands, 0, nullptr), -1);
    EXPECT_EQ(zelDual_program_timeAreaChangeDialPicAdd_G56(1, nullptr, 4), -1);
    const TimeArea &area = *program->find_area_of<TimeArea>(1);
    EXPECT_EQ(area.analogFlag, 0) << "nothing changed";
    EXPECT_EQ(area.dialPictureFlag, 0);
    // Content and frame entries of text areas refuse a clock area, as before.
    const TextPageParams_G5 p = text_params(0, 1, 12, 1);
    EXPECT_EQ(zelDual_program_picturesAreaAddTxt(1, "12", "", &p), -1);
}

TEST_F(ClockEntries, ChangeContentKeepsTheFontAndAddDropsThePath) {
    g5_program_with_clocks();
    const TimeArea &area = *current_program_g5()->find_area_of<TimeArea>(1);
    TimeContentRecord c = content_record(kDejaVu);
    ASSERT_EQ(zelDual_program_fontPath_timeAreaAddContent(1, &c), 0);
    EXPECT_EQ(area.fontPath, kDejaVu);
    c.fontName = "DejaVu Serif";
    c.fontSize = 16;
    ASSERT_EQ(zelDual_program_timeAreaChangeContent(1, &c), 0);
    EXPECT_EQ(area.fontPath, kDejaVu);
    EXPECT_TRUE(area.fontName.empty());
    EXPECT_EQ(area.fontPixelSize, 21.0);
    ASSERT_EQ(zelDual_program_timeAreaAddContent(1, &c), 0);
    EXPECT_EQ(area.fontName, "DejaVu Serif");
    EXPECT_TRUE(area.fontPath.empty());
}

TEST_F(ClockEntries, G6EntriesReportTheUnknownAreaByName) {
    const TimeContentRecord c = content_record(kDejaVu);
    const AnalogClockRecord hands = hands_record();
    const ZelDialMarkColors marks{1, 2, 4};
    const ZelBattleTime_G6 battle{0x0201, {3, 4, 5, 6, 7, 8, 9}};
    const std::string tail = "==>Can not find the area.please check areaID.\n";
    StdoutCapture out;
    EXPECT_EQ(zelDual_program_timeAreaAddContent_G6(4, &c), -1);
    EXPECT_EQ(zelDual_program_timeAreaChangeContent_G6(4, &c), -1);
    EXPECT_EQ(zelDual_program_fontPath_timeAreaAddContent_G6(4, &c), -1);
    EXPECT_EQ(zelDual_program_timeAreaAddAnalogClock_G6(4, &hands, 0, &marks), -1);
    EXPECT_EQ(zelDual_program_timeAreaChangeAnalogClock_G6(4, &hands, 0, &marks), -1);
    EXPECT_EQ(zelDual_program_timeAreaChangeDialPic_G6(4, "dial.png"), -1);
    EXPECT_EQ(zelDual_program_timeAreaRemoveDialPic_G6(4), -1);
    EXPECT_EQ(zelDual_program_timeAreaSetBattleTime_G6(4, &battle), -1);
    EXPECT_EQ(zelDual_program_timeAreaCancleBattleTime_G6(4), -1);
    EXPECT_EQ(out.text(), "Error:program_timeAreaAddContent_G6" + tail +
                              "Error:program_timeAreaChangeContent_G6" + tail +
                              "Error:program_fontPath_timeAreaAddContent_G6" + tail +
                              "Error:program_fontPath_timeAreaAddContent_G6" + tail +
                              "Error:program_timeAreaChangeAnalogClock_G6" + tail +
                              "Error:program_timeAreaChangeDialPic_G6" + tail +
                              "Error:program_timeAreaRemoveDialPic_G6" + tail +
                              "Error:program_timeAreaSetBattleTime_G6" + tail +
                              "Error:program_timeAreaCancleBattleTime_G6" + tail);

    // On a G5 program's clock area the G6 content entries act as the G5 ones; the analog clock
    // and battle time, which need the G6 clock area, refuse it without a line.
    zelDual_program_deleteProgram();
    g5_program_with_clocks();
    StdoutCapture again;
    EXPECT_EQ(zelDual_program_timeAreaAddContent_G6(1, &c), 0);
    EXPECT_EQ(current_program_g5()->find_area_of<TimeArea>(1)->fontName, kDejaVu);
    EXPECT_EQ(zelDual_program_timeAreaAddAnalogClock_G6(1, &hands, 0, &marks), -1);
    EXPECT_EQ(zelDual_program_timeAreaSetBattleTime_G6(1, &battle), -1);
    EXPECT_EQ(again.text(), "");
}

TEST_F(ClockEntries, ProgramWithBothClocksIntegratesAndThePreviewWorks) {
    g5_program_with_clocks();
    TimeContentRecord c = content_record(kDejaVu);
    ASSERT_EQ(zelDual_program_fontPath_timeAreaAddContent(1, &c), 0);
    const AnalogClockRecord hands = hands_record();
    const ZelDialMarkColors marks{1, 1, 1};
    ASSERT_EQ(zelDual_program_timeAreaAddAnalogClock(2, &hands, 2, &marks), 0);
    // The dial picture as bytes, for both generations' entry; then back to the painted dial.
    write_png("dial.png", 32, 32, 0xFF0000);
    std::ifstream in("dial.png", std::ios::binary);
    const std::vector<uint8_t> png{std::istreambuf_iterator<char>(in), {}};
    ASSERT_EQ(zelDual_program_timeAreaChangeDialPicAdd_G56(2, png.data(),
                                                           static_cast<uint32_t>(png.size())),
              0);
    ASSERT_EQ(zelDual_program_timeAreaRemoveDialPic(2), 0);

    OnePageResult page;
    ASSERT_EQ(zelDual_program_timeAreaGetOnePage(1, &page), 0);
    const uint16_t count = page.pageCount; // packed fields, read by value
    const uint32_t length = page.pngLength;
    EXPECT_EQ(count, 1);
    ASSERT_GT(length, 8u);
    EXPECT_EQ(std::memcmp(page.pngData, "\x89PNG", 4), 0);

    // The file's layout is read back by the simulator in the clock road; here it integrates.
    EXPECT_FALSE(integrate().empty());
}

} // namespace
} // namespace zel
