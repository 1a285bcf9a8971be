#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "program/screen_settings.h"
#include "sdk/controller_types.h"
#include "support/capture.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

TEST(ScreenSettings, KnownControllerTypesTraceAndStoreTheirMode) {
    struct Case {
        uint16_t code;
        uint32_t mode;
        const char *trace;
    };
    const Case cases[] = {
        {0x0066, 3, "color = 1, ControllerType = 102,  doubleColor = 2; \r\n"},
        {0x0166, 5, "color = 1, ControllerType = 358,  doubleColor = 2; \r\n"},
        {0x8374, 4, "color = 1, ControllerType = 33652,  doubleColor = 2; \r\n"},
        {0x0051, 0, "color = 1, ControllerType = 81,  doubleColor = 2; \r\n"},
    };
    for (const Case &c : cases) {
        g_tranPixelMode = 99;
        test::StdoutCapture console;
        EXPECT_EQ(zelDual_program_setScreenParams_G56(ZEL_SCREEN_ONE_COLOR, c.code, 2), 0);
        EXPECT_EQ(console.text(), c.trace) << c.code;
        EXPECT_EQ(g_tranPixelMode.load(), c.mode) << c.code;
        EXPECT_EQ(g_controllerType.load(), c.code);
        EXPECT_EQ(g_screenColor.load(), kScreenOneColor);
        EXPECT_EQ(g_doubleColor.load(), 2u);
    }
}

TEST(ScreenSettings, UnknownControllerTypePrintsErrorAndStillStoresEverything) {
    // 0x0563 is absent from the table although 0x0463 and 0x5063 are present; 0 is unknown too.
    // The colour is stored as it comes, even outside 1 to 4, and doubleColor prints as signed.
    test::StdoutCapture console;
    EXPECT_EQ(zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(9), 0x0563,
                                                  0xFFFFFFFFu),
              0);
    EXPECT_EQ(zelDual_program_setScreenParams_G56(ZEL_SCREEN_FULL_COLOR, 0, 7), 0);
    EXPECT_EQ(console.text(), "color = 9, ControllerType = 1379,  doubleColor = -1; \r\n"
                              "Error:can't find tranPixelMode,use 0 instead.\n"
                              "color = 4, ControllerType = 0,  doubleColor = 7; \r\n"
                              "Error:can't find tranPixelMode,use 0 instead.\n");
    EXPECT_EQ(g_screenColor.load(), kScreenFullColor);
    EXPECT_EQ(g_tranPixelMode.load(), 0u);
    EXPECT_EQ(g_controllerType.load(), 0);
    EXPECT_EQ(g_doubleColor.load(), 7u);

    test::StdoutCapture quiet;
    setScreenParams_G56(kScreenTwoColors, 0x0563, 1);
    quiet.text();
    EXPECT_EQ(g_screenColor.load(), kScreenTwoColors);
    EXPECT_EQ(g_doubleColor.load(), 1u);
}

TEST(ScreenSettings, TableMapsEachListedCodeAndNothingElse) {
    // The codes grouped by mode: a second copy, kept apart from the sorted table it checks.
    const std::vector<std::pair<uint32_t, std::vector<uint16_t>>> groups = {
        {0,
         {0x0051, 0x0052, 0x0055, 0x0151, 0x0154, 0x0155, 0x015E, 0x015F, 0x0251, 0x0252, 0x0254,
          0x0255, 0x025E, 0x025F, 0x0351, 0x0352, 0x0354, 0x0355, 0x035E, 0x035F, 0x0451, 0x0452,
          0x0455, 0x045E, 0x045F, 0x0551, 0x0552, 0x0555, 0x055E, 0x055F, 0x0651, 0x065E, 0x065F,
          0x0751, 0x0755, 0x075E, 0x0851, 0x0855, 0x0951, 0x1351, 0x1551, 0x1651, 0x1851, 0x2251}},
        {3, {0x0066, 0x0766}},
        {4, {0x0062, 0x0063, 0x0064, 0x0162, 0x0163, 0x0164, 0x0174, 0x0262, 0x0263, 0x0264,
             0x0274, 0x0362, 0x0363, 0x0364, 0x0374, 0x0462, 0x0463, 0x0464, 0x0474, 0x0562,
             0x0564, 0x0574, 0x1062, 0x1162, 0x1262, 0x1362, 0x1462, 0x2063, 0x2163, 0x2263,
             0x2363, 0x2463, 0x3063, 0x3163, 0x3263, 0x3363, 0x3463, 0x4063, 0x4163, 0x4263,
             0x4363, 0x4463, 0x4563, 0x4663, 0x4763, 0x5063, 0x5163, 0x5263, 0x5363, 0x8374}},
        {5, {0x0166, 0x0266, 0x0366, 0x0466, 0x0566, 0x0666, 0x3366, 0x8166}},
    };
    std::size_t listed = 0;
    for (const auto &[mode, codes] : groups) {
        for (const uint16_t code : codes) {
            EXPECT_EQ(tran_pixel_mode_of(code), mode) << std::hex << code;
        }
        listed += codes.size();
    }
    EXPECT_EQ(listed, 104u);
    std::size_t known = 0;
    for (uint32_t code = 0; code <= 0xFFFF; ++code) {
        known += tran_pixel_mode_of(static_cast<uint16_t>(code)).has_value() ? 1 : 0;
    }
    EXPECT_EQ(known, 104u);
    EXPECT_EQ(controller_type_count(), 104u);
}

} // namespace
} // namespace zel
