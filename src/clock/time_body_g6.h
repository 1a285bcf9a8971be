// The body of a time area in a G6 program file. Its bitmaps (the background and every glyph
// table) go to the data file at the running offset; the body points at them:
//
//   9   the area record
//   1   frame mark 0: a time area has no frame
//   27  the battle record
//   2   zeros
//   4   data offset of the background, 4 its length
//   1   the low byte of unitCount, fixed glyph items included (written last)
//   items: u16 x, u16 y, u8 type, u8 horizontalAlign, the colour record (2, 3 or 5 bytes), u32
//          data offset and u32 length of the item's own copy of its table; or, for an analog
//          clock, the one item x 0, y 0, type 8, align 1 and the hand record in the form the
//          screen of now takes (14, 17 or 23 bytes).
//
// Positions of the time items differ from the G5 ones in formats 0, 1 and 3, and on the
// controllers that take fixed glyphs the separators come as items of their own, before the
// date's and the time's digit items.
#pragma once

#include <cstdint>

#include "clock/time_area_g6.h"
#include "program/area_kinds.h"
#include "program/data_file.h"
#include "sdk/bytes.h"

namespace zel {

// Bytes of a colour record as the declared length counts them: 2 on a screen of single
// colours, 5 on a full-colour screen in pixel mode 5, 3 on another one. (The record itself is
// 5 bytes long on a full-colour screen in mode 4, which the length does not count.)
uint32_t time_element_size_g6();

// The length the block declares: unitCount × (handRecordLength + 6) + 48 for an analog clock,
// (unitCount + fixedItems) × (element size + 14) + 48 for a digital one.
uint32_t time_body_length_g6(const TimeArea_G6 &area, uint32_t fixedItems);

// Appends the body, its bitmaps going to `data`. Relies on a preparation just before; raises
// unitCount by the fixed glyph items it writes.
void writeTimeBody_G6(TimeArea_G6 &area, ByteWriter &body, DataFileWriter &data);

// The G6 body of a time area: prepares it with the screen settings of now and writes it.
AreaBodyG6 time_area_body_g6(TimeArea_G6 &area, DataFileWriter &data);

} // namespace zel
