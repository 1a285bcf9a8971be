// The G5 time body: lengths, item order and places by the writer's own formulas.
#include <gtest/gtest.h>

#include <cmath>

#include "clock/clock_fixtures.h"
#include "clock/time_body_g5.h"

namespace zel {
namespace {

using namespace zel::test;

class TimeBody : public ::testing::Test {
  protected:
    void SetUp() override { clock_screen(1, 0); }
};

std::vector<uint8_t> types_of(const std::vector<BodyItem> &items) {
    std::vector<uint8_t> types;
    for (const BodyItem &item : items)
        types.push_back(item.type);
    return types;
}

TEST_F(TimeBody, DateOnlyFormatZeroOnAOneColourScreen) {
    auto area = clock_area(clock_content(1, 0, 0, 0, 0, 0), 128, 32, 5);
    area->timeContent.horizontalAlign = 1;
    const AreaBodyG5 body = time_area_body_g5(*area);
    const uint32_t e = area->encodedPictureLength;
    const uint32_t t = area->digitTableSize;
    EXPECT_EQ(e, (5u + 128 + 3) / 8 * 32) << "rows padded to the screen's bytes from x 5";
    EXPECT_EQ(body.declaredLength, e + 24 + 13 + 3 * t);
    ASSERT_EQ(body.bytes.size(), body.declaredLength);

    ByteReader head(body.bytes);
    const auto record = head.bytes(9);
    EXPECT_EQ(std::vector<uint8_t>(record.begin(), record.end()),
              (std::vector<uint8_t>{2, 5, 0, 0, 0, 128, 0, 32, 0}));
    EXPECT_EQ(head.u8(), 0) << "frame mark";
    EXPECT_EQ(head.u16(), 0) << "two BCD zeros";
    head.skip(e);
    EXPECT_EQ(head.u8(), 3) << "unit count";

    const auto items = body_items(body.bytes, e, 2);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{0, 1, 2}));
    const int32_t s = area->gapWidth("-");
    const int32_t d = static_cast<int32_t>(area->digitCellWidth);
    const int32_t lead = alignOffset(1, 128, area->lineWidth);
    const int32_t top = centreOffset(32, 1, area->row_height());
    EXPECT_EQ(items[0].x, lead);
    EXPECT_EQ(items[1].x, lead + s + 4 * d);
    EXPECT_EQ(items[2].x, lead + 2 * s + 6 * d);
    for (const BodyItem &item : items) {
        EXPECT_EQ(item.y, top);
        EXPECT_EQ(item.align, 1);
        EXPECT_EQ(item.color, (std::vector<uint8_t>{1, 0}));
        EXPECT_EQ(item.table, area->digitTable);
    }
}

TEST_F(TimeBody, DayFirstFormatsWriteTheYearFirstAtTheLargestX) {
    for (const uint32_t format : {2u, 3u}) {
        auto area = clock_area(clock_content(1, format, 0, 0, 0, 0));
        const AreaBodyG5 body = time_area_body_g5(*area);
        const auto items = body_items(body.bytes, area->encodedPictureLength, 2);
        ASSERT_EQ(types_of(items), (std::vector<uint8_t>{0, 1, 2}));
        const int32_t s = area->gapWidth("-"); // the hyphen's width for "/" too
        const int32_t d = static_cast<int32_t>(area->digitCellWidth);
        EXPECT_EQ(items[0].x, 2 * s + 4 * d);
        EXPECT_EQ(items[1].x, s + 2 * d);
        EXPECT_EQ(items[2].x, 0);
    }
}

TEST_F(TimeBody, MultiLineTimeRowStartsTwoPixelSizesBelowTheTop) {
    auto area = clock_area(clock_content(1, 4, 1, 2, 1, 2, 1), 96, 64);
    const AreaBodyG5 body = time_area_body_g5(*area);
    const auto items = body_items(body.bytes, area->encodedPictureLength, 2);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{1, 2, 7, 3, 4}));
    const int32_t px = static_cast<int32_t>(std::trunc(area->fontPixelSize));
    const int32_t top = centreOffset(64, 3, area->row_height());
    EXPECT_EQ(items[0].y, top);
    EXPECT_EQ(items[2].y, top + px);
    EXPECT_EQ(items[3].y, top + 2 * px);
    EXPECT_EQ(items[4].y, top + 2 * px);
    EXPECT_EQ(items[2].table, area->weekTable);
    const int32_t d = static_cast<int32_t>(area->digitCellWidth);
    EXPECT_EQ(items[4].x, items[3].x + 2 * d + area->gapWidth(":") + 2);
    EXPECT_EQ(body.declaredLength, body.bytes.size());
}

