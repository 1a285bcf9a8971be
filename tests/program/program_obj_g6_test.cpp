// The G6 program through the exported entries: header and names, areas and their count, play
// periods, the program frame, the two files, and the G5 entries on a G6 program.
#include <gtest/gtest.h>

#include <zlib.h>

#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "support/capture.h"
#include "support/fake_clock.h"

namespace zel {
namespace {

using namespace zel::test;

uint32_t crc_of(const std::vector<uint8_t> &bytes, std::size_t length) {
    return static_cast<uint32_t>(crc32(0L, bytes.data(), static_cast<uInt>(length)));
}

std::vector<uint8_t> slice(const std::vector<uint8_t> &bytes, std::size_t from, std::size_t n) {
    return {bytes.begin() + static_cast<long>(from), bytes.begin() + static_cast<long>(from + n)};
}

// Where the parts of a program file without periods and frame stand.
constexpr std::size_t kBackgroundByte = 31;
constexpr std::size_t kCountByte = 32;
constexpr std::size_t kFirstBlock = 33;

class G6Program : public ::testing::Test {
  protected:
    FakeClock m_clock; // no peer here: the first access need not sleep for real

    void SetUp() override {
        zelDual_program_deleteProgram_G6();
        // One colour, bytes of 8 pixels.
        zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(1), 0x0051, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram_G6(); }

