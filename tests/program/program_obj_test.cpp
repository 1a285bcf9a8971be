// The G5 program entries, through the exported functions as a host calls them.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <zlib.h>

#include "exports/program_access.h"
#include "program/program_fixtures.h"
#include "support/capture.h"
#include "support/fake_clock.h"

namespace zel {
namespace {

using namespace zel::test;
using exports::current_program_g5;

class G5Program : public ::testing::Test {
  protected:
    FakeClock m_clock; // no peer here: the first access need not sleep for real

    void SetUp() override {
        zelDual_program_deleteProgram();
        // One colour, bytes of 8 pixels.
        zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(1), 0x0051, 1);
    }
    void TearDown() override { zelDual_program_deleteProgram(); }

    static void start(uint32_t number) {
        ZelProgramHeader_G5 h = program_header(number);
        ASSERT_EQ(zelDual_program_addProgram(&h), 0);
    }
    static int32_t add_area(uint16_t id, uint16_t x, uint16_t w, uint16_t h) {
        const ZelAreaRecord_G5 a = area_record(0, x, 0, w, h);
        return zelDual_program_AddArea(id, &a);
    }
};

std::string name_bytes(const ZelProgramHeader_G5 &h) {
    return std::string(reinterpret_cast<const char *>(&h) + 1, 4);
}

TEST_F(G5Program, NameRuleWritesTheNameBackAndRefusesLongNames) {
    ZelProgramHeader_G5 h = program_header(7);
    ASSERT_EQ(zelDual_program_addProgram(&h), 0);
    EXPECT_EQ(name_bytes(h), "P007");
    h = program_header(0xFFFFFF9Cu);
    ASSERT_EQ(zelDual_program_changeProgramParams(&h), 0);
    EXPECT_EQ(name_bytes(h), "-100");
    h = program_header(10000);
    h.ProgramWeek = 0x01;
    EXPECT_EQ(zelDual_program_changeProgramParams(&h), -1);
    EXPECT_EQ(+h.ProgramName, 10000u) << "the caller's record is left as it was";
    const auto image = integrate();
    ASSERT_EQ(image.size(), 27u);
    EXPECT_EQ(std::string(image.begin() + 1, image.begin() + 5), "-100");
    EXPECT_EQ(image[10], 0xFF) << "the refused header did not replace the program's";
}

TEST_F(G5Program, EmptyProgramFileAndItsRecord) {
    start(3);
    ZelProgramFile_G5 file;
    std::memset(&file, 0xEE, sizeof file);
    ASSERT_EQ(zelDual_program_IntegrateProgramFile(&file), 0);
    ASSERT_EQ(+file.fileLen, 19u + 1 + 1 + 1 + 1 + 4);
    EXPECT_EQ(std::string(file.fileName, 4), "P003");
    EXPECT_EQ(+file.fileType, 0);
    const std::vector<uint8_t> image(file.fileData, file.fileData + file.fileLen);
    EXPECT_EQ(std::string(image.begin() + 1, image.begin() + 5), "P003");
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + 19, image.begin() + 23),
              (std::vector<uint8_t>{0, 0, 0, 0}));
    const auto crc = static_cast<uint32_t>(crc32(0L, image.data(), 23));
    EXPECT_EQ(le32(image.data() + 23), crc);
    EXPECT_EQ(+file.fileCrc, crc);

    std::ifstream trace("dataFantx.bin", std::ios::binary);
    EXPECT_EQ(std::vector<uint8_t>(std::istreambuf_iterator<char>(trace), {}), image);

    EXPECT_EQ(zelDual_program_freeBuffer(&file), 0);
    EXPECT_EQ(+file.fileData, nullptr);
}

TEST_F(G5Program, PlayPeriodsSetTheFlagAndCountZeroClearsIt) {
    start(1);
    ZelPlayPeriods_G5 periods;
    std::memset(&periods, 0x5A, sizeof periods);
    periods.count = 3;
    ASSERT_EQ(zelDual_program_addPlayPeriodGrp(&periods), 0);
    auto image = integrate();
    ASSERT_EQ(image.size(), 27u + 18);
    EXPECT_EQ(image[6], 1) << "PlayPeriodFlag in the header";
    EXPECT_EQ(image[19], 1);
    EXPECT_EQ(image[37], 0x5A);
    EXPECT_EQ(image[38], 0) << "the frame mark follows the 18 bytes; no count byte";

    ZelPlayPeriods_G5 none;
    std::memset(&none, 0, sizeof none);
    ASSERT_EQ(zelDual_program_addPlayPeriodGrp(&none), 0);
    image = integrate();
    ASSERT_EQ(image.size(), 27u);
    EXPECT_EQ(image[6], 0);
    EXPECT_EQ(image[19], 0);
    EXPECT_EQ(current_program_g5()->play_periods()[0].bytes[0], 0x5A) << "the old block stays";
}

