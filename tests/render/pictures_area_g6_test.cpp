// The G6 text and picture area: its page header beside the G5 one, pictures changed in place,
// sound; and the exported G6 content entries' messages.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "program/program_fixtures.h"
#include "render/pictures_area_g6.h"
#include "support/capture.h"
#include "support/fake_clock.h"

namespace zel {
namespace {

using namespace zel::test;
using Paths = std::vector<std::string>;

PageDisplayRecord_G6 g6_record(uint8_t effect, uint8_t byte10) {
    PageDisplayRecord_G6 r;
    r.pageByte0 = 0x10;
    r.displayEffect = effect;
    r.pageByte2 = 0x12;
    r.pageByte3 = 0x13;
    r.pageWord4 = 0x1514;
    r.pageByte6 = 0x16;
    r.pageWidth = 0x1817;
    r.pageByte10 = byte10;
    return r;
}

TEST(PicturesAreaG6, TextHeaderIsMappedOntoTheG5OneAndPicturesKeepTheirOwn) {
    PicturesArea_g6 area;
    area.set_area_header(0, {0, 0, 64, 32});
    TextStyleRecord style;
    style.arrMode = MULTILINE;
    style.fontSize = 12;

    // A picture without text: the G5 header takes the all-zero G6 header of the text.
    area.addPicture(0, "a.png", g6_record(7, 0xAA));
    EXPECT_EQ(area.displayRecord.bytes(), PageDisplayRecord{}.bytes());
    ASSERT_EQ(area.pictureDetails_G6.size(), 1u);
    EXPECT_EQ(area.pictureDetails_G6[0].record.bytes()[10], 0xAA);
    EXPECT_TRUE(area.pictureDetails.empty()) << "the G5 details stay empty";

    area.addTextByPath("A", kDejaVu, style, g6_record(5, 0xAB));
    EXPECT_EQ(area.displayRecord.bytes(), (std::array<uint8_t, 13>{0x10, 5, 0x12, 0x13, 0x14, 0x15,
                                                                   0x16, 0x17, 0x18, 0, 0, 0, 0}));
    EXPECT_EQ(area.displayRecord_G6.bytes(),
              (std::array<uint8_t, 18>{0x10, 5, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0, 0xAB,
                                       0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(area.PageString.size(), 1u) << "the text is broken into pages";
}

TEST(PicturesAreaG6, ChangePictureReplacesByPlaceAndByIdentifier) {
    PicturesArea_g6 area;
    area.set_area_header(0, {0, 0, 64, 32});
    area.changePicture(0, "x.png", g6_record(9, 0));
    EXPECT_TRUE(area.m_PageList.empty()) << "nothing to change";

    area.addPicture(0, "a.png", g6_record(1, 0));
    area.addPicture(1, "b.png", g6_record(2, 0));
    area.changePicture(0, "c.png", g6_record(3, 0));
    EXPECT_EQ(Paths(area.m_PageList.begin(), area.m_PageList.end()), (Paths{"c.png", "b.png"}));
    ASSERT_EQ(area.pictureDetails_G6.size(), 2u);
    EXPECT_EQ(area.pictureDetails_G6[0].record.displayEffect, 3);
    EXPECT_EQ(area.pictureDetails_G6[1].record.displayEffect, 2);

    // Place 1 holds b.png, but no picture was added with identifier 5: only the path moves.
    area.changePicture(5, "d.png", g6_record(4, 0));
    area.changePicture(1, "e.png", g6_record(4, 0));
    EXPECT_EQ(Paths(area.m_PageList.begin(), area.m_PageList.end()), (Paths{"c.png", "e.png"}));
    EXPECT_EQ(area.pictureDetails_G6[1].record.displayEffect, 4);
}

TEST(PicturesAreaG6, EmptySoundDataSwitchesTheSoundOffAndKeepsTheNewSettings) {
    PicturesArea_g6 area;
    SoundRecord on;
    on.enabled = 1;
    on.settings.soundValue1 = 7;
    ASSERT_EQ(area.setSound(on, 1, "old"), 0);
    EXPECT_EQ(area.soundEnabled, 1);

    on.settings.soundValue1 = 8;
    StdoutCapture out;
    EXPECT_EQ(area.setSound(on, 1, ""), -1);
    EXPECT_EQ(out.text(), "Error:soundData is empty.\n");
    EXPECT_EQ(area.soundEnabled, 0);
    EXPECT_EQ(area.soundData, "") << "the old data is gone";
    EXPECT_EQ(area.soundRecord.settings.soundValue1, 8u);

    ASSERT_EQ(area.setSound(SoundRecord{}, 0, ""), 0);
    EXPECT_EQ(area.soundRecord, SoundRecord{});
}

class G6ContentEntries : public ::testing::Test {
  protected:
    FakeClock m_clock;
    void SetUp() override {
        zelDual_program_deleteProgram_G6();
        const ZelProgramHeader_G6 h = program_header_g6(1);
        StdoutCapture quiet;
        ASSERT_EQ(zelDual_program_addProgram_G6(&h), 0);
    }
    void TearDown() override { zelDual_program_deleteProgram_G6(); }
};

TEST_F(G6ContentEntries, UnknownAreasAreReportedWithTheEntrysName) {
    const TextPageParams_G6 p = text_params_g6(0, 1, 12, 1);
    const ZelSoundParams_G6 s{};
    write_png("pic.png", 8, 8, 0xFFFFFF);
    struct Case {
        const char *name;
        std::function<int32_t()> call;
    };
    const Case cases[] = {
        {"picturesAreaAddTxt_G6",
         [&] { return zelDual_program_picturesAreaAddTxt_G6(9, "A", "", &p); }},
        {"picturesAreaChangeTxt_G6",
         [&] { return zelDual_program_picturesAreaChangeTxt_G6(9, "A", &p); }},
        {"fontPath_picturesAreaAddTxt_G6",
         [&] { return zelDual_program_fontPath_picturesAreaAddTxt_G6(9, "A", "", &p); }},
        {"fontPath_picturesAreaChangeTxt_G6",
         [&] { return zelDual_program_fontPath_picturesAreaChangeTxt_G6(9, "A", &p); }},
        {"pictureAreaAddPic_G6",
         [&] { return zelDual_program_pictureAreaAddPic_G6(9, 0, &p, "pic.png"); }},
        {"pictureAreaChangePic_G6",
         [&] { return zelDual_program_pictureAreaChangePic_G6(9, 0, &p, "pic.png"); }},
        {"pictureAreaEnableSound_G6",
         [&] { return zelDual_program_pictureAreaEnableSound_G6(9, &s, "a"); }},
        {"pictureAreaChangeSoundSettings_G6",
         [&] { return zelDual_program_pictureAreaChangeSoundSettings_G6(9, &s, "a"); }},
        {"pictureAreaDisableSound_G6",
         [&] { return zelDual_program_pictureAreaDisableSound_G6(9); }},
        {"backGroundPic_G6", [&] { return zelDual_program_backGroundPic_G6(9, 0, &p, "pic.png"); }},
        {"backGroundColor_G6", [&] { return zelDual_program_backGroundColor_G6(9, &p, 1); }},
    };
    for (const Case &c : cases) {
        StdoutCapture out;
        EXPECT_EQ(c.call(), -1) << c.name;
        EXPECT_EQ(out.text(), std::string("Error:program_") + c.name +
                                  "==>Can not find the area.please check areaID.\n");
    }

    StdoutCapture out;
    EXPECT_EQ(zelDual_program_pictureAreaAddPic_G6(9, 0, &p, "missing.png"), -1);
    const ZelFrameParams_G6 f{};
    EXPECT_EQ(zelDual_program_picturesAreaAddFrame_G6(9, &f, "pic.png"), -1);
    EXPECT_EQ(out.text(), "Error:The picture file :missing.png does not exist.ID:")
        << "the file is tested first; the frame entry stays silent";
}

TEST_F(G6ContentEntries, AnAreaOfAnotherKindIsRefusedSilently) {
    const ZelAreaRecord_G6 pictures = area_record_g6(0, 0, 0, 64, 32);
    StdoutCapture out;
    ASSERT_EQ(zelDual_program_addArea_G6(1, &pictures), 0);
    const std::string trace = out.text();
    const TextPageParams_G6 p = text_params_g6(0, 1, 12, 1);
    EXPECT_EQ(zelDual_program_backGroundColor_G6(1, &p, 1), -1);
    EXPECT_EQ(out.text(), trace);
}

} // namespace
} // namespace zel
