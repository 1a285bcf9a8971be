// Glyph tables: the strips of small 1-bit bitmaps from which a controller composes a running
// clock. A file format:
//
//   u32 tableLength   bytes after this field: 2 + 4 × glyphCount + the glyph bytes
//   u16 glyphCount
//   u32 glyphOffset[glyphCount]   i × the size of one glyph
//   glyphs, all of one size: u8 rowBytes (padded width / 8), u8 glyphWidth, u8 glyphHeight,
//                            rows from the top, leftmost pixel in the most significant bit
//
// The bits are deliberately of opposite sense on the two classes of screen: 1 for no ink on a
// screen of single colours, 1 for ink on a full-colour screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sdk/bytes.h"

namespace zel {

// The size of the cells of a table, from what the font measured.
struct GlyphCell {
    uint8_t glyphWidth = 0;  // the measured width, at most 255; 0 becomes 8
    uint8_t glyphHeight = 0; // at most 255
    int32_t paddedWidth = 0; // glyphWidth rounded up to a multiple of 8
    uint8_t rowBytes = 0;    // paddedWidth / 8
    std::size_t glyph_size() const { return 3 + std::size_t{rowBytes} * glyphHeight; }
};
GlyphCell glyph_cell(int32_t measuredWidth, int32_t height);

// The texts (GBK) of a table kind, one per glyph, in table order; none for an unknown kind.
std::vector<std::string> glyph_table_entries(uint32_t tableKind, uint32_t subKind);

// Appends one glyph: its three header bytes, then its rows read from a painted cell of
// paddedWidth × glyphHeight ARGB32 pixels, a pixel being inked when its red is 0x80 or more.
void append_glyph(ByteWriter &out, const std::vector<uint8_t> &cell, const GlyphCell &geometry,
                  int32_t screenColor);

} // namespace zel