    static void start(uint32_t number) {
        const ZelProgramHeader_G6 h = program_header_g6(number);
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
    }
    static int32_t add_area(uint16_t id, uint8_t type, uint16_t x, uint16_t w, uint16_t h) {
        const ZelAreaRecord_G6 a = area_record_g6(type, x, 0, w, h);
        StdoutCapture quiet; // the entry traces every record
        return zelDual_program_addArea_G6(id, &a);
    }
};

TEST_F(G6Program, EmptyProgramGivesTwoFilesOfThirtySevenAndSeventeenBytes) {
    start(5);
    ZelProgramFile_G6 record;
    std::memset(&record, 0xEE, sizeof record);
    ASSERT_EQ(zelDual_program_IntegrateProgramFile_G6(&record), 0);
    EXPECT_EQ(std::string(record.programFileName, 4), "P005");
    EXPECT_EQ(std::string(record.dataFileName, 4), "D005");
    EXPECT_EQ(+record.programFileType, 0);
    EXPECT_EQ(+record.dataFileType, 9);
    ASSERT_EQ(+record.programFileLen, 29u + 1 + 1 + 1 + 1 + 4);
    ASSERT_EQ(+record.dataFileLen, 17u);
    const std::vector<uint8_t> program(record.programFileData, record.programFileData + 37);
    const std::vector<uint8_t> data(record.dataFileData, record.dataFileData + 17);

    EXPECT_EQ(std::string(program.begin() + 1, program.begin() + 5), "P005");
    EXPECT_EQ(program[7], 1) << "ProgramPlayTimes";
    EXPECT_EQ(program[20], 0xFF) << "ProgramWeek";
    EXPECT_EQ(slice(program, 29, 4), (std::vector<uint8_t>{0, 0, 0, 0}))
        << "no periods, no frame, no background, no area";
    EXPECT_EQ(le32(&program[33]), crc_of(program, 33));
    EXPECT_EQ(slice(data, 0, 13),
              (std::vector<uint8_t>{9, 'D', '0', '0', '5', 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(le32(&data[13]), crc_of(data, 13));

    EXPECT_EQ(zelDual_program_freeBuffer_G6(&record), 0);
    EXPECT_EQ(+record.dataFileData, nullptr);
    EXPECT_EQ(+record.programFileData, nullptr);
    EXPECT_EQ(zelDual_program_freeBuffer_G6(&record), 0) << "twice is harmless";
}

TEST_F(G6Program, HeaderTraceNameRuleAndDataFileName) {
    ZelProgramHeader_G6 h = program_header_g6(5);
    h.ProgramStyle = 'A'; // runs on behind the name, up to the zero of ProgramPriority
    h.CommExtendParaLen = 2;
    h.Intergrate = 1;
    h.LoopValue = 3;
    h.ScheduNum = 4;
    h.SpecialFlag = 6;
    h.TimeAttribute0Offset = 7;
    h.TimeAttributeNum = 8;
    h.ProgramTimeSpan = 9;
    {
        StdoutCapture out;
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
        EXPECT_EQ(out.text(),
                  "============== zelDual_program_addProgram_G6 ===================\r\n"
                  "CommExtendParaLen = 2, FileType = 0,  Intergrate = 1; \r\n"
                  " \t\tLoopValue = 3, ProgramLifeSpan_ed = 0, ProgramLifeSpan_em = 0; \r\n"
                  " \t\tProgramLifeSpan_ey = 65535, ProgramLifeSpan_sd = 0, "
                  "ProgramLifeSpan_sm = 0; \r\n"
                  " \t\tProgramLifeSpan_sy = 65535, ProgramName = P005A, ProgramPlayTimes = 1; \r\n"
                  " \t\tProgramPriority = 0, ProgramStyle = 65, ProgramTimeSpan = 9; \r\n"
                  " \t\tProgramWeek = 255, ScheduNum = 4, SpecialFlag = 6; \r\n"
                  " \t\tTimeAttribute0Offset = 7; TimeAttributeNum = 8; \r\n");
    }
    EXPECT_EQ(+h.ProgramName, 5u) << "the caller's header keeps its number";
    {
        StdoutCapture out;
        const ZelProgramHeader_G6 refused = program_header_g6(10000);
        EXPECT_EQ(zelDual_program_addProgram_G6(&refused), -1);
        const ZelProgramHeader_G6 changed = program_header_g6(1234);
        EXPECT_EQ(zelDual_program_changeProgramParams_G6(&changed), 0);
        EXPECT_EQ(out.text(), "") << "neither a refusal nor a change traces";
    }
    const FilesG6 files = integrate_g6();
    EXPECT_EQ(files.programName, "1234");
    EXPECT_EQ(files.dataName, "D234");
    EXPECT_EQ(std::string(files.program.begin() + 1, files.program.begin() + 5), "1234");
    EXPECT_EQ(std::string(files.data.begin() + 1, files.data.begin() + 5), "D234");
}

TEST_F(G6Program, AreaTraceUnknownTypesAndTheBackgroundByte) {
    start(1);
    const ZelAreaRecord_G6 a = [] {
        ZelAreaRecord_G6 r = area_record_g6(0, 1, 2, 64, 32);
        r.BackGroundFlag = 4;
        r.Transparency = 5;
        r.AreaEqual = 6;
        return r;
    }();
    {
        StdoutCapture out;
        ASSERT_EQ(zelDual_program_addArea_G6(3, &a), 0);
        EXPECT_EQ(out.text(), "============== zelDual_program_addArea_G6 =============== \r\n"
                              "areaID = 3; \r\n \t\t\tAreaType = 0, AreaX = 1, AreaY = 2, "
                              "AreaWidth = 64, AreaHeight = 32;\r\n \t\t\tBackGroundFlag = 4, "
                              "Transparency = 5, AreaEqual = 6; \r\n ");
    }
    auto files = integrate_g6();
    ASSERT_EQ(files.program.size(), 37u + 4 + 21);
    EXPECT_EQ(le32(&files.program[kFirstBlock]), 21u) << "19 + 30 x 0 pages + 1 + 1";
    EXPECT_EQ(
        slice(files.program, kFirstBlock + 4, 21),
        (std::vector<uint8_t>{0, 1, 0, 2, 0, 64, 0, 32, 0, 0, 4, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0}))
        << "record, no frame, the three bytes, no sound, five zeros, no page";

    // Type 1 makes nothing, yet counts; and it still removes an area of its identifier.
    EXPECT_EQ(add_area(7, 1, 0, 8, 8), 0);
    EXPECT_EQ(add_area(3, 1, 0, 8, 8), 0);
    files = integrate_g6();
    EXPECT_EQ(files.program.size(), 37u);
    EXPECT_EQ(files.program[kBackgroundByte], 0);
    EXPECT_EQ(files.program[kCountByte], 3);

    // A background marks the program for good.
    EXPECT_EQ(add_area(9, 11, 0, 8, 8), 0);
    EXPECT_EQ(zelDual_program_deleteArea_G6(9), 0);
    files = integrate_g6();
    EXPECT_EQ(files.program.size(), 37u);
    EXPECT_EQ(files.program[kBackgroundByte], 1);
    EXPECT_EQ(files.program[kCountByte], 3) << "one up for the background, one down";
}

TEST_F(G6Program, PlayPeriodsLeaveTheG6HeaderAlone) {
    start(1);
    ZelPlayPeriods_G5 periods;
    std::memset(&periods, 0x5A, sizeof periods);
    periods.count = 3;
    ASSERT_EQ(zelDual_program_addPlayPeriodGrp_G6(&periods), 0);
    const FilesG6 files = integrate_g6();
    ASSERT_EQ(files.program.size(), 37u + 18);
    EXPECT_EQ(files.program[6], 0) << "ProgramPriority, where G5 keeps the period flag";
    EXPECT_EQ(files.program[29], 1);
    EXPECT_EQ(files.program[47], 0x5A);
    EXPECT_EQ(files.program[48], 0) << "the frame byte follows the 18 bytes";
}

TEST_F(G6Program, FrameAddedOnceAndChangedWithABadPathKeepsTheOldStrip) {
    start(1);
    write_png("strip8x2.png", 8, 2, 0xFF0000); // lit: bytes 0x00
    write_png("strip8x4.png", 8, 4, 0x000000); // dark: bytes 0xFF
    const ZelFrameParams_G6 first{1, 2, {3, 4, 5}, 6};
    const ZelFrameParams_G6 second{9, 8, {7, 6, 5}, 4};
    ASSERT_EQ(zelDual_program_addFrame_G6(&first, "strip8x2.png"), 0);
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_addFrame_G6(&second, "strip8x4.png"), -1);
        EXPECT_EQ(out.text(), "");
    }
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_changeFrame_G6(&second, "missing.png"), -1);
        EXPECT_EQ(out.text(), "Error:Can't find frame png.\n");
    }
    FilesG6 files = integrate_g6();
    ASSERT_EQ(files.program.size(), 37u + 14 + 2 - 1);
    EXPECT_EQ(slice(files.program, 30, 16),
              (std::vector<uint8_t>{1, 9, 8, 7, 6, 5, 4, 0, 0, 0, 0, 0, 0, 0, 0x00, 0x00}))
        << "the new settings beside the old strip";