TEST_F(TimeBody, TwelveHourFormatsWriteMeridiemFirstAndFlagTheHour) {
    auto area = clock_area(clock_content(0, 0, 0, 0, 1, 4));
    const AreaBodyG5 body = time_area_body_g5(*area);
    const auto items = body_items(body.bytes, area->encodedPictureLength, 2);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{6, 3, 4}));
    EXPECT_EQ(items[0].x, 0);
    EXPECT_EQ(items[0].table, area->ampmTable);
    EXPECT_EQ(items[1].color, (std::vector<uint8_t>{1, 1}));
    EXPECT_EQ(items[1].x, static_cast<int32_t>(area->ampmCellWidth) + area->gapWidth(" "));
    EXPECT_EQ(items[2].color, (std::vector<uint8_t>{1, 0}));
    EXPECT_EQ(area->tableBytes, area->ampmTableSize + 2 * area->digitTableSize);
    EXPECT_EQ(body.declaredLength, body.bytes.size());
}

TEST_F(TimeBody, UnknownTimeFormatCountsThreeButWritesHourAndMinuteAtZero) {
    auto area = clock_area(clock_content(0, 0, 0, 0, 1, 9));
    area->timeContent.horizontalAlign = 2;
    const AreaBodyG5 body = time_area_body_g5(*area);
    EXPECT_EQ(area->unitCount, 3u);
    EXPECT_EQ(area->tableBytes, 0u);
    EXPECT_TRUE(area->fixedTexts.empty());
    const auto items = body_items(body.bytes, area->encodedPictureLength, 2);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{3, 4}));
    EXPECT_EQ(items[0].x, 0);
    EXPECT_EQ(items[1].x, 0);
    // Declared as three items without tables; the two written ones carry theirs behind it.
    EXPECT_EQ(body.declaredLength, area->encodedPictureLength + 13 + 3 * 8);
    EXPECT_EQ(body.bytes.size(), area->encodedPictureLength + 13 + 2 * (8 + area->digitTableSize));
}

TEST_F(TimeBody, AnalogBodyIsOneItemWhateverTheContent) {
    auto area = clock_area(clock_content(1, 0, 1, 1, 1, 0), 64, 32);
    AnalogClock hands;
    hands.hourHandLength = 9;
    hands.hourHandColor = 0x00FF0000;
    area->addAnalogClock(hands, 1, {1, 2, 4});
    const AreaBodyG5 body = time_area_body_g5(*area);
    const uint32_t e = area->encodedPictureLength;
    EXPECT_EQ(body.bytes.size(), 12 + e + 1 + 20);
    EXPECT_EQ(body.declaredLength, body.bytes.size());
    EXPECT_EQ(body.bytes[12 + e], 1);
    const auto items = body_items(body.bytes, e, 2);
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].x, 0);
    EXPECT_EQ(items[0].y, 0);
    EXPECT_EQ(items[0].type, 8);
    EXPECT_EQ(items[0].align, 1);
    EXPECT_EQ(items[0].table, (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(TimeBody, FullColourItemsRunLongerThanTheLengthDeclares) {
    struct Case {
        uint32_t mode;
        std::size_t colorSize;
    };
    for (const Case c : {Case{3, 3}, Case{5, 5}}) {
        clock_screen(4, c.mode);
        auto area = clock_area(clock_content(1, 4, 1, 2, 1, 0));
        const AreaBodyG5 body = time_area_body_g5(*area);
        EXPECT_EQ(area->unitCount, 6u);
        EXPECT_EQ(body.declaredLength, area->encodedPictureLength + 8 * 6 + 13 + area->tableBytes);
        EXPECT_EQ(body.bytes.size(), body.declaredLength + 6 * (c.colorSize - 2)) << c.mode;
        const auto items = body_items(body.bytes, area->encodedPictureLength, c.colorSize);
        EXPECT_EQ(types_of(items), (std::vector<uint8_t>{1, 2, 7, 3, 4, 5}));
    }
}

} // namespace
} // namespace zel
