// The body of a clock area in a G5 program file, read from the file layout alone:
//
//   the 9-byte area record, a frame mark 0, two bytes 0,
//   the background, encoded like a page of the area's whole rectangle (no length in front),
//   the item count (one byte),
//   items: u16 x, u16 y, u8 type, u8 align, then for types 0 to 7 a colour record (its size
//          set by the screen) and a whole glyph table; for type 8 (an analog clock's hands) a
//          14-byte hand record.
//
// A glyph table: u32 length of what follows, u16 count, u32 offset of each glyph (i times the
// size of one), then the glyphs: u8 row bytes, u8 width, u8 height, rows from the top, the
// first pixel of a row in the top bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/program_decoder.h"

namespace zel::sim {

// The size of an item's colour record: a code and the 12-hour flag on a screen of single
// colours (2); a 5-6-5 value and the flag in full-colour mode 3 (3); a 32-bit value and the flag
// in any other full-colour mode (5).
std::size_t clock_color_size(const ScreenMode &mode);

struct ClockBodyFailure {
    std::size_t offset = 0;
    std::string what;
};

// Reads the clock body that starts at `at` (just behind the block's length word) and ends at
// `end`: every byte up to `end` must belong to an item.
std::optional<DecodedClock> read_clock_body(std::span<const uint8_t> file, std::size_t at,
                                            std::size_t end, const ScreenMode &mode,
                                            ClockBodyFailure &failure);

// Where the clock body at `at` may end: the item boundaries at or beyond `declaredEnd` and not
// beyond `limit`, in order, as far as the items read well. Empty when the body does not read
// as a clock on this screen.
std::vector<std::size_t> clock_body_ends(std::span<const uint8_t> file, std::size_t at,
                                         std::size_t declaredEnd, std::size_t limit,
                                         const ScreenMode &mode);

// One glyph of a table.
struct DecodedGlyph {
    uint8_t rowBytes = 0;
    uint8_t width = 0;
    uint8_t height = 0;
    std::span<const uint8_t> rows;
    // The bit of pixel (x, y) of the glyph.
    bool bit(uint32_t x, uint32_t y) const;
};

// The glyphs of a whole table (length field included), or nothing when its lengths, its
// offsets and its glyphs do not agree.
std::optional<std::vector<DecodedGlyph>> decode_glyph_table(std::span<const uint8_t> table);

// The table of a G6 fixed glyph (item type 12): count 1, offset 0, and the one glyph twice, the
// two copies equal. Its one glyph, or nothing when the table is not so.
std::optional<std::vector<DecodedGlyph>> decode_fixed_glyph_table(std::span<const uint8_t> table);

// The glyphs of an item's table, by the item's type.
std::optional<std::vector<DecodedGlyph>> item_glyph_table(const DecodedClockItem &item);

} // namespace zel::sim