TEST_F(G5Program, ReplacedAreaMovesToTheEndAndTheCountStaysHigh) {
    start(1);
    ASSERT_EQ(add_area(1, 0, 8, 8), 0);
    ASSERT_EQ(add_area(2, 8, 8, 8), 0);
    ASSERT_EQ(add_area(1, 16, 8, 8), 0);
    const auto image = integrate();
    // Two blocks of an empty area each: length 12, record, no frame, no page.
    ASSERT_EQ(image.size(), 27u + 2 * (4 + 12));
    EXPECT_EQ(image[22], 3) << "count one above the two blocks";
    EXPECT_EQ(le32(&image[23]), 12u);
    EXPECT_EQ(image[23 + 4 + 1], 8) << "area 2 comes first now";
    EXPECT_EQ(image[23 + 16 + 4 + 1], 16);
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + 23 + 4 + 9, image.begin() + 23 + 16),
              (std::vector<uint8_t>{0, 0, 0}));
}

TEST_F(G5Program, DeleteAreaKnownUnknownAndAll) {
    start(1);
    add_area(1, 0, 8, 8);
    add_area(0xFFFF, 8, 8, 8);
    add_area(3, 16, 8, 8);
    EXPECT_EQ(zelDual_program_deleteArea(7), 0);
    EXPECT_EQ(integrate()[22], 3);
    // An area called 0xFFFF is deleted alone.
    EXPECT_EQ(zelDual_program_deleteArea(0xFFFF), 0);
    auto image = integrate();
    EXPECT_EQ(image[22], 2);
    EXPECT_EQ(image.size(), 27u + 2 * 16);
    EXPECT_EQ(zelDual_program_deleteArea(0xFFFF), 0);
    image = integrate();
    EXPECT_EQ(image.size(), 27u);
    EXPECT_EQ(image[22], 0);
}

TEST_F(G5Program, MoveAreaStoresLow16BitsAndRefusesUnknownAreas) {
    start(1);
    add_area(4, 0, 8, 8);
    StdoutCapture out;
    EXPECT_EQ(zelDual_program_MoveArea(5, 1, 1, 1, 1), 29);
    EXPECT_EQ(out.text(), "Error:Wrong areaID.This area does not exist.\n");
    EXPECT_EQ(zelDual_program_MoveArea(4, 0x10005, 0x20003, 0x10010, 0x10004), 0);
    const auto image = integrate();
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + 27, image.begin() + 36),
              (std::vector<uint8_t>{0, 5, 0, 3, 0, 0x10, 0, 4, 0}));
}

TEST_F(G5Program, EntriesFailOnMissingAreasAndMissingFiles) {
    start(1);
    add_area(1, 0, 64, 16);
    const TextPageParams_G5 p = text_params(0, 1, 12, 1);
    EXPECT_EQ(zelDual_program_picturesAreaAddTxt(9, "A", "", &p), -1);
    EXPECT_EQ(zelDual_program_picturesAreaChangeTxt(9, "A", &p), -1);
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_pictureAreaAddPic(1, 0, &p, "missing.png"), -1);
        EXPECT_EQ(out.text(), "Error:The picture file :missing.png does not exist.ID:");
    }
    {
        // The file is tested before the record is read, so its line stands without one too.
        StdoutCapture out;
        EXPECT_EQ(zelDual_program_pictureAreaAddPic(1, 0, nullptr, "missing.png"), -1);
        EXPECT_EQ(out.text(), "Error:The picture file :missing.png does not exist.ID:");
    }
    OnePageResult page;
    std::memset(&page, 0xEE, sizeof page);
    EXPECT_EQ(zelDual_program_pictureAreaGetOnePage(9, 0, &page), -1);
    EXPECT_EQ(+page.pngLength, 0u);
    EXPECT_EQ(+page.pngData, nullptr);
}

// Pages of an area of 64 x 32 at x 0 on a one-colour screen: 8 bytes a row, 256 a page.
TEST_F(G5Program, BodyLengthsCountPagesAndPixels) {
    start(1);
    add_area(1, 0, 64, 32);
    const TextPageParams_G5 p = text_params(0, 1, 12, 1);
    ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt(1, "AB", kDejaVu, &p), 0);
    auto image = integrate();
    EXPECT_EQ(le32(&image[23]), 12u + 17 + 256);
    EXPECT_EQ(image[23 + 4 + 9 + 1], 1) << "one page";

    write_png("pic.png", 10, 10, 0xFFFFFF);
    ASSERT_EQ(zelDual_program_pictureAreaAddPic(1, 0, &p, "pic.png"), 0);
    image = integrate();
    EXPECT_EQ(le32(&image[23]), 12u + 17 * 2 + 2 * 256);

    ASSERT_EQ(zelDual_program_IntegrateProgramFile(nullptr), -1);
}

} // namespace
} // namespace zel
