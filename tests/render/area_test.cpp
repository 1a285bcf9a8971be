#include <gtest/gtest.h>

#include <cmath>

#include "render/area.h"

namespace zel {
namespace {

TEST(Area, GammaTablesUseTheTruncatedExponentAndAreIdentical) {
    const TKarea area;
    for (const auto *table : {&area.gammaRed, &area.gammaGreen, &area.gammaBlue}) {
        EXPECT_EQ((*table)[0], 0);
        EXPECT_EQ((*table)[128], 64);
        EXPECT_EQ((*table)[200], 156); // the entry that red 200 of a 5-6-5 pixel goes through
        EXPECT_EQ((*table)[255], 254);
    }
    EXPECT_EQ(area.gammaRed, area.gammaGreen);
    EXPECT_EQ(area.gammaRed, area.gammaBlue);
}

TEST(Area, HeaderRecordIsLittleEndianAndMovesWithTheRectangle) {
    TKarea area;
    area.set_area_header(2, {16, 32, 320, 32});
    const std::array<uint8_t, 9> record = {2, 0x10, 0x00, 0x20, 0x00, 0x40, 0x01, 0x20, 0x00};
    EXPECT_EQ(area.areaHeader, record);
    EXPECT_EQ(area.areaType, 2);
    EXPECT_EQ(area.header_x(), 16);
    EXPECT_EQ(area.header_y(), 32);
    EXPECT_EQ(area.header_width(), 320);
    EXPECT_EQ(area.header_height(), 32);

    area.set_rect({0x0102, 3, 0x0400, 5});
    const std::array<uint8_t, 9> moved = {2, 0x02, 0x01, 3, 0, 0x00, 0x04, 5, 0};
    EXPECT_EQ(area.areaHeader, moved);
    EXPECT_EQ(area.x, 0x0102);
    EXPECT_EQ(area.width, 0x0400);
}

TEST(Area, RoundHalfAwayRoundsHalvesAwayFromZero) {
    EXPECT_EQ(roundHalfAway(2.5), 3.0);
    EXPECT_EQ(roundHalfAway(-2.5), -3.0);
    EXPECT_EQ(roundHalfAway(2.4), 2.0);
    EXPECT_EQ(roundHalfAway(-2.4), -2.0);
    // 0 takes the second branch: ceil(-0.5) is negative zero.
    EXPECT_EQ(roundHalfAway(0.0), 0.0);
    EXPECT_TRUE(std::signbit(roundHalfAway(0.0)));
}

TEST(Area, AlignOffsetPlacesContentOnlyWhenThereIsRoom) {
    struct Case {
        uint8_t align;
        int32_t total, used, expected;
    };
    const Case cases[] = {
        {0, 100, 40, 0}, {1, 100, 40, 30}, {1, 101, 40, 30}, {2, 100, 40, 60}, {3, 100, 40, 0},
        {1, 40, 40, 0},  {2, 40, 40, 0},   {2, 30, 40, 0},   {1, 10, -4, 7},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(alignOffset(c.align, c.total, c.used), c.expected)
            << int(c.align) << " " << c.total << " " << c.used;
    }
}

TEST(Area, CentreOffsetHalvesTheRestAndIsNeverNegative) {
    EXPECT_EQ(centreOffset(100, 3, 20), 20);
    EXPECT_EQ(centreOffset(101, 3, 20), 20); // 20.5 truncated
    EXPECT_EQ(centreOffset(10, 3, 8), 0);    // more content than room
    EXPECT_EQ(centreOffset(0, 1, 1), 0);     // -0.5 truncates to 0
    // The difference is 32-bit and read as signed: 0xFFFFFFFF is -1, not four billion.
    EXPECT_EQ(centreOffset(0xFFFFFFFFu, 0, 1), 0);
    EXPECT_EQ(centreOffset(0x80000000u, -1, 2), 0);
}

TEST(Area, PixelUnitIs32OnlyForMode4) {
    for (uint32_t mode : {0u, 1u, 3u, 5u, 255u}) {
        EXPECT_EQ(pixelUnit(mode), 8u) << mode;
    }
    EXPECT_EQ(pixelUnit(4), 32u);
}

} // namespace
} // namespace zel
