// The preview of a time area for a host: the clock drawn as text at a given moment (or the
// analog clock in its fixed pose). It shows what the fonts give; it uses neither the tables
// nor the separators' places, and needs no integration before it.
#include <cairo.h>

#include <array>
#include <cstdio>

#include "clock/clock_canvas.h"
#include "clock/clock_texts.h"
#include "clock/time_area.h"

namespace zel {
namespace {

constexpr std::size_t kPreviewField = 20; // each field is formatted into 20 bytes

std::string format_time(const char *format, const std::tm &now) {
    std::array<char, kPreviewField> buffer{};
    // A result that does not fit gives 0 and counts as empty.
    const std::size_t n = std::strftime(buffer.data(), buffer.size(), format, &now);
    return std::string(buffer.data(), n);
}

// snprintf into the 20 bytes: a field that would not fit is cut short instead of written past
// the buffer (only years of more than nine digits come near).
template <class... Args> std::string format_numbers(const char *format, Args... args) {
    std::array<char, kPreviewField> buffer{};
    if (std::snprintf(buffer.data(), buffer.size(), format, args...) < 0) return {};
    return std::string(buffer.data());
}

std::string preview_date(uint32_t format, const std::tm &now) {
    switch (format) {
    case 0:
        return format_time("%Y-%m-%d", now);
    case 1:
        return format_time("%Y/%m/%d", now);
    case 2:
        return format_time("%d-%m-%Y", now);
    case 3:
        return format_time("%d/%m/%Y", now);
    case 4:
        return format_time("%m-%d", now);
    case 5:
        return format_time("%m/%d", now);
    case 6:
        return format_numbers("%02d%s%02d%s", now.tm_mon + 1, clock_text::kMonth, now.tm_mday,
                              clock_text::kDay);
    case 7:
        return format_numbers("%d%s%02d%s%02d%s", now.tm_year + 1900, clock_text::kYear,
                              now.tm_mon + 1, clock_text::kMonth, now.tm_mday, clock_text::kDay);
    default:
        return {};
    }
}

std::string preview_week(uint32_t format, const std::tm &now) {
    switch (format) {
    case 1:
        return format_time("%A", now);
    case 2:
        return format_time("%a", now);
    case 3: {
        // "%w" counts from Sunday; the list begins there too.
        const std::string day = format_time("%w", now);
        const int index = day.empty() ? -1 : day[0] - '0';
        if (index < 0 || index > 6) return {};
        return clock_text::kWeekCjk[(index + 6) % 7];
    }
    default:
        return {};
    }
}

std::string preview_time(uint32_t format, const std::tm &now) {
    switch (format) {
    case 0:
        return format_time("%H:%M:%S", now);
    case 1:
        return format_numbers("%02d%s%02d%s%02d%s", now.tm_hour, clock_text::kHour, now.tm_min,
                              clock_text::kMinute, now.tm_sec, clock_text::kSecond);
    case 2:
        return format_time("%H:%M", now);
    case 3:
        return format_numbers("%02d%s%02d%s", now.tm_hour, clock_text::kHour, now.tm_min,
                              clock_text::kMinute);
    case 4:
        return format_time("%p %I:%M", now);
    case 5:
        return format_time("%I:%M %p", now);
    default:
        return {};
    }
}

// Where a preview line starts: centred when asked and narrower than the area, else at its ink.
// Right alignment is not honoured here.
double preview_x(uint8_t align, int32_t width, const cairo_text_extents_t &te) {
    if (align == 1 && te.width < width) return (width - te.width) / 2;
    return -te.x_bearing;
}

} // namespace

int32_t TimeArea::getOnePage(const std::tm &now, uint32_t /*pageNum*/, uint32_t *pngLength,
                             uint16_t *pageCount) {
    previewLines.clear();
    if (analogFlag == 0) {
        const TimeContent &t = timeContent;
        std::string line;
        if (t.dateEnable != 0 && !(line = preview_date(t.dateFormat, now)).empty()) {
            previewLines.push_back(line);
        }
        if (t.weekEnable != 0 && !(line = preview_week(t.weekFormat, now)).empty()) {
            previewLines.push_back(line);
        }
        if (t.timeEnable != 0 && !(line = preview_time(t.timeFormat, now)).empty()) {
            previewLines.push_back(line);
        }
    }
    previewPng.clear();
    paintTimePreview(previewLines);
    previewData = reinterpret_cast<const uint8_t *>(previewPng.data());
    if (pngLength != nullptr) *pngLength = static_cast<uint32_t>(previewPng.size());
    if (pageCount != nullptr) *pageCount = 1;
    return 0;
}

void TimeArea::paintTimePreview(std::vector<std::string> lines) {
    if (analogFlag != 0) {
        paint_analog_preview(previewPng);
    } else {
        paint_digital_preview(std::move(lines), previewPng);
    }
}

void TimeArea::paint_digital_preview(std::vector<std::string> lines, std::string &png) const {
    if (lines.empty()) return; // no PNG at all
    ClockCanvas canvas(drawWidth, drawHeight);
    cairo_t *cr = canvas.cr();
    canvas.clear();
    applyTextColor(cr, timeContent.fontColor);
    applyFont(cr, 0, 0);
    cairo_set_font_size(cr, fontPixelSize);
    const uint8_t align = timeContent.horizontalAlign;
    if (timeContent.arrMode == 0) {
        std::string joined;
        for (const std::string &line : lines)
            joined += line + " ";
        joined.pop_back();
        const std::string text = clock_utf8(joined);
        const cairo_text_extents_t te = clock_text_extents(cr, text);
        cairo_move_to(cr, preview_x(align, drawWidth, te), (drawHeight - te.y_bearing) / 2);
        cairo_show_text(cr, text.c_str());
    } else if (timeContent.arrMode == 1) {
        const cairo_font_extents_t fe = clock_font_extents(cr);
        const double lineHeight = fe.ascent + fe.descent;
        const double all = lineHeight * static_cast<double>(lines.size());
        double baseline = all <= drawHeight ? roundHalfAway((drawHeight - all) / 2) : 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string text = clock_utf8(lines[i]);
            const cairo_text_extents_t te = clock_text_extents(cr, text);
            baseline += fe.ascent;
            if (i != 0) baseline += fe.descent;
            cairo_move_to(cr, preview_x(align, drawWidth, te), baseline);
            cairo_show_text(cr, text.c_str());
        }
    }
    // Any other arrangement draws nothing but still gives its (empty) picture.
    canvas.append_png(png);
}

} // namespace zel
