// The running clock as a panel shows it at a given moment: the background at the area's place,
// and at each item's place the glyphs of the item's value copied from its table, as a
// controller does every second; an analog clock's hands drawn over its dial from the record.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "sim/panel/program_decoder.h"

namespace zel::sim {

// A moment of the controller's clock.
struct ClockTime {
    int year = 2000;
    int month = 1; // 1 to 12
    int day = 1;   // 1 to 31
    int hour = 0;  // 0 to 23
    int minute = 0;
    int second = 0;

    bool operator==(const ClockTime &) const = default;
};

// The day of the week of the date: 0 Sunday to 6 Saturday.
int week_day(const ClockTime &time);

// "YYYY-MM-DD HH:MM:SS", with a day that the month has; nothing for any other text.
std::optional<ClockTime> parse_clock_time(const std::string &text);
std::string format_clock_time(const ClockTime &time);

// The glyphs an item shows at `time`, by their number in its table, left to right: the digits
// of the year (4), of month, day, hour (on a 12-hour clock with the item's flag), minute or
// second (2 each); AM 0 or PM 1; the week day from Monday 0; glyph 0 for a fixed glyph (type
// 12). Nothing for another type.
std::vector<std::size_t> item_glyphs(uint8_t type, bool twelveHour, const ClockTime &time);

// The colour an item's record gives, as 0xRRGGBB: a colour code (bit 0 red, bit 1 green,
// bit 2 blue), a 5-6-5 value (blue in the high bits) or the 32-bit red + green << 8 +
// blue << 16, by the record's size.
uint32_t item_colour(std::span<const uint8_t> record);

// Paints a clock area read with `mode` onto the canvas at `time`: the background, then the ink
// of each cell in the item's colour over it (the file does not say whether a controller copies
// a cell's dark pixels too; under this reading a separator that a cell overlaps stays whole).
// Nothing outside the area's rectangle and the canvas is touched.
void paint_clock(Rgb &canvas, const ScreenMode &mode, const DecodedArea &area,
                 const ClockTime &time);

} // namespace zel::sim
