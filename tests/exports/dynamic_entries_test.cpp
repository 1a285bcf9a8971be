// The serial dynamic-area entries on a line that does not exist: which speed indexes each
// refuses at once, and the level 1 line that the others log when the line does not open.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "program/program_fixtures.h"
#include "support/capture.h"

namespace zel {
namespace {

using namespace zel::test;

constexpr const char *kNoLine = "/nonexistent/ttyZEL";

std::string log_file() {
    std::ifstream in("testDemoLog");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct SerialCase {
    const char *entry;
    std::function<int32_t(uint8_t)> call; // the speed index
    uint8_t speedIndex;
    const char *logged; // the line's text behind the mark; "" for none
};

TEST(DynamicSerialEntries, SpeedIndexTestsAndInitFailureLines) {
    ZelDynamicAreaParams_G6 area{};
    area.AreaWidth = 64;
    area.AreaHeight = 32;
    const TextPageParams_G6 page = text_params_g6(1, 1, 12, 1);
    ZelDynamicAreaSetItem_G6 item{};
    item.area = area;
    item.page = page;
    item.font = kDejaVu;
    item.content = "1";
    const ZelFrameHeader_G5 frame{};
    ZelTextStyleRecord style{};
    DynamicAreaBaseInfo_5G info{};
    info.kind = 1;
    info.text = "1";
    const DynamicAreaBaseInfo_5G *infos[] = {&info};
    ZelAreaFrmae_Dynamic_G6 noFrame{};
    const uint8_t numbers[] = {1};
    const ::E_ScreenColor_G56 c = ZEL_SCREEN_ONE_COLOR;

    const auto txtDetails = [&](uint8_t s) {
        return zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(kNoLine, s, c, 1, &area, &page,
                                                               kDejaVu, "1");
    };
    const SerialCase cases[] = {
        {"AddAreaTxtDetails_6G_Serial", txtDetails, 3, ""},
        {"AddAreaTxtDetails_6G_Serial", txtDetails, 1,
         "oSerialClient.init error! pSerialPort=/nonexistent/ttyZEL, nSerialPortValueIndex=1, "
         "err=-1"},
        {"AddAreaTxtDetails_WithProgram_6G_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G_Serial(
                 kNoLine, s, c, 1, &area, &page, kDejaVu, "1", 0, nullptr);
         },
         3, "oSerialClient.init error! pSerialName=/nonexistent/ttyZEL, nBaudRateIndex=3, err=-1"},
        {"AddAreaPic_6G_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaPic_6G_Serial(kNoLine, s, c, 1, 0, 0, 64, 32, &page,
                                                             "x.png");
         },
         3, "oSerialClient.init error! pSerialName=/nonexistent/ttyZEL, nBaudRateIndex=3, err=-1"},
        {"AddAreaPic_WithProgram_G6_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaPic_WithProgram_G6_Serial(
                 kNoLine, s, c, 1, 0, 0, 64, 32, &page, "x.png", 0, nullptr);
         },
         0, ""},
        {"dynamicAreaS_AddTxtDetails_6G_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicAreaS_AddTxtDetails_6G_Serial(kNoLine, s, c, 1, &item);
         },
         3, "oSerialClient.init error! pSerialName=/nonexistent/ttyZEL, nBaudRateIndex=3, err=-1"},
        {"DelArea_6G_Serial",
         [&](uint8_t s) { return zelDual_dynamicArea_DelArea_6G_Serial(kNoLine, s, 1); }, 3, ""},
        {"DelAreas_6G_Serial",
         [&](uint8_t s) { return zelDual_dynamicArea_DelAreas_6G_Serial(kNoLine, s, 1, numbers); },
         0, ""},
        {"DelArea_G5_Serial",
         [&](uint8_t s) { return zelDual_dynamicArea_DelArea_G5_Serial(kNoLine, s, 1); }, 3, ""},
        {"AddAreaWithTxt_5G_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaWithTxt_5G_Serial(kNoLine, s, c, 1, 0, 5, 1, 0,
                                                                 nullptr, 0, 0, 0, 64, 32, frame, 1,
                                                                 1, 1, 300, 1, style, kDejaVu, "1");
         },
         3, "oSerialClient.init error! pSerialName=/nonexistent/ttyZEL, nSpeedIndex=3, err=-1"},
        {"AddAreaWithPic_5G_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaWithPic_5G_Serial(kNoLine, s, c, 1, 0, 5, 1, 0,
                                                                 nullptr, 0, 0, 0, 64, 32, frame, 1,
                                                                 1, 1, 300, 1, "x.png");
         },
         2, "oSerialClient.init error! pSerialName=/nonexistent/ttyZEL, nBaundIndex=2, err=-1"},
        {"AddAreaInfos_G6_Serial",
         [&](uint8_t s) {
             return zelDual_dynamicArea_AddAreaInfos_G6_Serial(
                 kNoLine, s, c, 1, 0, 5, 1, 0, nullptr, 1, 0, 0, 64, 32, noFrame, 1, infos);
         },
         1,
         "oSerialClient.init error! pCharsCOMPort=/nonexistent/ttyZEL, "
         "nSerialPortValueIndex=1, err=-1"},
    };
    for (const SerialCase &k : cases) {
        std::remove("testDemoLog");
        StdoutCapture quiet;
        EXPECT_EQ(k.call(k.speedIndex), -1) << k.entry;
        const std::string log = log_file();
        if (*k.logged == '\0') {
            EXPECT_EQ(log, "") << k.entry;
        } else {
            EXPECT_NE(log.find(std::string(" [TEST] [ERROR   ] # DEMO # ") + k.logged + "\n"),
                      std::string::npos)
                << k.entry << ": " << log;
        }
    }
}

