// Colours of clock items and hands as the controllers read them, and the forms of the hand
// record in the program files.
//
// A one-, two- or three-colour screen takes a colour code (bit 0 red, bit 1 green, bit 2
// blue); a 24-bit colour is folded to a code by thresholds, and a dark colour falls to red,
// never to black. A full-colour screen takes the components: a 16-bit 5-6-5 value through the
// gamma tables in pixel mode 3, the 32-bit value red + green << 8 + blue << 16 otherwise.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "clock/time_area.h"
#include "render/encode.h"
#include "sdk/bytes.h"

namespace zel {

// The screen as the clock colours depend on it.
struct ClockScreen {
    int32_t screenColor = 0; // g_screenColor
    uint32_t tranPixelMode = 0;
};
// g_screenColor and g_tranPixelMode as they stand now.
ClockScreen clock_screen_now();

// The colour code of a colour on a screen of single colours.
uint8_t clock_color_code(uint32_t color);

// The full-colour value of a colour: 5-6-5 (blue in the high bits) in mode 3, else
// red + (green << 8) + (blue << 16). Codes below 8 stand for components of 0 or 255.
uint32_t full_color_value(uint32_t color, uint32_t tranPixelMode, const GammaTables &gamma);

// The colour record of an item: code and hourFlag (2 bytes); on a full-colour screen the
// 16-bit value and hourFlag in mode 3 (3 bytes), the 32-bit value and hourFlag otherwise
// (5 bytes). Returns the bytes written.
std::size_t write_clock_color(ByteWriter &out, uint32_t color, uint8_t hourFlag,
                              const ClockScreen &screen, const GammaTables &gamma);

// A hand colour for the G6 records: unchanged unless the screen is full colour, then
// full_color_value. (The 5-6-5 rule hangs on mode 3 while the record's form hangs on mode 5,
// so mode 4 puts a 32-bit value into a 16-bit field and loses blue. Deliberate.)
uint32_t convertHandColor(uint32_t color, const ClockScreen &screen, const GammaTables &gamma);

// The hand record in its three forms. Short (14 bytes, every G5 body, G6 on screens of single
// colours): one low byte of each colour. Medium (17 bytes, G6 full colour, mode not 5): the
// low 16 bits of each converted colour. Long (23 bytes, G6 full colour, mode 5): the record as
// the host gave it with each colour converted, 32 bits.
inline constexpr std::size_t kHandRecordMediumSize = 17;
inline constexpr std::size_t kHandRecordLongSize = 23;
std::array<uint8_t, kHandRecordSize> hand_record_short(const AnalogClock &clock);
std::array<uint8_t, kHandRecordMediumSize>
hand_record_medium(const AnalogClock &clock, const ClockScreen &screen, const GammaTables &gamma);
std::array<uint8_t, kHandRecordLongSize>
hand_record_long(const AnalogClock &clock, const ClockScreen &screen, const GammaTables &gamma);

} // namespace zel
