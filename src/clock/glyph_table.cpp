#include "clock/glyph_table.h"

#include <algorithm>
#include <cmath>

#include "clock/clock_canvas.h"
#include "clock/clock_texts.h"
#include "clock/time_area.h"
#include "render/encode.h"
#include "render/text_painter.h"

namespace zel {
namespace {

constexpr int32_t kMaxCell = 255; // one byte each for width and height in a glyph
constexpr int32_t kEmptyCellWidth = 8;
constexpr int32_t kFullColor = 4;
constexpr uint8_t kInkThreshold = 0x80; // cells are painted in red on black: red alone decides

constexpr const char *kDigits = "0123456789";
constexpr const char *kLatinMeridiem = "PMAM";
constexpr const char *kWeekLong[7] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                      "Friday", "Saturday", "Sunday"};
constexpr const char *kWeekShort[7] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

bool contains(const std::string &haystack, const std::string &needle) {
    return haystack.find(needle) != std::string::npos;
}

std::vector<std::string> one_per_byte(const char *text) {
    std::vector<std::string> entries;
    for (const char *p = text; *p != '\0'; ++p) {
        entries.emplace_back(1, *p);
    }
    return entries;
}

} // namespace

GlyphCell glyph_cell(int32_t measuredWidth, int32_t height) {
    int32_t w = std::clamp(measuredWidth, 0, kMaxCell);
    const int32_t h = std::clamp(height, 0, kMaxCell);
    if (w == 0) w = kEmptyCellWidth;
    GlyphCell cell;
    cell.glyphWidth = static_cast<uint8_t>(w);
    cell.glyphHeight = static_cast<uint8_t>(h);
    cell.paddedWidth = w % 8 == 0 ? w : w + 8 - w % 8;
    cell.rowBytes = static_cast<uint8_t>(cell.paddedWidth / 8);
    return cell;
}

std::vector<std::string> glyph_table_entries(uint32_t tableKind, uint32_t subKind) {
    std::vector<std::string> entries;
    if (tableKind == kTableDigits) {
        if (subKind == 0 || subKind == 1) {
            for (const char *d = kDigits; *d != '\0'; ++d)
                entries.emplace_back(1, *d);
        } else if (subKind == 2) {
            entries = one_per_byte(clock_text::kStemsAndBranches);
        } else if (subKind == 3) {
            entries = one_per_byte(clock_text::kZodiac);
        }
    } else if (tableKind == kTableMeridiem) {
        if (subKind == 0) {
            entries = {"AM", "PM"};
        } else if (subKind == 1) {
            entries = {clock_text::kMorning, clock_text::kAfternoon};
        }
    } else if (tableKind == kTableWeek) {
        const char *const *names = subKind == 1   ? kWeekLong
                                   : subKind == 2 ? kWeekShort
                                   : subKind == 3 ? clock_text::kWeekCjk
                                                  : nullptr;
        if (names != nullptr) entries.assign(names, names + 7);
    }
    return entries;
}

void append_glyph(ByteWriter &out, const std::vector<uint8_t> &cell, const GlyphCell &geometry,
                  int32_t screenColor) {
    out.u8(geometry.rowBytes).u8(geometry.glyphWidth).u8(geometry.glyphHeight);
    const int32_t p = geometry.paddedWidth;
    // The row is read with the padded width as its last column and as the row length: one
    // pixel more than the glyph uses, which keeps the rows of the cell in step.
    std::vector<uint8_t> row(3 * (static_cast<std::size_t>(p) + 1), 0);
    for (int32_t y = 0; y < geometry.glyphHeight; ++y) {
        std::fill(row.begin(), row.end(), 0);
        scanPixelRow(cell, row, y, p, 0);
        uint8_t byte = 0;
        for (int32_t x = 0; x < p; ++x) {
            const bool inked = row[3 * static_cast<std::size_t>(x) + 2] >= kInkThreshold;
            const bool bit = screenColor == kFullColor ? inked : !inked;
            byte = static_cast<uint8_t>((byte << 1) | (bit ? 1 : 0));
            if (x % 8 == 7) {
                out.u8(byte);
                byte = 0;
            }
        }
    }
}

int32_t TimeArea::measureClockText(std::string gbk) const {
    TextScratch scratch(*this, drawWidth, drawHeight, fontPixelSize, 0, 0);
    convertGbkToUtf8(gbk);
    return truncate_to_int32(clock_text_extents(scratch.context(), gbk).width);
}

int32_t TimeArea::clockLineHeight() const {
    TextScratch scratch(*this, drawWidth, drawHeight, fontPixelSize, 0, 0);
    const cairo_font_extents_t fe = clock_font_extents(scratch.context());
    return truncate_to_int32(roundHalfAway(fe.ascent + fe.descent));
}

