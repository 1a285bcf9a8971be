// The G6 time area: its battle record, its body split between the program file and the data
// file, the fixed glyph items of the 0x66 controllers, and the forms of the hand record.
#include <gtest/gtest.h>

#include "clock/clock_fixtures.h"
#include "clock/time_body_g6.h"

namespace zel {
namespace {

using namespace zel::test;

// Where the parts of a G6 time body stand.
constexpr std::size_t kBattle = 10;
constexpr std::size_t kPictureOffset = 39;
constexpr std::size_t kPictureLength = 43;
constexpr std::size_t kUnitCount = 47;
constexpr std::size_t kFirstItem = 48;

void screen(int32_t color, uint32_t mode, uint16_t controllerType) {
    clock_screen(color, mode);
    g_controllerType.store(controllerType);
}

std::unique_ptr<TimeArea_G6> g6_clock(const TimeContent &content, uint16_t width = 128,
                                      uint16_t height = 32) {
    auto area = std::make_unique<TimeArea_G6>();
    area->set_area_header(2, {0, 0, width, height});
    area->addContentByPath(content, kClockFont);
    return area;
}

// One digital item of a G6 body: its table stands in the data file.
struct ItemG6 {
    uint16_t x = 0, y = 0;
    uint8_t type = 0, align = 0;
    std::vector<uint8_t> color;
    uint32_t offset = 0, length = 0;
};
std::vector<ItemG6> items_of(const std::vector<uint8_t> &body, std::size_t colorSize) {
    std::vector<ItemG6> items;
    ByteReader in(body);
    in.skip(kFirstItem);
    while (in.ok() && in.remaining() > 0) {
        ItemG6 item;
        item.x = in.u16();
        item.y = in.u16();
        item.type = in.u8();
        item.align = in.u8();
        const auto color = in.bytes(colorSize);
        item.color.assign(color.begin(), color.end());
        item.offset = in.u32();
        item.length = in.u32();
        items.push_back(item);
    }
    EXPECT_TRUE(in.ok());
    return items;
}

std::vector<uint8_t> types_of(const std::vector<ItemG6> &items) {
    std::vector<uint8_t> types;
    for (const ItemG6 &item : items)
        types.push_back(item.type);
    return types;
}

std::vector<uint8_t> data_at(const std::vector<uint8_t> &data, uint32_t offset, uint32_t n) {
    return {data.begin() + (offset - 1), data.begin() + (offset - 1 + n)};
}

const FileName kData{'D', '0', '0', '1'};

// 12-hour time with the AM/PM mark in front, on a full-colour 0x66 controller in pixel mode 3:
// colour records of 3 bytes, counted as 3.
TEST(TimeAreaG6, FixedGlyphComesFirstAndCountsInTheUnitByte) {
    screen(4, 3, 0x0066);
    auto area = g6_clock(clock_content(0, 0, 0, 0, 1, 4));
    DataFileWriter data(kData);
    const AreaBodyG6 body = time_area_body_g6(*area, data);
    uint32_t crc = 0;
    const std::vector<uint8_t> file = data.finish(crc);

    EXPECT_EQ(body.declaredLength, (3u + 1) * (3 + 14) + 48);
    ASSERT_EQ(body.bytes.size(), body.declaredLength);
    EXPECT_EQ(body.bytes[kUnitCount], 4) << "three fields and the fixed ':'";
    const uint32_t e = area->encodedPictureLength;
    EXPECT_EQ(read_u32_le(body.bytes, kPictureOffset), 14u);
    EXPECT_EQ(read_u32_le(body.bytes, kPictureLength), e);

    const auto items = items_of(body.bytes, 3);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{12, 6, 3, 4}));
    EXPECT_EQ(items[1].color[2], 0);
    EXPECT_EQ(items[2].color[2], 1) << "the hour runs on a 12-hour clock";
    const int32_t d = static_cast<int32_t>(area->digitCellWidth);
    const int32_t hourX = static_cast<int32_t>(area->ampmCellWidth) + area->gapWidth(" ");
    EXPECT_EQ(items[2].x, hourX);
    EXPECT_EQ(items[0].x, hourX + 2 * d) << "the ':' after the hour's two cells";

