// Colour records of clock items and the three forms of the hand record.
#include <gtest/gtest.h>

#include "clock/clock_color.h"
#include "clock/clock_fixtures.h"

namespace zel {
namespace {

using namespace zel::test;

std::vector<uint8_t> record(uint32_t color, uint8_t hourFlag, int32_t screenColor, uint32_t mode) {
    const TKarea gammaOwner;
    ByteWriter out;
    const std::size_t n =
        write_clock_color(out, color, hourFlag, {screenColor, mode}, area_gamma(gammaOwner));
    EXPECT_EQ(n, out.size());
    return out.take();
}

TEST(ClockColor, SingleColourScreensTakeCodesAndDarkFallsToRed) {
    struct Case {
        uint32_t color;
        uint8_t code;
    };
    for (const Case c : {Case{0xFF0000, 1}, Case{0x800000, 1}, Case{0xFFFF00, 3}, Case{0x0000FF, 4},
                         Case{8, 1}, Case{0x00FF00, 2}, Case{0xFF00FF, 5}, Case{0x00FFFF, 6},
                         Case{0xFFFFFF, 7}, Case{0x808080, 1}, Case{0, 0}, Case{6, 6}}) {
        EXPECT_EQ(record(c.color, 0, 1, 0), (std::vector<uint8_t>{c.code, 0}))
            << std::hex << c.color;
    }
    EXPECT_EQ(record(3, 1, 2, 4), (std::vector<uint8_t>{3, 1}));
}

TEST(ClockColor, FullColourScreensTakeComponents) {
    // Mode 5 (and any but 3): red + green << 8 + blue << 16, red first in the file.
    EXPECT_EQ(record(0x112233, 0, 4, 5), (std::vector<uint8_t>{0x11, 0x22, 0x33, 0x00, 0}));
    EXPECT_EQ(record(3, 1, 4, 4), (std::vector<uint8_t>{0xFF, 0xFF, 0x00, 0x00, 1}));
    // Mode 3: 5-6-5 through the gamma tables; white passes entry 254, red 200 entry 156.
    EXPECT_EQ(record(7, 0, 4, 3), (std::vector<uint8_t>{0xFF, 0xFF, 0}));
    EXPECT_EQ(record(0xC80000, 1, 4, 3), (std::vector<uint8_t>{0x13, 0x00, 1}));
    EXPECT_EQ(record(0, 0, 4, 3), (std::vector<uint8_t>{0x00, 0x00, 0}));
}

TEST(ClockColor, HandRecordForms) {
    AnalogClock c;
    c.clockParam1 = 0x0201;
    c.clockParam2 = 0x0403;
    c.clockParam3 = 5;
    c.hourHandParam = 6;
    c.hourHandLength = 7;
    c.hourHandColor = 0x00FF0000;
    c.minuteHandParam = 8;
    c.minuteHandLength = 9;
    c.minuteHandColor = 0x0000FF;
    c.secondHandParam = 10;
    c.secondHandLength = 11;
    c.secondHandColor = 0x112233;
    // Short: only the low byte of a colour, so red 0x00FF0000 is written as 0.
    EXPECT_EQ(hand_record_short(c),
              (std::array<uint8_t, 14>{1, 2, 3, 4, 5, 6, 7, 0x00, 8, 9, 0xFF, 10, 11, 0x33}));
    const TKarea gammaOwner;
    const GammaTables gamma = area_gamma(gammaOwner);
    // Medium in mode 4: the 32-bit value cut to 16 bits loses blue.
    EXPECT_EQ(hand_record_medium(c, {4, 4}, gamma),
              (std::array<uint8_t, 17>{1, 2, 3, 4, 5, 6, 7, 0xFF, 0x00, 8, 9, 0x00, 0x00, 10, 11,
                                       0x11, 0x22}));
    EXPECT_EQ(hand_record_long(c, {4, 5}, gamma),
              (std::array<uint8_t, 23>{1, 2, 3, 4,    5, 6,  7,  0xFF, 0,    0,    0, 8,
                                       9, 0, 0, 0xFF, 0, 10, 11, 0x11, 0x22, 0x33, 0}));
    // Off a full-colour screen the colours pass unchanged.
    EXPECT_EQ(convertHandColor(0x112233, {2, 4}, gamma), 0x112233u);
}

} // namespace
} // namespace zel