int32_t TimeArea::gapWidth(const std::string &gbk) const {
    return measureClockText("1" + gbk + "1") - measureClockText("11");
}

int32_t TimeArea::row_height() const {
    const int32_t line = clockLineHeight();
    return fontPixelSize < line ? truncate_to_int32(fontPixelSize) : line;
}

void TimeArea::paintClockCell(std::vector<uint8_t> &rgba, const std::string &gbk,
                              int32_t paddedWidth, int32_t cellHeight, double pixelSize) const {
    ClockCanvas canvas(rgba, paddedWidth, cellHeight);
    cairo_t *cr = canvas.cr();
    canvas.clear();
    applyFont(cr, 0, 0);
    cairo_set_source_rgb(cr, 1, 0, 0);
    cairo_set_font_size(cr, pixelSize);

    // Only the long Latin names and the Chinese ones count as week days: "Mon" does not.
    const bool isWeek = std::any_of(std::begin(kWeekLong), std::end(kWeekLong),
                                    [&](const char *day) { return gbk == day; }) ||
                        contains(clock_text::kWeekCjkAll, gbk);

    const std::string text = clock_utf8(gbk);
    const std::string refCjk = clock_utf8(clock_text::kCellCjk);
    const std::string refDigits = clock_utf8(kDigits);
    const std::string refLatin = clock_utf8(kLatinMeridiem);
    const std::string refWeek = clock_utf8(clock_text::kWeekCjkAll);
    const cairo_text_extents_t cjk = clock_text_extents(cr, refCjk);
    const cairo_text_extents_t digits = clock_text_extents(cr, refDigits);
    const cairo_text_extents_t week = clock_text_extents(cr, refWeek);
    const cairo_font_extents_t fe = clock_font_extents(cr);

    // Do all digits stand equally high (within a pixel)?
    double lowest = 999999.0;
    double highest = -999999.0;
    for (const char *d = kDigits; *d != '\0'; ++d) {
        const double bearing = std::fabs(clock_text_extents(cr, std::string(1, *d)).y_bearing);
        lowest = std::min(lowest, bearing);
        highest = std::max(highest, bearing);
    }
    const bool sameHeight = highest - lowest <= 1.0;

    const double h = cellHeight;
    double penX = 0;
    double penY = 0;
    if (isWeek) {
        penY = -week.y_bearing;
    } else if (week.height == cjk.height && !contains(refDigits, text) &&
               !contains(refLatin, text)) {
        penY = (h - week.y_bearing) / 2;
    } else if (contains(refDigits, text)) {
        penX = -std::fabs(week.x_bearing);
        penY = !sameHeight ? -digits.y_bearing : digits.height + (h - digits.height) / 2;
    } else if (contains(refLatin, text)) {
        penY = (h - week.y_bearing) / 2;
    } else {
        penY = sameHeight ? fe.ascent : -digits.y_bearing;
    }
    cairo_move_to(cr, penX, penY);
    cairo_show_text(cr, text.c_str());
    // Every cell overwrites the last one's file; nothing reads it.
    canvas.write_png_file("123.png");
}

void TimeArea::buildGlyphTable(std::vector<uint8_t> &out, uint32_t &size, uint32_t &cellWidth,
                               int32_t screenColor, uint32_t tableKind, uint32_t subKind) const {
    const std::vector<std::string> entries = glyph_table_entries(tableKind, subKind);
    int32_t widest = 0;
    for (const std::string &entry : entries) {
        widest = std::max(widest, measureClockText(entry));
    }
    // The layout works with the width as measured, before the cell is clamped.
    cellWidth = static_cast<uint32_t>(widest);
    const GlyphCell cell = glyph_cell(widest, row_height());

    // Cells of up to 255 × 255 pixels: the glyphs grow with them, never past a fixed scratch.
    ByteWriter glyphs;
    std::vector<uint8_t> rgba;
    for (const std::string &entry : entries) {
        rgba.assign(static_cast<std::size_t>(cell.paddedWidth) * cell.glyphHeight * 4, 0);
        paintClockCell(rgba, entry, cell.paddedWidth, cell.glyphHeight, fontPixelSize);
        append_glyph(glyphs, rgba, cell, screenColor);
    }
    const auto count = static_cast<uint32_t>(entries.size());
    ByteWriter table(6 + 4 * entries.size() + glyphs.size());
    table.u32(4 * count + 2 + static_cast<uint32_t>(glyphs.size()));
    table.u16(static_cast<uint16_t>(count));
    for (uint32_t i = 0; i < count; ++i) {
        table.u32(i * static_cast<uint32_t>(cell.glyph_size()));
    }
    table.bytes(glyphs.data());
    out = table.take();
    size = static_cast<uint32_t>(out.size());
}

} // namespace zel