    // The background, then each item's table in the order of the items.
    uint32_t next = 14 + e;
    for (const ItemG6 &item : items) {
        EXPECT_EQ(item.offset, next);
        next += item.length;
    }
    EXPECT_EQ(next - 1, file.size() - 4);
    EXPECT_EQ(data_at(file, items[1].offset, items[1].length), area->ampmTable);
    EXPECT_EQ(data_at(file, items[2].offset, items[2].length), area->digitTable);

    // The fixed glyph's table: count 1, offset 0, and the glyph twice.
    const auto table = data_at(file, items[0].offset, items[0].length);
    const uint32_t glyph = (items[0].length - 10) / 2;
    EXPECT_EQ(read_u32_le(table, 0), 6 + 2 * glyph);
    EXPECT_EQ(read_u16_le(table, 4), 1);
    EXPECT_EQ(read_u32_le(table, 6), 0u);
    EXPECT_EQ(std::vector<uint8_t>(table.begin() + 10, table.begin() + 10 + glyph),
              std::vector<uint8_t>(table.begin() + 10 + glyph, table.end()));
    EXPECT_EQ(table[12], area->clockLineHeight()) << "a row high, not lowered to the pixel size";
}

TEST(TimeAreaG6, OnlyFullColour0x66ControllersTakeFixedGlyphs) {
    struct Case {
        int32_t color;
        uint32_t mode;
        uint16_t type;
        uint32_t fixed;
    };
    // 0x0166 in mode 5 takes them too: the G6 road through the simulator shows its items.
    for (const Case c : {Case{4, 3, 0x0066, 2}, Case{4, 4, 0x0062, 0}, Case{1, 0, 0x0066, 0}}) {
        SCOPED_TRACE(c.type);
        screen(c.color, c.mode, c.type);
        auto area = g6_clock(clock_content(0, 0, 0, 0, 1, 0));
        area->prepareTimeArea();
        EXPECT_EQ(area->measureFixedGlyphs(), c.fixed);
        EXPECT_EQ(area->fixedTableBytes == 0, c.fixed == 0);
    }
}

TEST(TimeAreaG6, DateSignsComeBeforeTheDigitsWhateverTheirPlaces) {
    screen(4, 5, 0x0166);
    auto area = g6_clock(clock_content(1, 7, 0, 0, 0, 0), 192);
    DataFileWriter data(kData);
    const AreaBodyG6 body = time_area_body_g6(*area, data);
    EXPECT_EQ(body.declaredLength, (3u + 3) * (5 + 14) + 48);
    EXPECT_EQ(body.bytes[kUnitCount], 6);
    const auto items = items_of(body.bytes, 5);
    ASSERT_EQ(types_of(items), (std::vector<uint8_t>{12, 12, 12, 0, 1, 2}));
    const int32_t d = static_cast<int32_t>(area->digitCellWidth);
    EXPECT_EQ(items[0].x, 4 * d) << "年 after the year's four cells";
    EXPECT_EQ(items[1].x, items[4].x + 2 * d) << "月 after the month";
    EXPECT_EQ(items[2].x, items[5].x + 2 * d) << "日 after the day";
}

TEST(TimeAreaG6, AnUnknownTimeFormatCountsAnItemItNeverWrites) {
    screen(1, 0, 0x0051);
    auto area = g6_clock(clock_content(0, 0, 0, 0, 1, 9));
    DataFileWriter data(kData);
    const AreaBodyG6 body = time_area_body_g6(*area, data);
    EXPECT_EQ(body.declaredLength, 3u * (2 + 14) + 48);
    ASSERT_EQ(body.bytes.size(), body.declaredLength);
    EXPECT_EQ(body.bytes[kUnitCount], 3);
    EXPECT_EQ(std::vector<uint8_t>(body.bytes.begin() + kFirstItem + 4,
                                   body.bytes.begin() + kFirstItem + 5),
              (std::vector<uint8_t>{3}))
        << "hour";
    EXPECT_EQ(std::vector<uint8_t>(body.bytes.end() - 16, body.bytes.end()),
              std::vector<uint8_t>(16, 0))
        << "the third item is zeros";
}