    ASSERT_EQ(zelDual_program_removeFrame_G6(), 0);
    ASSERT_EQ(zelDual_program_addFrame_G6(&second, "strip8x4.png"), 0);
    files = integrate_g6();
    EXPECT_EQ(slice(files.program, 44, 4), (std::vector<uint8_t>{0xFF, 0xFF, 0xFF, 0xFF}));
    ASSERT_EQ(zelDual_program_removeFrame_G6(), 0);
    StdoutCapture out;
    EXPECT_EQ(zelDual_program_changeFrame_G6(&first, "strip8x2.png"), -1);
    EXPECT_EQ(out.text(), "Error:No frame have been added.\n");
}

// Area of 64 x 32 at x 0 on a one-colour screen: 8 bytes a row, 256 bytes a page.
TEST_F(G6Program, PageRecordsPointOneBasedIntoTheDataFileAcrossAreas) {
    start(1);
    ASSERT_EQ(add_area(1, 0, 0, 64, 32), 0);
    ASSERT_EQ(add_area(2, 0, 64, 64, 32), 0);
    TextPageParams_G6 p = text_params_g6(0, 1, 12, 1);
    p.pageByte10 = 0xAB;
    ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt_G6(1, "AB", kDejaVu, &p), 0);
    write_png("white.png", 64, 32, 0xFFFFFF);
    write_png("black.png", 64, 32, 0x000000);
    TextPageParams_G6 own = text_params_g6(0, 1, 12, 1);
    own.pageByte0 = 0x11;
    ASSERT_EQ(zelDual_program_pictureAreaAddPic_G6(1, 0, &own, "white.png"), 0);
    ASSERT_EQ(zelDual_program_pictureAreaAddPic_G6(2, 0, &own, "black.png"), 0);
    const FilesG6 files = integrate_g6();
    const std::vector<uint8_t> &f = files.program;

