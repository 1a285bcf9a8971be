#include "clock/time_area_g6.h"

#include <algorithm>

#include "clock/clock_texts.h"
#include "clock/glyph_table.h"
#include "sdk/screen_globals.h"

namespace zel {
namespace {

constexpr int32_t kFullColor = 4;
constexpr uint32_t kModeRgb888 = 5;
constexpr uint8_t kFixedGlyphFamily = 0x66; // low byte of the controller types that take them

} // namespace

std::array<uint8_t, BattleRecord::kSize> BattleRecord::bytes() const {
    ByteWriter w(kSize);
    w.u8(backGroundFlag).u8(battleEnable).u16(battleWord).bytes(battleBytes);
    w.u8(transparency).u8(areaEqual).zeros(14);
    std::array<uint8_t, kSize> out{};
    std::copy_n(w.data().begin(), kSize, out.begin());
    return out;
}

void TimeArea_G6::keep_area_extra(const AreaExtraG6 &extra) {
    battleRecord.backGroundFlag = extra.backGroundFlag;
    battleRecord.transparency = extra.transparency;
    battleRecord.areaEqual = extra.areaEqual;
}

void TimeArea_G6::addAnalogClock_G6(const AnalogClock &clock, uint32_t style,
                                    const DialMarkColors &marks) {
    analogFlag = 1;
    dialStyle = style;
    markColors = marks;
    const ClockScreen screen = clock_screen_now();
    if (screen.screenColor != kFullColor) {
        handRecordLength = kHandRecordSize;
        handRecord = hand_record_short(clock);
    } else if (screen.tranPixelMode != kModeRgb888) {
        handRecordLength = kHandRecordMediumSize;
        handRecordMedium = hand_record_medium(clock, screen, area_gamma(*this));
    } else {
        handRecordLength = kHandRecordLongSize;
        handRecordLong = hand_record_long(clock, screen, area_gamma(*this));
    }
    layoutText();
}

void TimeArea_G6::setBattleTime(const BattleTime *record, uint8_t enable) {
    if (enable != 0 && record != nullptr) {
        battleRecord.battleEnable = 1;
        battleRecord.battleWord = record->battleWord;
        battleRecord.battleBytes = record->battleBytes;
    } else {
        battleRecord.battleEnable = 0;
        battleRecord.battleWord = 0;
        battleRecord.battleBytes = {};
    }
}

bool TimeArea_G6::fixed_glyphs_wanted() {
    return g_screenColor.load(std::memory_order_relaxed) == kFullColor &&
           (g_controllerType.load(std::memory_order_relaxed) & 0xFF) == kFixedGlyphFamily;
}

uint32_t TimeArea_G6::measureFixedGlyphs() {
    fixedTableBytes = 0;
    if (!fixed_glyphs_wanted()) return 0;
    // The same texts as the writer's, format by format.
    std::vector<const char *> texts;
    const TimeContent &t = timeContent;
    if (t.dateEnable != 0) {
        switch (t.dateFormat) {
        case 0:
        case 2:
            texts = {"-", "-"};
            break;
        case 1:
        case 3:
            texts = {"/", "/"};
            break;
        case 4:
            texts = {"-"};
            break;
        case 5:
            texts = {"/"};
            break;
        case 6:
            texts = {clock_text::kMonth, clock_text::kDay};
            break;
        case 7:
            texts = {clock_text::kYear, clock_text::kMonth, clock_text::kDay};
            break;
        default:
            break;
        }
    }
    if (t.timeEnable != 0) {
        switch (t.timeFormat) {
        case 0:
            texts.insert(texts.end(), {":", ":"});
            break;
        case 1:
            texts.insert(texts.end(),
                         {clock_text::kHour, clock_text::kMinute, clock_text::kSecond});
            break;
        case 2:
        case 4:
        case 5:
            texts.push_back(":");
            break;
        case 3:
            texts.insert(texts.end(), {clock_text::kHour, clock_text::kMinute});
            break;
        default:
            break;
        }
    }
    const int32_t screenColor = g_screenColor.load(std::memory_order_relaxed);
    for (const char *text : texts) {
        std::vector<uint8_t> table;
        uint32_t size = 0;
        uint32_t cellWidth = 0;
        buildFixedGlyph(table, size, cellWidth, screenColor, text);
        fixedTableBytes += size;
    }
    return static_cast<uint32_t>(texts.size());
}

void TimeArea_G6::buildFixedGlyph(std::vector<uint8_t> &out, uint32_t &size, uint32_t &cellWidth,
                                  int32_t screenColor, const std::string &gbk) const {
    const int32_t measured = gapWidth(gbk);
    cellWidth = static_cast<uint32_t>(measured);
    const GlyphCell cell = glyph_cell(measured, clockLineHeight());
    ByteWriter glyphs;
    std::vector<uint8_t> rgba;
    for (int copy = 0; copy < 2; ++copy) {
        rgba.assign(static_cast<std::size_t>(cell.paddedWidth) * cell.glyphHeight * 4, 0);
        paintClockCell(rgba, gbk, cell.paddedWidth, cell.glyphHeight, fontPixelSize);
        append_glyph(glyphs, rgba, cell, screenColor);
    }
    ByteWriter table(10 + glyphs.size());
    table.u32(static_cast<uint32_t>(6 + glyphs.size())).u16(1).u32(0).bytes(glyphs.data());
    out = table.take();
    size = static_cast<uint32_t>(out.size());
}

void TimeArea_G6::writeFixedGlyphItem(ByteWriter &body, DataFileWriter &data,
                                      const std::string &gbk, int32_t itemX, int32_t itemY) {
    if (!fixed_glyphs_wanted()) return;
    body.u16(static_cast<uint16_t>(itemX)).u16(static_cast<uint16_t>(itemY)).u8(kItemFixedGlyph);
    body.u8(timeContent.horizontalAlign);
    writeClockColor(body, 0);
    std::vector<uint8_t> table;
    uint32_t size = 0;
    uint32_t cellWidth = 0;
    buildFixedGlyph(table, size, cellWidth, g_screenColor.load(std::memory_order_relaxed), gbk);
    body.u32(data.append(table)).u32(size);
    ++unitCount;
}

} // namespace zel
