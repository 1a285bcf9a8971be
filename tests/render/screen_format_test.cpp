#include "render/screen_format.h"

#include "program/screen_settings.h"
#include "render/area.h"
#include "support/capture.h"
#include "support/hex.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

using test::hex;

class PixelFormatTest : public ::testing::Test {
  protected:
    void set_screen(E_ScreenColor_G56 colour, uint16_t controllerType, uint32_t doubleColor) {
        test::StdoutCapture quiet; // the setter traces its arguments
        setScreenParams_G56(colour, controllerType, doubleColor);
    }
    void TearDown() override {
        g_screenColor = kInitialScreenColor;
        g_tranPixelMode = kInitialTranPixelMode;
        g_doubleColor = kInitialDoubleColor;
        g_controllerType = kInitialControllerType;
    }
    TKarea area;
};

TEST_F(PixelFormatTest, EncodesForTheScreenTheSettingsDescribe) {
    // One white and one blue pixel.
    const std::vector<uint8_t> pixels = hex("FF FF FF FF  FF 00 00 FF");
    std::vector<uint8_t> out;

    // 0x0066 selects 5-6-5.
    set_screen(kScreenFullColor, 0x0066, 1);
    encode_for_screen(area, pixels, out, 0, 2, 1);
    EXPECT_EQ(out, hex("FF FF  00 F8"));

    // 0x0062 selects 32-position words; doubleColor 2 puts green in plane 1, so white lights
    // both planes and blue plane 2 only.
    set_screen(kScreenTwoColors, 0x0062, 2);
    encode_for_screen(area, pixels, out, 0, 2, 1);
    EXPECT_EQ(out, hex("FF FF FF 7F  FF FF FF 3F"));
}

} // namespace
} // namespace zel
