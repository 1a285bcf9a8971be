// Makers for the clock tests: time areas on a chosen screen, and readers of glyph tables and
// time bodies as a controller would walk them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "clock/time_area.h"
#include "sdk/bytes.h"
#include "sdk/screen_globals.h"

namespace zel::test {

inline constexpr const char *kClockFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Sets the process-wide screen for the clock tests (colour class and pixel mode).
inline void clock_screen(int32_t color, uint32_t mode) {
    g_screenColor.store(static_cast<E_ScreenColor_G56>(color));
    g_tranPixelMode.store(mode);
    g_doubleColor.store(1);
}

inline TimeContent clock_content(uint8_t date, uint32_t dateFormat, uint8_t week,
                                 uint32_t weekFormat, uint8_t time, uint32_t timeFormat,
                                 uint32_t arrMode = 0, uint16_t points = 12) {
    TimeContent c;
    c.arrMode = arrMode;
    c.fontColor = 1;
    c.fontSize = points;
    c.horizontalAlign = 0;
    c.dateEnable = date;
    c.dateFormat = dateFormat;
    c.weekEnable = week;
    c.weekFormat = weekFormat;
    c.timeEnable = time;
    c.timeFormat = timeFormat;
    return c;
}

// A time area at (x, 0), width × height, with DejaVu Sans by path and the given content.
inline std::unique_ptr<TimeArea> clock_area(const TimeContent &content, uint16_t width = 128,
                                            uint16_t height = 32, uint16_t x = 0) {
    auto area = std::make_unique<TimeArea>();
    area->set_area_header(2, {x, 0, width, height});
    area->addContentByPath(content, kClockFont);
    return area;
}

// A glyph table as its header says it is.
struct ParsedTable {
    uint32_t tableLength = 0;
    uint16_t count = 0;
    std::vector<uint32_t> offsets;
    std::vector<std::vector<uint8_t>> glyphs; // each with its three header bytes
};

inline ParsedTable parse_table(const std::vector<uint8_t> &table) {
    ParsedTable t;
    ByteReader in(table);
    t.tableLength = in.u32();
    t.count = in.u16();
    for (uint16_t i = 0; i < t.count; ++i)
        t.offsets.push_back(in.u32());
    const std::size_t glyphBytes = in.remaining();
    const std::size_t size = t.count == 0 ? 0 : glyphBytes / t.count;
    for (uint16_t i = 0; i < t.count; ++i) {
        const auto glyph = in.bytes(size);
        t.glyphs.emplace_back(glyph.begin(), glyph.end());
    }
    EXPECT_TRUE(in.ok());
    EXPECT_EQ(in.remaining(), 0u);
    return t;
}

// One item of a G5 time body.
struct BodyItem {
    uint16_t x = 0;
    uint16_t y = 0;
    uint8_t type = 0;
    uint8_t align = 0;
    std::vector<uint8_t> color;
    std::vector<uint8_t> table; // or the hand record of an analog item
};

// Walks the items of a G5 time body, each colour record `colorSize` bytes long and each table
// as long as its own tableLength says.
inline std::vector<BodyItem> body_items(const std::vector<uint8_t> &body, uint32_t pictureLength,
                                        std::size_t colorSize) {
    std::vector<BodyItem> items;
    ByteReader in(body);
    in.skip(12 + std::size_t{pictureLength} + 1); // record, marks, background, unit count
    while (in.ok() && in.remaining() > 0) {
        BodyItem item;
        item.x = in.u16();
        item.y = in.u16();
        item.type = in.u8();
        item.align = in.u8();
        if (item.type == 8) {
            const auto hands = in.bytes(14);
            item.table.assign(hands.begin(), hands.end());
        } else {
            const auto color = in.bytes(colorSize);
            item.color.assign(color.begin(), color.end());
            const uint32_t length = read_u32_le(body, in.pos());
            const auto table = in.bytes(4 + std::size_t{length});
            item.table.assign(table.begin(), table.end());
        }
        items.push_back(item);
    }
    EXPECT_TRUE(in.ok());
    return items;
}

} // namespace zel::test
