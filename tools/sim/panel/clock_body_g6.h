// The body of a clock area in a G6 program file, read from the file layout alone. The body stays
// in the program file and its bitmaps stand in the data file, at one-based offsets:
//
//   the 9-byte area record, a frame mark 0, the 27-byte battle record, two bytes 0,
//   u32 data offset and u32 length of the background (encoded like a page of the area),
//   the item count (one byte),
//   items: u16 x, u16 y, u8 type, u8 align, then for an analog clock's hands (type 8) the hand
//          record (14, 17 or 23 bytes by the screen); for any other type a colour record (its
//          size set by the screen), u32 data offset and u32 length of the item's glyph table.
//
// Type 12 is a fixed glyph: a table of one glyph (stored twice) that the 0x66 controllers take
// for a clock's separators. Items are of a fixed size on one screen, so the body says where it
// ends: behind its items, or at its declared length when that is further, the bytes between
// being 0 (the count can name items of an unknown format that were never written).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sim/panel/clock_body.h"
#include "sim/panel/program_decoder.h"

namespace zel::sim {

struct DecodedClockG6 {
    std::array<uint8_t, 27> battleRecord{};
    uint32_t backgroundOffset = 0; // as stored: one above the position in the data file
    uint32_t backgroundLength = 0;
    struct Table {
        uint32_t offset = 0; // as stored; 0 for the hands, which have no table
        uint32_t length = 0;
    };
    std::vector<Table> tables; // one per item
    DecodedClock clock;        // background and tables point into the data file
    std::size_t bodyBytes = 0; // what the body holds
};

// The size of the hand record in a G6 body on this screen: 14 on a screen of single colours,
// 23 on a full-colour one in pixel mode 5, 17 on another full-colour one.
std::size_t hand_record_size_g6(const ScreenMode &mode);

// Reads the clock body that starts at `at` (behind the block's length word) with its declared
// length, not beyond `limit` (where the program file's CRC starts). `data` is the whole data
// file, `dataEnd` where its CRC starts.
std::optional<DecodedClockG6> read_clock_body_g6(std::span<const uint8_t> program, std::size_t at,
                                                 uint32_t declaredLength, std::size_t limit,
                                                 std::span<const uint8_t> data, std::size_t dataEnd,
                                                 const ScreenMode &mode, ClockBodyFailure &failure);

} // namespace zel::sim
