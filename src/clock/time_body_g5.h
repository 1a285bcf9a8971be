// The body of a time area in a G5 program file, after its preparation:
//
//   9   the area record
//   1   frame mark 0: a time area has no frame
//   2   two zeros (two BCD values of 0)
//   E   the encoded background, without a length in front
//   1   the low byte of unitCount
//   items: u16 x, u16 y (from the area's corner), u8 type, u8 horizontalAlign, the colour
//          record (2, 3 or 5 bytes), then a whole copy of the item's glyph table; or, for an
//          analog clock, the one item x 0, y 0, type 8, align 1 and the 14-byte hand record.
//
// The writer computes the items' places afresh, by formulas of its own; they are close to those
// of the separators on the background, but not equal, and neither is derived from the other.
#pragma once

#include <cstdint>
#include <vector>

#include "clock/time_area.h"
#include "program/area_kinds.h"
#include "sdk/bytes.h"

namespace zel {

// Item types: the field that the controller fills into an item.
inline constexpr uint8_t kItemYear = 0; // 4 digit cells
inline constexpr uint8_t kItemMonth = 1;
inline constexpr uint8_t kItemDay = 2;
inline constexpr uint8_t kItemHour = 3;
inline constexpr uint8_t kItemMinute = 4;
inline constexpr uint8_t kItemSecond = 5;
inline constexpr uint8_t kItemMeridiem = 6; // AM/PM
inline constexpr uint8_t kItemWeek = 7;
inline constexpr uint8_t kItemAnalog = 8;

// The rows of a digital clock: their number (the enabled fields in MULTILINE, else 1), their
// height, the first one's top, and px, the truncated pixel size by which the later rows of
// MULTILINE step down (independent of rowHeight, which serves only for top).
struct ClockRows {
    int32_t rows = 1;
    int32_t rowHeight = 0;
    int32_t top = 0;
    int32_t px = 0;
};
ClockRows clock_rows(const TimeArea &area);

// The date's items from the start of the group, and its width. No year for formats 4, 5, 6;
// an unknown format gives all 0, and its three items are still written.
struct DateItems {
    bool hasYear = true;
    int32_t yearX = 0;
    int32_t monthX = 0;
    int32_t dayX = 0;
    int32_t dateWidth = 0;
};
DateItems date_items(const TimeArea &area);

// The length the block declares: E + 20 × unitCount + 13 for an analog clock,
// E + 8 × unitCount + 13 + tableBytes for a digital one (an item counted with a 2-byte colour
// record; full-colour screens write longer ones, which the length does not count).
uint32_t time_body_length_g5(const TimeArea &area);

// Appends the body. Reads the area only; relies on a preparation just before.
void writeTimeBody(const TimeArea &area, ByteWriter &out);

// The G5 body of a time area: prepares it with the screen settings of now and writes it.
AreaBodyG5 time_area_body_g5(TimeArea &area);

} // namespace zel
