// Preparation of a time area: the tables, the separators of a digital clock with their places,
// and the background, painted and encoded. The places computed here serve the background
// only; the body writers compute the items' places by formulas of their own, close to these
// but not equal, and neither is derived from the other.
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "clock/clock_canvas.h"
#include "clock/clock_texts.h"
#include "clock/time_area.h"
#include "render/screen_format.h"
#include "sdk/screen_globals.h"

namespace zel {
namespace {

constexpr uint32_t kMultiLine = 1;

// Separator texts of a group with their x positions from the group's start, and the group's
// width.
struct Group {
    std::vector<std::string> texts;
    std::vector<int32_t> xs;
    int32_t width = 0;
    uint32_t digitItems = 0; // items that carry a copy of the digit table
};

// The date group. The small differences of 1 and 2 between like rows are as the controllers'
// files have always had them; they are not to be evened out.
Group date_group(const TimeArea &area, uint32_t format) {
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    Group g;
    switch (format) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5: {
        const char *sep = (format % 2 == 0) ? "-" : "/";
        const int32_t s = area.gapWidth(sep);
        if (format == 0) {
            g = {{sep, sep}, {4 * d, 6 * d + s + 1}, 2 * s + 8 * d + 1, 3};
        } else if (format == 1) {
            g = {{sep, sep}, {4 * d + 1, 6 * d + s + 1}, 2 * s + 8 * d + 2, 3};
        } else if (format == 2 || format == 3) {
            g = {{sep, sep}, {2 * d + 1, 4 * d + s + 1}, 2 * s + 8 * d + 2, 3};
        } else {
            g = {{sep}, {2 * d + 1}, s + 4 * d + 1, 2};
        }
        break;
    }
    case 6: {
        const int32_t sM = area.gapWidth(clock_text::kMonth);
        const int32_t sD = area.gapWidth(clock_text::kDay);
        g = {{clock_text::kMonth, clock_text::kDay}, {2 * d, 4 * d + sM}, sM + 4 * d + sD, 2};
        break;
    }
    case 7: {
        const int32_t sY = area.gapWidth(clock_text::kYear);
        const int32_t sM = area.gapWidth(clock_text::kMonth);
        const int32_t sD = area.gapWidth(clock_text::kDay);
        g = {{clock_text::kYear, clock_text::kMonth, clock_text::kDay},
             {4 * d, 6 * d + sY, 8 * d + sY + sM},
             sY + 8 * d + sM + sD,
             3};
        break;
    }
    default:
        break; // no separator, and no digit item counted
    }
    return g;
}

// The time of day: its separators and width (timeWidth). The " " entries paint nothing but
// hold their place in both lists. An unknown format has no group at all.
std::optional<Group> time_group(const TimeArea &area, uint32_t format, int32_t space) {
    const int32_t d = static_cast<int32_t>(area.digitCellWidth);
    const int32_t a = static_cast<int32_t>(area.ampmCellWidth);
    switch (format) {
    case 0: {
        const int32_t c = area.gapWidth(":");
        return Group{{":", ":"}, {2 * d, 4 * d + c}, 6 * d + 2 * c, 3};
    }
    case 1: {
        const int32_t sH = area.gapWidth(clock_text::kHour);
        const int32_t sM = area.gapWidth(clock_text::kMinute);
        const int32_t sS = area.gapWidth(clock_text::kSecond);
        return Group{{clock_text::kHour, clock_text::kMinute, clock_text::kSecond},
                     {2 * d, 4 * d + sH, 6 * d + sH + sM},
                     6 * d + sH + sM + sS,
                     3};
    }
    case 2: {
        const int32_t c = area.gapWidth(":");
        return Group{{":"}, {2 * d + 2}, 4 * d + c + 1, 2};
    }
    case 3: {
        const int32_t sH = area.gapWidth(clock_text::kHour);
        const int32_t sM = area.gapWidth(clock_text::kMinute);
        return Group{
            {clock_text::kHour, clock_text::kMinute}, {2 * d, 4 * d + sH}, 4 * d + sH + sM, 2};
    }
    case 4: {
        const int32_t c = area.gapWidth(":");
        return Group{{" ", ":"}, {a, a + space + 2 * d}, a + space + 4 * d + c, 2};
    }
    case 5: {
        const int32_t c = area.gapWidth(":");
        return Group{{":", " "}, {2 * d, 4 * d + c}, 4 * d + c + space + a, 2};
    }
    default:
        return std::nullopt;
    }
}

void place(TimeArea &area, const Group &group, int32_t x, int32_t y) {
    for (std::size_t i = 0; i < group.texts.size(); ++i) {
        area.fixedTexts.push_back(group.texts[i]);
        area.fixedPositions.push_back({x + group.xs[i], y});
    }
}

} // namespace