    const std::size_t body1 = kFirstBlock + 4;
    ASSERT_EQ(le32(&f[kFirstBlock]), 19u + 30 * 2 + 1 + 1);
    EXPECT_EQ(le16(&f[body1 + 19]), 2) << "page count";
    const std::size_t record1 = body1 + 21;
    EXPECT_EQ(le32(&f[record1]), 26u);
    // The text page: the common header, the page width of the drawable rectangle, byte 10.
    EXPECT_EQ(slice(f, record1 + 4, 18),
              (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 0, 64, 0, 0, 0xAB, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(le32(&f[record1 + 22]), 14u) << "the first pixel byte stands at 13";
    EXPECT_EQ(le32(&f[record1 + 26]), 256u);
    // The picture page: its own header, page width as given.
    const std::size_t record2 = record1 + 30;
    EXPECT_EQ(slice(f, record2 + 4, 9), (std::vector<uint8_t>{0x11, 0, 0, 0, 0, 0, 0, 0x77, 0x77}));
    EXPECT_EQ(le32(&f[record2 + 22]), 14u + 256);

    const std::size_t body2 = record2 + 30 + 4;
    ASSERT_EQ(le32(&f[body2 - 4]), 19u + 30 + 1 + 1);
    EXPECT_EQ(le32(&f[body2 + 21 + 22]), 14u + 512) << "the offset runs on across areas";
    ASSERT_EQ(f.size(), body2 + 51 + 4);
    EXPECT_EQ(f[kCountByte], 2);

    const std::vector<uint8_t> &d = files.data;
    ASSERT_EQ(d.size(), 13u + 3 * 256 + 4);
    EXPECT_EQ(slice(d, 13 + 256, 256), std::vector<uint8_t>(256, 0x00)) << "white: all lit";
    EXPECT_EQ(slice(d, 13 + 512, 256), std::vector<uint8_t>(256, 0xFF)) << "black: all dark";
    EXPECT_NE(slice(d, 13, 256), std::vector<uint8_t>(256, 0xFF)) << "the text shows";
    EXPECT_EQ(le32(&d[13 + 768]), crc_of(d, 13 + 768));
}

TEST_F(G6Program, SoundHeaderLeadsWithOneAndCountsTheTextLength) {
    start(1);
    ASSERT_EQ(add_area(1, 0, 0, 64, 32), 0);
    const ZelSoundParams_G6 s{{1, 2, 3, 4}, 0x08070605, 0x0C0B0A09, {13, 14, 15, 16}};
    ASSERT_EQ(zelDual_program_pictureAreaChangeSoundSettings_G6(1, &s, "Hello"), 0)
        << "the change entry enables sound on an area without it";
    FilesG6 files = integrate_g6();
    ASSERT_EQ(le32(&files.program[kFirstBlock]), 19u + 1 + 5 + 21);
    EXPECT_EQ(slice(files.program, kFirstBlock + 4 + 13, 26),
              (std::vector<uint8_t>{1,  1,  2,  3,  4, 5, 6, 7, 8,   9,   10,  11,  12,
                                    13, 14, 15, 16, 5, 0, 0, 0, 'H', 'e', 'l', 'l', 'o'}));

    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_pictureAreaEnableSound_G6(1, &s, ""), -1);
        EXPECT_EQ(out.text(), "Error:soundData is empty.\n");
    }
    files = integrate_g6();
    EXPECT_EQ(le32(&files.program[kFirstBlock]), 21u) << "the sound went off";
    ASSERT_EQ(zelDual_program_pictureAreaEnableSound_G6(1, &s, "Hi"), 0);
    ASSERT_EQ(zelDual_program_pictureAreaDisableSound_G6(1), 0);
    files = integrate_g6();
    EXPECT_EQ(le32(&files.program[kFirstBlock]), 21u);
}

