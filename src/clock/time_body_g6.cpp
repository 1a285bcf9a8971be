#include "clock/time_body_g6.h"

#include <algorithm>

#include "clock/clock_texts.h"
#include "clock/time_body_g5.h"
#include "sdk/screen_globals.h"

namespace zel {
namespace {

constexpr uint32_t kMultiLine = 1;
constexpr uint8_t kNoFrame = 0;
constexpr uint8_t kAnalogAlign = 1;
constexpr int32_t kFullColor = 4;
constexpr uint32_t kModeRgb888 = 5;
// Record, frame mark, battle record, two zeros, background offset and length, unit count.
constexpr uint32_t kBodyFixed = kAreaHeaderSize + 1 + BattleRecord::kSize + 2 + 4 + 4 + 1;
constexpr uint32_t kItemFixed = 6 + 4 + 4; // header, table offset, table length

void write_item(TimeArea_G6 &area, ByteWriter &body, DataFileWriter &data, int32_t x, int32_t y,
                uint8_t type, uint8_t hourFlag, const std::vector<uint8_t> &table) {
    body.u16(static_cast<uint16_t>(x)).u16(static_cast<uint16_t>(y)).u8(type);
    body.u8(area.timeContent.horizontalAlign);
    area.writeClockColor(body, hourFlag);
    // Each item points at its own copy of the table.
    body.u32(data.append(table)).u32(static_cast<uint32_t>(table.size()));
}

// The hand record in the form that the screen of now takes, whatever form the clock was added
// in: a field that was never filled goes out as it is.
void write_hands(const TimeArea_G6 &area, ByteWriter &body) {
    const int32_t screenColor = g_screenColor.load(std::memory_order_relaxed);
    if (screenColor != kFullColor) {
        body.bytes(area.handRecord);
    } else if (g_tranPixelMode.load(std::memory_order_relaxed) == kModeRgb888) {
        body.bytes(area.handRecordLong);
    } else {
        body.bytes(area.handRecordMedium);
    }
}

void write_date(TimeArea_G6 &area, ByteWriter &body, DataFileWriter &data, const ClockRows &rows,
                int32_t &dateWidth) {
    const TimeContent &t = area.timeContent;
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    const DateItems date = date_items(area);
    dateWidth = date.dateWidth;
    const int32_t lead = t.arrMode == kMultiLine
                             ? alignOffset(t.horizontalAlign, area.drawWidth, dateWidth)
                             : alignOffset(t.horizontalAlign, area.drawWidth, area.lineWidth);
    const char *sign = (t.dateFormat % 2 == 0) ? "-" : "/";
    auto fixed = [&](const char *text, int32_t x) {
        area.writeFixedGlyphItem(body, data, text, lead + x, rows.top);
    };
    // The fixed glyphs come first, whatever the order on the screen.
    switch (t.dateFormat) {
    case 0:
    case 1:
        fixed(sign, 4 * d);
        fixed(sign, date.monthX + 2 * d);
        break;
    case 2:
    case 3:
        fixed(sign, 2 * d);
        fixed(sign, date.monthX + 2 * d);
        break;
    case 4:
    case 5:
        fixed(sign, 2 * d);
        break;
    case 6:
        fixed(clock_text::kMonth, 2 * d);
        fixed(clock_text::kDay, date.dayX + 2 * d);
        break;
    case 7:
        fixed(clock_text::kYear, 4 * d);
        fixed(clock_text::kMonth, date.monthX + 2 * d);
        fixed(clock_text::kDay, date.dayX + 2 * d);
        break;
    default:
        break;
    }
    if (date.hasYear) {
        write_item(area, body, data, date.yearX + lead, rows.top, kItemYear, 0, area.digitTable);
    }
    write_item(area, body, data, date.monthX + lead, rows.top, kItemMonth, 0, area.digitTable);
    write_item(area, body, data, date.dayX + lead, rows.top, kItemDay, 0, area.digitTable);
}

void write_time(TimeArea_G6 &area, ByteWriter &body, DataFileWriter &data, const ClockRows &rows,
                int32_t dateWidth, int32_t weekWidth) {
    const TimeContent &t = area.timeContent;
    const uint8_t align = t.horizontalAlign;
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    const int32_t sp = area.gapWidth(" ");
    const int32_t c = area.gapWidth(":");
    int32_t base = 0;
    int32_t rowTop = rows.top;
    if (t.arrMode != 0) {
        base = alignOffset(align, area.drawWidth, area.timeWidth);
        rowTop += rows.px * ((t.dateEnable != 0) + (t.weekEnable != 0));
    } else {
        base = alignOffset(align, area.drawWidth, area.lineWidth);
        if (t.dateEnable != 0) base += dateWidth + sp;
        if (t.weekEnable != 0) base += weekWidth + sp;
    }
    auto fixed = [&](const char *text, int32_t x) {
        area.writeFixedGlyphItem(body, data, text, x, rowTop);
    };
    // An unknown format places nothing: its hour and minute items stand at x 0.
    int32_t hourX = 0;
    int32_t minuteX = 0;
    int32_t secondX = 0;
    int32_t meridiemX = 0;
    const int32_t a = static_cast<int32_t>(area.ampmCellWidth);
    switch (t.timeFormat) {
    case 0:
        hourX = base;
        minuteX = base + 2 * d + c;
        secondX = minuteX + 2 * d + c;
        fixed(":", hourX + 2 * d);
        fixed(":", minuteX + 2 * d);
        break;
    case 1: {
        // Gaps of the signs here, where G5 takes their own widths.
        const int32_t gH = area.gapWidth(clock_text::kHour);
        const int32_t gM = area.gapWidth(clock_text::kMinute);
        hourX = base;
        minuteX = base + 2 * d + gH;
        secondX = minuteX + 2 * d + gM;
        fixed(clock_text::kHour, hourX + 2 * d);
        fixed(clock_text::kMinute, minuteX + 2 * d);
        fixed(clock_text::kSecond, secondX + 2 * d);
        break;
    }
    case 2:
        hourX = base;
        minuteX = base + 2 * d + c + 2;
        fixed(":", hourX + 2 * d);
        break;
    case 3:
        hourX = base;
        minuteX = base + 2 * d + area.gapWidth(clock_text::kHour);
        fixed(clock_text::kHour, hourX + 2 * d);
        fixed(clock_text::kMinute, minuteX + 2 * d);
        break;
    case 4:
        hourX = base + a + sp;
        minuteX = hourX + 2 * d + c + 1;
        meridiemX = base;
        fixed(":", hourX + 2 * d);
        break;
    case 5:
        hourX = base;
        minuteX = base + 2 * d + c + 2;
        meridiemX = minuteX + 2 * d + sp;
        fixed(":", hourX + 2 * d);
        break;
    default:
        break;
    }
    const bool twelveHour = t.timeFormat == 4 || t.timeFormat == 5;
    if (twelveHour) {
        write_item(area, body, data, meridiemX, rowTop, kItemMeridiem, 0, area.ampmTable);
    }
    write_item(area, body, data, hourX, rowTop, kItemHour, twelveHour ? 1 : 0, area.digitTable);
    write_item(area, body, data, minuteX, rowTop, kItemMinute, 0, area.digitTable);
    if (t.timeFormat == 0 || t.timeFormat == 1) {
        write_item(area, body, data, secondX, rowTop, kItemSecond, 0, area.digitTable);
    }
}

} // namespace

uint32_t time_element_size_g6() {
    if (g_screenColor.load(std::memory_order_relaxed) != kFullColor) return 2;
    return g_tranPixelMode.load(std::memory_order_relaxed) == kModeRgb888 ? 5 : 3;
}

uint32_t time_body_length_g6(const TimeArea_G6 &area, uint32_t fixedItems) {
    if (area.analogFlag != 0) {
        return area.unitCount * (area.handRecordLength + 6u) + kBodyFixed;
    }
    return (area.unitCount + fixedItems) * (time_element_size_g6() + kItemFixed) + kBodyFixed;
}

void writeTimeBody_G6(TimeArea_G6 &area, ByteWriter &body, DataFileWriter &data) {
    body.bytes(area.areaHeader).u8(kNoFrame).bytes(area.battleRecord.bytes()).u16(0);
    const std::size_t pictureLength =
        std::min<std::size_t>(area.encodedPictureLength, area.encodedPicture.size());
    body.u32(data.append(std::span(area.encodedPicture.data(), pictureLength)));
    body.u32(area.encodedPictureLength);
    const std::size_t countAt = body.size();
    body.u8(0); // the count, known when the items are written

    if (area.analogFlag != 0) {
        body.u16(0).u16(0).u8(kItemAnalog).u8(kAnalogAlign);
        write_hands(area, body);
    } else {
        const TimeContent &t = area.timeContent;
        const ClockRows rows = clock_rows(area);
        int32_t dateWidth = 0;
        if (t.dateEnable != 0) {
            write_date(area, body, data, rows, dateWidth);
        }
        int32_t weekWidth = 0;
        if (t.weekEnable != 0) {
            int32_t x = 0;
            int32_t y = rows.top;
            if (t.arrMode != 0) {
                x = alignOffset(t.horizontalAlign, area.drawWidth,
                                static_cast<int32_t>(area.weekCellWidth));
                if (t.dateEnable != 0) y += rows.px;
            } else {
                x = alignOffset(t.horizontalAlign, area.drawWidth, area.lineWidth);
                if (t.dateEnable != 0) x += dateWidth + area.gapWidth(" ");
            }
            write_item(area, body, data, x, y, kItemWeek, 0, area.weekTable);
            weekWidth = static_cast<int32_t>(area.weekCellWidth);
        }
        if (t.timeEnable != 0) {
            write_time(area, body, data, rows, dateWidth, weekWidth);
        }
    }
    body.put_u8_at(countAt, static_cast<uint8_t>(area.unitCount));
}

AreaBodyG6 time_area_body_g6(TimeArea_G6 &area, DataFileWriter &data) {
    area.prepareTimeArea();
    const uint32_t fixedItems = area.analogFlag != 0 ? 0 : area.measureFixedGlyphs();
    const uint32_t length = time_body_length_g6(area, fixedItems);
    ByteWriter body(length);
    writeTimeBody_G6(area, body, data);
    // The declared length stays as computed. Where the items run longer (5-byte colour records
    // counted as 3 in pixel mode 4) every byte is kept behind it; where they fall short (the
    // third item that an unknown time format counts and never writes) the rest is zeros.
    std::vector<uint8_t> bytes = body.take();
    if (bytes.size() < length) bytes.resize(length, 0);
    return {length, std::move(bytes)};
}

} // namespace zel