void TimeArea::prepareTimeArea() {
    unitCount = 0;
    tableBytes = 0;
    const int32_t screenColor = static_cast<int32_t>(g_screenColor.load(std::memory_order_relaxed));
    const TimeContent &t = timeContent;

    if (analogFlag != 0) {
        // The dial is all of the background; the hands are one item without a table.
        unitCount = 1;
    } else {
        bool digitsBuilt = false;
        if (t.dateEnable != 0) {
            unitCount += (t.dateFormat == 4 || t.dateFormat == 5 || t.dateFormat == 6) ? 2 : 3;
            digitTableSize = 0;
            digitCellWidth = 0;
            buildGlyphTable(digitTable, digitTableSize, digitCellWidth, screenColor, kTableDigits,
                            0);
            digitsBuilt = true;
        }
        if (t.weekEnable != 0) {
            unitCount += 1;
            buildGlyphTable(weekTable, weekTableSize, weekCellWidth, screenColor, kTableWeek,
                            t.weekFormat);
        }
        if (t.timeEnable != 0) {
            unitCount += (t.timeFormat == 2 || t.timeFormat == 3) ? 2 : 3;
            if (!digitsBuilt) {
                buildGlyphTable(digitTable, digitTableSize, digitCellWidth, screenColor,
                                kTableDigits, 0);
            }
            if (t.timeFormat == 4 || t.timeFormat == 5) {
                // Always the Latin pair, whatever the week format.
                buildGlyphTable(ampmTable, ampmTableSize, ampmCellWidth, screenColor,
                                kTableMeridiem, 0);
            }
        }
        fixedTexts.clear();
        fixedPositions.clear();

        const int32_t space = gapWidth(" ");
        const bool multiLine = t.arrMode == kMultiLine;
        const int32_t rows =
            multiLine ? (t.dateEnable != 0) + (t.weekEnable != 0) + (t.timeEnable != 0) : 1;
        const int32_t top = centreOffset(static_cast<uint32_t>(drawHeight), rows, row_height());
        const int32_t px = truncate_to_int32(fontPixelSize);

        int32_t line = 0;
        if (t.dateEnable != 0) {
            const Group date = date_group(*this, t.dateFormat);
            const int32_t off = multiLine ? alignOffset(t.horizontalAlign, width, date.width) : 0;
            place(*this, date, off, top);
            line = date.width + space;
            tableBytes += digitTableSize * date.digitItems;
        }
        if (t.weekEnable != 0) {
            if (t.arrMode == 0) line += static_cast<int32_t>(weekCellWidth) + space;
            tableBytes += weekTableSize;
        }
        if (t.timeEnable != 0) {
            const int32_t base = t.arrMode != 0 ? 0 : line;
            int32_t rowTop = top;
            if (t.arrMode != 0) {
                rowTop += px * ((t.dateEnable != 0) + (t.weekEnable != 0));
            }
            // An unknown format places nothing and leaves timeWidth as it was.
            if (const std::optional<Group> time = time_group(*this, t.timeFormat, space)) {
                timeWidth = time->width;
                const int32_t off =
                    multiLine ? alignOffset(t.horizontalAlign, width, timeWidth) : 0;
                place(*this, *time, off + base, rowTop);
                tableBytes += digitTableSize * time->digitItems;
                if (t.timeFormat == 4 || t.timeFormat == 5) tableBytes += ampmTableSize;
            }
            if (t.arrMode == 0) line += timeWidth;
        }
        lineWidth = line;
    }

    std::vector<uint8_t> rgba(static_cast<std::size_t>(std::max(drawWidth, 0)) *
                                  static_cast<std::size_t>(std::max(drawHeight, 0)) * 4,
                              0);
    if (dialPictureFlag != 0) {
        paintDialPicture(rgba);
    } else {
        paintTimeBackground(rgba, fixedTexts, fixedPositions);
    }
    encodedPicture.clear();
    encodedPictureLength = 0;
    encode_for_screen(*this, rgba, encodedPicture, pageLeft, static_cast<uint32_t>(drawWidth),
                      static_cast<uint32_t>(drawHeight));
    encodedPictureLength = static_cast<uint32_t>(encodedPicture.size());
}

void TimeArea::paintTimeBackground(std::vector<uint8_t> &rgba, std::vector<std::string> texts,
                                   std::vector<ClockPoint> positions) const {
    if (analogFlag != 0) {
        paintDial(rgba);
    } else {
        paint_digital_background(rgba, std::move(texts), std::move(positions));
    }
}

void TimeArea::paint_digital_background(std::vector<uint8_t> &rgba, std::vector<std::string> texts,
                                        std::vector<ClockPoint> positions) const {
    ClockCanvas canvas(rgba, drawWidth, drawHeight);
    cairo_t *cr = canvas.cr();
    canvas.clear();
    applyTextColor(cr, timeContent.fontColor);
    applyFont(cr, 0, 0);
    cairo_set_font_size(cr, fontPixelSize);
    const int32_t lead = timeContent.arrMode == 0
                             ? alignOffset(timeContent.horizontalAlign, drawWidth, lineWidth)
                             : 0;

    const std::string refCjk = clock_utf8(clock_text::kBackgroundCjk);
    const std::string refDigits = clock_utf8("0123456789");
    double lowest = 999999.0;
    double highest = -999999.0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        const double bearing = std::fabs(clock_text_extents(cr, std::string(1, digit)).y_bearing);
        lowest = std::min(lowest, bearing);
        highest = std::max(highest, bearing);
    }
    const bool sameHeight = highest - lowest <= 1.0;

    for (std::size_t i = 0; i < texts.size() && i < positions.size(); ++i) {
        const std::string entry = clock_utf8(texts[i]);
        const cairo_text_extents_t digits = clock_text_extents(cr, refDigits);
        const cairo_text_extents_t te = clock_text_extents(cr, entry);
        const cairo_font_extents_t fe = clock_font_extents(cr);
        const double h = truncate_to_int32(fontPixelSize);
        double dy = 0;
        if (entry == "-") {
            dy = digits.height + (h - digits.height) / 2;
        } else if (entry == "/") {
            dy = -te.y_bearing;
        } else if (refCjk.find(entry) != std::string::npos) {
            dy = sameHeight ? fe.ascent : -te.y_bearing;
        } else if (entry == ":") {
            dy = te.height + (h - te.height) / 2;
        }
        cairo_move_to(cr, positions[i].x + lead, positions[i].y + dy);
        cairo_show_text(cr, entry.c_str());
    }
    canvas.write_png_file("1-2-3.png");
}

} // namespace zel
