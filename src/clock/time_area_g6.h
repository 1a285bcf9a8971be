// TimeArea_G6: the clock area of a G6 program.
//
// It renders as TimeArea does and adds what the G6 files carry: a 27-byte record of the area's
// attributes and a battle time (a setting the library stores and writes and never interprets),
// the hand record in the form the screen takes (short, medium or long), and, on full-colour
// controllers of the 0x66 family, fixed glyph items: the separators of the clock are delivered
// twice, once painted on the background and once as glyphs of their own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "clock/clock_color.h"
#include "clock/time_area.h"
#include "program/data_file.h"
#include "sdk/bytes.h"

namespace zel {

// The host's battle time: a word and seven bytes, for the controller.
struct BattleTime {
    uint16_t battleWord = 0;
    std::array<uint8_t, 7> battleBytes{};
};

// The 27-byte record of a G6 clock area: its attributes and its battle time.
struct BattleRecord {
    static constexpr std::size_t kSize = 27;

    uint8_t backGroundFlag = 0; // the three bytes of the add-area record
    uint8_t transparency = 0;
    uint8_t areaEqual = 0;
    uint8_t battleEnable = 0; // 1 while a battle time is set
    uint16_t battleWord = 0;
    std::array<uint8_t, 7> battleBytes{};

    std::array<uint8_t, kSize> bytes() const;
    bool operator==(const BattleRecord &) const = default;
};

// Item type of a fixed glyph.
inline constexpr uint8_t kItemFixedGlyph = 12;

class TimeArea_G6 : public TimeArea {
  public:
    TimeArea_G6() = default;
    ~TimeArea_G6() override = default;

    // The attribute bytes of the add-area record go to the battle record.
    void keep_area_extra(const AreaExtraG6 &extra);

    // Makes the area an analog clock (for good), keeping the hands in the form the screen of
    // now takes: short (14 bytes) on a screen of single colours, long (23) on a full-colour
    // screen in pixel mode 5, medium (17) on another full-colour screen. Resets the geometry.
    void addAnalogClock_G6(const AnalogClock &clock, uint32_t style, const DialMarkColors &marks);

    // With `enable` non-zero sets the battle time from `record`; with 0 clears it (record may
    // be null). The attribute bytes stay.
    void setBattleTime(const BattleTime *record, uint8_t enable);

    // Whether the screen of now takes fixed glyph items: full colour and a controller type
    // whose low byte is 0x66.
    static bool fixed_glyphs_wanted();
    // The number of fixed glyph items the writer will write, with their tables' bytes in
    // fixedTableBytes (0 and 0 when the screen takes none).
    uint32_t measureFixedGlyphs();
    // The table of one fixed glyph: length, count 1, offset 0, then the glyph twice (the count
    // says 1 and the table holds two copies; the controllers expect both). The glyph is a row
    // height high (not lowered to the pixel size) and as wide as the text's gap.
    void buildFixedGlyph(std::vector<uint8_t> &out, uint32_t &size, uint32_t &cellWidth,
                         int32_t screenColor, const std::string &gbk) const;
    // When the screen takes fixed glyphs: writes the item of `gbk` at (x, y) into the body,
    // its table into the data file at the running offset, and counts it in unitCount.
    void writeFixedGlyphItem(ByteWriter &body, DataFileWriter &data, const std::string &gbk,
                             int32_t itemX, int32_t itemY);

    BattleRecord battleRecord;
    uint32_t fixedTableBytes = 0;
    uint16_t handRecordLength = 0; // 14, 17 or 23 once an analog clock was added here
    std::array<uint8_t, kHandRecordMediumSize> handRecordMedium{};
    std::array<uint8_t, kHandRecordLongSize> handRecordLong{};
};

} // namespace zel
