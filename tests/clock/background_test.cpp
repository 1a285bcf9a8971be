// Backgrounds of G6 programs: pictures or one colour, full-size pages, and the body of a
// picture area whose frame header counts 7 bytes.
#include <gtest/gtest.h>

#include "clock/background.h"
#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "support/capture.h"
#include "support/fake_clock.h"

namespace zel {
namespace {

using namespace zel::test;

// A background of 64 x 32 at x 0 on a one-colour screen: pages of 256 bytes, 0x00 lit, 0xFF
// dark. The program file has one block, whose body starts at 37.
constexpr std::size_t kBody = 37;
constexpr std::size_t kPage = 256;

class Backgrounds : public ::testing::Test {
  protected:
    FakeClock m_clock;
    TextPageParams_G6 m_params = text_params_g6(0, 1, 12, 1);

    void SetUp() override {
        zelDual_program_deleteProgram_G6();
        zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(1), 0x0051, 1);
        write_png("white.png", 64, 32, 0xFFFFFF);
        write_png("black.png", 64, 32, 0x000000);
        StdoutCapture quiet;
        const ZelProgramHeader_G6 h = program_header_g6(1);
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
        const ZelAreaRecord_G6 a = area_record_g6(11, 0, 0, 64, 32);
        ASSERT_EQ(zelDual_program_addArea_G6(1, &a), 0);
    }
    void TearDown() override { zelDual_program_deleteProgram_G6(); }

    int32_t picture(uint16_t picID, const char *path) {
        return zelDual_program_backGroundPic_G6(1, picID, &m_params, path);
    }
    // The page count of the background and its pages as the data file holds them, one byte
    // of each (they are all one colour here).
    static std::pair<uint16_t, std::vector<uint8_t>> pages() {
        const FilesG6 files = integrate_g6();
        EXPECT_EQ(files.program[31], 1) << "the program says it has a background";
        std::vector<uint8_t> firstBytes;
        for (std::size_t at = 13; at + 4 < files.data.size(); at += kPage) {
            firstBytes.push_back(files.data[at]);
        }
        return {le16(&files.program[kBody + 19]), firstBytes};
    }
};

TEST_F(Backgrounds, PicturesInPlayListOrderAndMissingOnesLeftOut) {
    EXPECT_EQ(pages(), (std::pair<uint16_t, std::vector<uint8_t>>{0, {}})) << "no content";
    ASSERT_EQ(picture(5, "white.png"), 0);
    ASSERT_EQ(picture(5, "black.png"), 0);
    ASSERT_EQ(picture(0, "black.png"), 0);
    EXPECT_EQ(pages(), (std::pair<uint16_t, std::vector<uint8_t>>{3, {0xFF, 0x00, 0xFF}}));

    ASSERT_EQ(picture(5, "gone.png"), 0) << "not tested when added";
    StdoutCapture out;
    EXPECT_EQ(pages().first, 3);
    EXPECT_EQ(out.text(), "Error:The picture does not exist.ID:0\n");
}

TEST_F(Backgrounds, AColourGivesOnePageWhateverThePictures) {
    ASSERT_EQ(picture(0, "black.png"), 0);
    ASSERT_EQ(zelDual_program_backGroundColor_G6(1, &m_params, 1), 0);
    ASSERT_EQ(picture(0, "black.png"), 0);
    EXPECT_EQ(pages(), (std::pair<uint16_t, std::vector<uint8_t>>{1, {0x00}})) << "red";
    ASSERT_EQ(zelDual_program_backGroundColor_G6(1, &m_params, 0), 0);
    EXPECT_EQ(pages(), (std::pair<uint16_t, std::vector<uint8_t>>{1, {0xFF}}))
        << "0 is black, not the marker";
    ASSERT_EQ(zelDual_program_backGroundColor_G6(1, &m_params, kNoBackgroundColor), 0);
    EXPECT_EQ(pages().first, 2) << "the pictures count again";
}

TEST_F(Backgrounds, FrameShrinksThePageAndCountsItsHeaderAsSeven) {
    write_png("strip8x2.png", 8, 2, 0xFF0000);
    const ZelFrameParams_G6 f{1, 2, {3, 4, 5}, 6};
    ASSERT_EQ(zelDual_program_picturesAreaAddFrame_G6(1, &f, "strip8x2.png"), 0);
    ASSERT_EQ(zelDual_program_backGroundColor_G6(1, &m_params, 1), 0);
    const FilesG6 files = integrate_g6();
    // 60 x 28 at column 2: rows of 64 positions, 8 bytes each.
    ASSERT_EQ(files.data.size(), 13u + 8 * 28 + 4);
    // 19 + 30 + (2 strip bytes + 7) + 1, while the body holds the 14-byte header.
    EXPECT_EQ(le32(&files.program[kBody - 4]), 59u);
    ASSERT_EQ(files.program.size(), kBody + 59 + 7 + 4);
    EXPECT_EQ(files.program[kBody + 9], 1) << "frame mark";
    // Record, frame header and strip, three bytes, no sound, five zeros, the count: 36 bytes.
    EXPECT_EQ(le32(&files.program[kBody + 36 + 26]), 8u * 28) << "page length";
}

} // namespace
} // namespace zel