TEST(DynamicEntries, ArgumentsRefusedBeforeAnyTraffic) {
    // No controller listens on port 9 of loopback: any attempt would fail differently (and
    // slowly); these are refused by the tests of the arguments alone, with no trace.
    StdoutCapture out;
    const TextPageParams_G6 page = text_params_g6(1, 1, 12, 1);
    ZelDynamicAreaParams_G6 area{};
    const uint16_t programs[1] = {1};
    EXPECT_EQ(zelDual_dynamicArea_AddAreaTxt_6G("127.0.0.1", 1023, ZEL_SCREEN_ONE_COLOR, 1, 0, 0, 8,
                                                8, kDejaVu, 9, "1"),
              -1);
    EXPECT_EQ(zelDual_dynamicArea_AddAreaTxt_6G("127.0.0.1", 5005, ZEL_SCREEN_ONE_COLOR, 1, 0, 0, 8,
                                                8, nullptr, 9, "1"),
              -1);
    EXPECT_EQ(zelDual_dynamicArea_AddAreaPic_WithProgram_6G("127.0.0.1", 5005, ZEL_SCREEN_ONE_COLOR,
                                                            1, 0, 0, 8, 8, &page, "x.png", 513,
                                                            programs),
              -1);
    EXPECT_EQ(zelDual_dynamicArea_DelArea_6G("127.0.0.1", 1023, 1), -1);
    EXPECT_EQ(zelDual_dynamicArea_DelArea_5G("127.0.0.1", 5005, 65), -1);
    EXPECT_EQ(zelDual_dynamicArea_DelAreas_6G("127.0.0.1", 5005, 1, nullptr), -1);
    EXPECT_EQ(
        zelDual_dynamicAreaS_AddAreaPic_6G("127.0.0.1", 5005, ZEL_SCREEN_ONE_COLOR, 0, nullptr),
        -1);
    EXPECT_EQ(zelDual_dynamicAreaS_AddTxtDetails_WithProgram_6G(
                  "127.0.0.1", 5005, ZEL_SCREEN_ONE_COLOR, 1, nullptr, 2, nullptr),
              -1);
    ZelSoundItem_Independ sound{};
    sound.sound.text = "a";
    EXPECT_EQ(zelDual_dynamicArea_InsertSoundIndepend("127.0.0.1", 5005, &sound, 0, 0), -1);
    EXPECT_EQ(zelDual_dynamicArea_UpdateSoundIndepend("127.0.0.1", 5005, &sound, 0, 0), -1);
    EXPECT_EQ(out.text(), "");
}

} // namespace
} // namespace zel
