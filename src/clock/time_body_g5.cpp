#include "clock/time_body_g5.h"

#include <algorithm>

#include "clock/clock_texts.h"

namespace zel {
namespace {

constexpr uint32_t kMultiLine = 1;
constexpr uint8_t kNoFrame = 0;
constexpr uint8_t kAnalogAlign = 1;
constexpr uint32_t kBodyFixed = kAreaHeaderSize + 1 + 2 + 1; // record, frame mark, 2 BCD, count
constexpr uint32_t kAnalogItem = 6 + kHandRecordSize;
constexpr uint32_t kDigitalItemCounted = 6 + 2; // header and a 2-byte colour record

// A two-digit BCD value: tens in the high nibble. The body's two are always of 0.
uint8_t bcd(uint8_t value) {
    return static_cast<uint8_t>(((value / 10) << 4) | (value % 10));
}

void write_item(ByteWriter &out, const TimeArea &area, int32_t x, int32_t y, uint8_t type,
                uint8_t hourFlag, const std::vector<uint8_t> &table) {
    out.u16(static_cast<uint16_t>(x)).u16(static_cast<uint16_t>(y)).u8(type);
    out.u8(area.timeContent.horizontalAlign);
    area.writeClockColor(out, hourFlag);
    out.bytes(table);
}

} // namespace

ClockRows clock_rows(const TimeArea &area) {
    const TimeContent &t = area.timeContent;
    ClockRows r;
    r.rows = t.arrMode == kMultiLine
                 ? (t.dateEnable != 0) + (t.weekEnable != 0) + (t.timeEnable != 0)
                 : 1;
    r.rowHeight = area.row_height();
    r.top = centreOffset(static_cast<uint32_t>(area.drawHeight), r.rows, r.rowHeight);
    r.px = truncate_to_int32(area.fontPixelSize);
    return r;
}

DateItems date_items(const TimeArea &area) {
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    DateItems items;
    const uint32_t format = area.timeContent.dateFormat;
    items.hasYear = !(format == 4 || format == 5 || format == 6);
    if (format <= 5) {
        // The hyphen's width serves the "/" formats too: the writer has always measured it.
        const int32_t s = area.gapWidth("-");
        if (format <= 1) {
            items = {true, 0, s + 4 * d, 2 * s + 6 * d, 2 * s + 8 * d};
        } else if (format <= 3) {
            items = {true, 2 * s + 4 * d, s + 2 * d, 0, 2 * s + 8 * d};
        } else {
            items = {false, 0, 0, s + 2 * d, s + 4 * d};
        }
    } else if (format == 6) {
        const int32_t sM = area.gapWidth(clock_text::kMonth);
        const int32_t sD = area.gapWidth(clock_text::kDay);
        items = {false, 0, 0, sM + 2 * d, sM + 4 * d + sD};
    } else if (format == 7) {
        const int32_t sY = area.gapWidth(clock_text::kYear);
        const int32_t sM = area.gapWidth(clock_text::kMonth);
        const int32_t sD = area.gapWidth(clock_text::kDay);
        items = {true, 0, sY + 4 * d, sY + 6 * d + sM, sY + 8 * d + sM + sD};
    }
    return items;
}

uint32_t time_body_length_g5(const TimeArea &area) {
    if (area.analogFlag != 0) {
        return area.encodedPictureLength + kAnalogItem * area.unitCount + kBodyFixed;
    }
    return area.encodedPictureLength + kDigitalItemCounted * area.unitCount + kBodyFixed +
           area.tableBytes;
}

void writeTimeBody(const TimeArea &area, ByteWriter &out) {
    out.bytes(area.areaHeader).u8(kNoFrame).u8(bcd(0)).u8(bcd(0));
    const std::size_t pictureLength =
        std::min<std::size_t>(area.encodedPictureLength, area.encodedPicture.size());
    out.bytes(area.encodedPicture.data(), pictureLength);
    out.u8(static_cast<uint8_t>(area.unitCount));

    if (area.analogFlag != 0) {
        out.u16(0).u16(0).u8(kItemAnalog).u8(kAnalogAlign).bytes(area.handRecord);
        return;
    }

    const TimeContent &t = area.timeContent;
    const ClockRows rows = clock_rows(area);
    const uint8_t align = t.horizontalAlign;
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    const int32_t sp = area.gapWidth(" ");

    int32_t dateWidth = 0;
    if (t.dateEnable != 0) {
        const DateItems date = date_items(area);
        dateWidth = date.dateWidth;
        const int32_t lead = t.arrMode == kMultiLine
                                 ? alignOffset(align, area.drawWidth, dateWidth)
                                 : alignOffset(align, area.drawWidth, area.lineWidth);
        // The file's order (year, month, day) is not the screen's.
        if (date.hasYear) {
            write_item(out, area, date.yearX + lead, rows.top, kItemYear, 0, area.digitTable);
        }
        write_item(out, area, date.monthX + lead, rows.top, kItemMonth, 0, area.digitTable);
        write_item(out, area, date.dayX + lead, rows.top, kItemDay, 0, area.digitTable);
    }

    int32_t weekWidth = 0;
    if (t.weekEnable != 0) {
        int32_t x = 0;
        int32_t y = rows.top;
        if (t.arrMode != 0) {
            x = alignOffset(align, area.drawWidth, static_cast<int32_t>(area.weekCellWidth));
            if (t.dateEnable != 0) y += rows.px;
        } else {
            x = alignOffset(align, area.drawWidth, area.lineWidth);
            if (t.dateEnable != 0) x += dateWidth + sp;
        }
        write_item(out, area, x, y, kItemWeek, 0, area.weekTable);
        weekWidth = static_cast<int32_t>(area.weekCellWidth);
    }

    if (t.timeEnable != 0) {
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
        // An unknown format places nothing: its hour and minute items stand at x 0.
        int32_t hourX = 0;
        int32_t minuteX = 0;
        int32_t secondX = 0;
        int32_t meridiemX = 0;
        const int32_t a = static_cast<int32_t>(area.ampmCellWidth);
        switch (t.timeFormat) {
        case 0:
        case 2:
            hourX = base;
            minuteX = base + 2 * d + c + 2;
            secondX = minuteX + 2 * d + c + 2;
            break;
        case 1:
        case 3:
            // The signs' own widths here, not their gaps.
            hourX = base;
            minuteX = base + 2 * d + area.measureClockText(clock_text::kHour);
            secondX = minuteX + 2 * d + area.measureClockText(clock_text::kMinute);
            break;
        case 4:
            hourX = base + a + sp;
            minuteX = hourX + 2 * d + c + 1;
            meridiemX = base;
            break;
        case 5:
            hourX = base;
            minuteX = base + 2 * d + c + 2;
            meridiemX = minuteX + 2 * d + sp;
            break;
        default:
            break;
        }
        const bool twelveHour = t.timeFormat == 4 || t.timeFormat == 5;
        if (twelveHour) {
            write_item(out, area, meridiemX, rowTop, kItemMeridiem, 0, area.ampmTable);
        }
        // The hour keeps the ten digits in a 12-hour format: the flag tells the controller.
        write_item(out, area, hourX, rowTop, kItemHour, twelveHour ? 1 : 0, area.digitTable);
        write_item(out, area, minuteX, rowTop, kItemMinute, 0, area.digitTable);
        if (t.timeFormat == 0 || t.timeFormat == 1) {
            write_item(out, area, secondX, rowTop, kItemSecond, 0, area.digitTable);
        }
    }
}

AreaBodyG5 time_area_body_g5(TimeArea &area) {
    area.prepareTimeArea();
    ByteWriter out(time_body_length_g5(area));
    writeTimeBody(area, out);
    // The declared length stays as computed, also where the items run longer (full-colour
    // colour records, unknown formats): every byte is kept behind it.
    return {time_body_length_g5(area), out.take()};
}

} // namespace zel