// The entries with no G6 form, and the G5 forms of others, act on a G6 program on what it
// shares with a G5 one; what a G6 file does not carry stays out of it.
TEST_F(G6Program, G5EntriesActOnWhatEveryProgramHas) {
    start(5);
    ZelProgramHeader_G5 g5 = program_header(7);
    ASSERT_EQ(zelDual_program_addProgram(&g5), 0);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(&g5) + 1, 4), "P007");
    const ZelAreaRecord_G5 a = area_record(0, 0, 0, 64, 32);
    ASSERT_EQ(zelDual_program_AddArea(1, &a), 0);
    const ZelAreaRecord_G5 background = area_record(11, 0, 0, 64, 32);
    EXPECT_EQ(zelDual_program_AddArea(2, &background), -1) << "a G5 add knows types 0 and 2";
    write_png("strip8x2.png", 8, 2, 0xFF0000);
    const ZelFrameParams_G6 params{1, 2, {3, 4, 5}, 6};
    ASSERT_EQ(zelDual_program_picturesAreaAddFrame_G6(1, &params, "strip8x2.png"), 0);
    ASSERT_EQ(zelDual_program_pictureAreaRemoveFrame(1), 0);
    ASSERT_EQ(zelDual_program_MoveArea(1, 8, 0, 64, 32), 0);
    ASSERT_EQ(add_area(3, 11, 0, 8, 8), 0);

    const FilesG6 files = integrate_g6();
    EXPECT_EQ(files.programName, "P007") << "the file name is the last header's";
    EXPECT_EQ(std::string(files.program.begin() + 1, files.program.begin() + 5), "P005")
        << "the G6 header keeps its own";
    EXPECT_EQ(files.dataName, "D005");
    ASSERT_EQ(le32(&files.program[kFirstBlock]), 21u) << "the frame is gone";
    EXPECT_EQ(files.program[kFirstBlock + 4 + 1], 8) << "moved";

    // A G5 integration writes the G5 parts: the G5 header, no background mark, and no block for
    // the background.
    const std::vector<uint8_t> image = integrate();
    ASSERT_EQ(image.size(), 19u + 1 + 1 + 1 + 4 + 4 + 12);
    EXPECT_EQ(std::string(image.begin() + 1, image.begin() + 5), "P007");
    EXPECT_EQ(image[21], 2) << "the count follows the frame byte at once";
}

TEST_F(G6Program, G6EntriesNeedingTheG6ProgramRefuseAG5One) {
    zelDual_program_deleteProgram();
    ZelProgramHeader_G5 g5 = program_header(1);
    ASSERT_EQ(zelDual_program_addProgram(&g5), 0);
    const ZelProgramHeader_G6 h = program_header_g6(1);
    EXPECT_EQ(zelDual_program_addProgram_G6(&h), -1);
    EXPECT_EQ(zelDual_program_changeProgramParams_G6(&h), -1);
    write_png("strip8x2.png", 8, 2, 0xFF0000);
    const ZelFrameParams_G6 params{1, 2, {3, 4, 5}, 6};
    EXPECT_EQ(zelDual_program_addFrame_G6(&params, "strip8x2.png"), -1);
    ZelProgramFile_G6 record;
    std::memset(&record, 0, sizeof record);
    EXPECT_EQ(zelDual_program_IntegrateProgramFile_G6(&record), -1);
    EXPECT_EQ(+record.programFileData, nullptr);

    // What every program has, the G6 entries reach: a G6 area in a G5 program gets the G5 body.
    ASSERT_EQ(add_area(1, 0, 0, 64, 32), 0);
    const std::vector<uint8_t> image = integrate();
    ASSERT_EQ(image.size(), 27u + 4 + 12);
    EXPECT_EQ(image[22], 1);
}

} // namespace
} // namespace zel
