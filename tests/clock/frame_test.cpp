// Area frames and program frames: the margin, the records, the strip encoded when added.
#include <gtest/gtest.h>

#include "clock/frame.h"
#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "support/capture.h"
#include "support/fake_clock.h"

namespace zel {
namespace {

using namespace zel::test;
using exports::current_program_g5;

FrameParamsG6 params_g6(uint8_t a, uint8_t b, uint8_t c, uint8_t d, uint8_t e, uint8_t f) {
    return {a, b, {c, d, e}, f};
}

class Frames : public ::testing::Test {
  protected:
    FakeClock m_clock; // no peer here: the first access need not sleep for real

    void SetUp() override {
        zelDual_program_deleteProgram();
        zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(1), 0x0051, 1);
        write_png("strip8x2.png", 8, 2, 0xFF0000);
        write_png("strip8x4.png", 8, 4, 0x00FF00);
        ZelProgramHeader_G5 h = program_header(1);
        ASSERT_EQ(zelDual_program_addProgram(&h), 0);
    }
    void TearDown() override { zelDual_program_deleteProgram(); }

    static PicturesArea &area(uint16_t id, uint16_t x, uint16_t w, uint16_t h) {
        const ZelAreaRecord_G5 rec = area_record(0, x, 0, w, h);
        EXPECT_EQ(zelDual_program_AddArea(id, &rec), 0);
        return *current_program_g5()->find_area_of<PicturesArea>(id);
    }
};

// The strip's height is the margin on every side: the G5 road reads the framed rectangle back
// from the file, and the picture area test shows that the strip's length plays no part.
TEST_F(Frames, TheTextBreaksAgainWhenAFrameComesAndGoes) {
    const ZelFrameHeader_G5 f = frame_header(1);
    // Three lines of 16-pixel text (rows of about 18.6 pixels): two fit in 40 rows, not in 36.
    PicturesArea &c = area(3, 0, 64, 40);
    const TextPageParams_G5 p = text_params(0, 1, 12, 1);
    ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt(3, "A\nB\nC", kDejaVu, &p), 0);
    EXPECT_EQ(c.PageString.size(), 2u);
    ASSERT_EQ(zelDual_program_picturesAreaAddFrame(3, &f, "strip8x2.png"), 0);
    EXPECT_EQ(c.PageString.size(), 3u);
    ASSERT_EQ(zelDual_program_pictureAreaRemoveFrame(3), 0);
    EXPECT_EQ(c.PageString.size(), 2u);
    EXPECT_EQ(c.drawHeight, 40);
}

TEST_F(Frames, SecondAreaFrameChangesNothingUntilTheFirstIsRemoved) {
    PicturesArea &a = area(1, 0, 64, 32);
    ZelFrameHeader_G5 first = frame_header(0);
    ASSERT_EQ(zelDual_program_picturesAreaAddFrame(1, &first, "strip8x2.png"), 0);
    // The area frame's mark is 1 whatever the host's byte 0 held.
    EXPECT_EQ(a.frameRecord, (std::array<uint8_t, 7>{1, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66}));
    EXPECT_EQ(a.frameData, (std::vector<uint8_t>{0x00, 0x00})) << "8 lit pixels, 2 rows";

    ZelFrameHeader_G5 second = frame_header(7);
    second.frameParam1 = 0x99;
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_picturesAreaAddFrame(1, &second, "strip8x4.png"), 0);
        EXPECT_EQ(out.text(), "");
    }
    EXPECT_EQ(a.frameRecord[1], 0x11);
    EXPECT_EQ(a.drawHeight, 28);

    ASSERT_EQ(zelDual_program_pictureAreaRemoveFrame(1), 0);
    EXPECT_EQ(a.frameEnabled, 0);
    EXPECT_EQ(a.drawWidth, 64);
    ASSERT_EQ(zelDual_program_picturesAreaAddFrame(1, &second, "strip8x4.png"), 0);
    EXPECT_EQ(a.frameRecord[0], 1);
    EXPECT_EQ(a.frameRecord[1], 0x99);
    EXPECT_EQ(a.drawHeight, 24);
    EXPECT_EQ(a.frameData.size(), 4u);

    EXPECT_EQ(zelDual_program_picturesAreaAddFrame(9, &second, "strip8x4.png"), -1);
    EXPECT_EQ(zelDual_program_pictureAreaRemoveFrame(9), 0);
}

TEST_F(Frames, UnreadablePngLeavesNoFrameAndTheNewRecord) {
    PicturesArea &a = area(1, 0, 64, 32);
    const ZelFrameHeader_G5 f = frame_header(1);
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_picturesAreaAddFrame(1, &f, "nope.png"), 0);
        EXPECT_EQ(out.text(), "Error:Can't find frame png.\n");
    }
    EXPECT_EQ(a.frameEnabled, 0);
    EXPECT_EQ(a.frameRecord[5], 0x55);

    ProgramObj &program = *current_program_g5();
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_addFrame(&f, "nope.png"), 0);
        EXPECT_EQ(out.text(), "Error:Can't find frame png.\n");
    }
    EXPECT_EQ(program.has_frame(), 0);
    EXPECT_EQ(program.frame_header().bytes()[6], 0x66) << "the header of the failed add stands";
    EXPECT_EQ(integrate()[20], 0) << "no frame in the file";
}

TEST_F(Frames, ProgramFrameKeepsByteZeroAndItsStripFromTheTimeItWasAdded) {
    const ZelFrameHeader_G5 f = frame_header(0);
    ASSERT_EQ(zelDual_program_addFrame(&f, "strip8x2.png"), 0);
    // Two colours from now on: a strip encoded now would take 4 bytes.
    zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(2), 0x0051, 1);
    auto image = integrate();
    ASSERT_EQ(image.size(), 26u + 7 + 2) << "the frame takes the place of the mark";
    EXPECT_EQ(
        std::vector<uint8_t>(image.begin() + 19, image.begin() + 31),
        (std::vector<uint8_t>{0, 0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x00, 0x00, 0, 0}));

    // changeFrame is addFrame: it replaces, now with the two-colour encoding.
    ASSERT_EQ(zelDual_program_changeFrame(&f, "strip8x2.png"), 0);
    EXPECT_EQ(integrate().size(), 26u + 7 + 4);
    ASSERT_EQ(zelDual_program_removeFrame(), 0);
    EXPECT_EQ(integrate().size(), 27u);
    EXPECT_EQ(current_program_g5()->frame_strip().size(), 4u) << "the strip stays allocated";
}

TEST_F(Frames, G6AreaFrameRecordAndMessage) {
    PicturesArea_g6 a;
    a.set_area_header(0, {0, 0, 64, 32});
    a.frameRecord_G6.fill(0xEE);
    const FrameParamsG6 header = params_g6(0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6);
    {
        StdoutCapture out;
        add_area_frame_g6(a, header, "nope.png");
        EXPECT_EQ(out.text(), "Error:PicturesArea_g6 Can't create_from_png. file:nope.png \n");
    }
    EXPECT_EQ(a.frameEnabled, 0);
    add_area_frame_g6(a, header, "strip8x2.png");
    EXPECT_EQ(a.frameRecord_G6, (std::array<uint8_t, 14>{1, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0,
                                                         0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(a.frameRecord, (std::array<uint8_t, 7>{})) << "the G5 record is not touched";
    EXPECT_EQ(a.drawWidth, 60);
}

} // namespace
} // namespace zel