TEST(TimeAreaG6, AnalogItemTakesTheHandFormOfTheScreen) {
    AnalogClock hands;
    hands.clockParam1 = 0x0201;
    hands.hourHandLength = 9;
    hands.hourHandColor = 0x00112233;
    struct Case {
        int32_t color;
        uint32_t mode;
        uint16_t recordLength;
    };
    // 48 + 6 + the record: 77 for the long form of a full-colour screen in mode 5.
    for (const Case c : {Case{1, 0, 14}, Case{4, 3, 17}, Case{4, 5, 23}}) {
        SCOPED_TRACE(c.recordLength);
        screen(c.color, c.mode, 0x0166);
        auto area = g6_clock(clock_content(1, 0, 1, 1, 1, 0), 64, 32);
        area->addAnalogClock_G6(hands, 0, {1, 1, 1});
        EXPECT_EQ(area->handRecordLength, c.recordLength);
        DataFileWriter data(kData);
        const AreaBodyG6 body = time_area_body_g6(*area, data);
        EXPECT_EQ(body.declaredLength, 48u + 6 + c.recordLength);
        ASSERT_EQ(body.bytes.size(), body.declaredLength);
        EXPECT_EQ(body.bytes[kUnitCount], 1);
        EXPECT_EQ(std::vector<uint8_t>(body.bytes.begin() + kFirstItem,
                                       body.bytes.begin() + kFirstItem + 9),
                  (std::vector<uint8_t>{0, 0, 0, 0, 8, 1, 1, 2, 0}));
        EXPECT_EQ(body.bytes[kFirstItem + 6 + 6], 9) << "hour hand length";
        EXPECT_EQ(data.size(), 13u + area->encodedPictureLength) << "only the dial";
        const std::size_t colour = kFirstItem + 6 + 7;
        if (c.recordLength == 14) {
            EXPECT_EQ(body.bytes[colour], 0x33) << "the low byte alone";
        } else if (c.recordLength == 23) {
            EXPECT_EQ(
                std::vector<uint8_t>(body.bytes.begin() + colour, body.bytes.begin() + colour + 4),
                (std::vector<uint8_t>{0x11, 0x22, 0x33, 0}))
                << "32 bits, red first";
        }
    }
}

TEST(TimeAreaG6, BattleTimeSetAndCancelledKeepsTheAttributes) {
    screen(1, 0, 0x0051);
    auto area = g6_clock(clock_content(0, 0, 0, 0, 1, 2));
    area->keep_area_extra({0xA1, 0xA2, 0xA3});
    const BattleTime battle{0x0201, {3, 4, 5, 6, 7, 8, 9}};
    area->setBattleTime(&battle, 1);
    std::array<uint8_t, 27> expected{0xA1, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xA2, 0xA3};
    EXPECT_EQ(area->battleRecord.bytes(), expected);

    DataFileWriter data(kData);
    const AreaBodyG6 body = time_area_body_g6(*area, data);
    EXPECT_EQ(std::vector<uint8_t>(body.bytes.begin() + kBattle, body.bytes.begin() + kBattle + 27),
              std::vector<uint8_t>(expected.begin(), expected.end()));
    EXPECT_EQ(body.bytes[9], 0) << "no frame";
    EXPECT_EQ(body.declaredLength, 2u * (2 + 14) + 48);

    area->setBattleTime(nullptr, 0);
    expected = {0xA1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xA2, 0xA3};
    EXPECT_EQ(area->battleRecord.bytes(), expected);
}

} // namespace
} // namespace zel
