#include "sim/panel/clock_painter.h"

#include <array>

#include <cmath>
#include <cstdio>

#include "sim/panel/clock_body.h"

namespace zel::sim {
namespace {

constexpr uint8_t kYear = 0;
constexpr uint8_t kMonth = 1;
constexpr uint8_t kDay = 2;
constexpr uint8_t kHour = 3;
constexpr uint8_t kMinute = 4;
constexpr uint8_t kSecond = 5;
constexpr uint8_t kMeridiem = 6;
constexpr uint8_t kWeek = 7;
constexpr uint8_t kHands = 8;
constexpr uint8_t kFixedGlyph = 12; // a G6 separator: its one glyph, always
constexpr double kPi = 3.14159265358979323846;

uint32_t code_colour(uint32_t code) {
    return ((code & 1) != 0 ? 0xFF0000u : 0) | ((code & 2) != 0 ? 0x00FF00u : 0) |
           ((code & 4) != 0 ? 0x0000FFu : 0);
}

bool leap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int days_in_month(int year, int month) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && leap(year) ? 29 : kDays[month - 1];
}

// Draws into the canvas, but only inside the area's rectangle.
struct AreaPen {
    Rgb &canvas;
    const DecodedArea &area;
    void put(int64_t ax, int64_t ay, uint32_t colour) const {
        if (ax < 0 || ay < 0 || ax >= area.width || ay >= area.height) return;
        const int64_t px = area.x + ax;
        const int64_t py = area.y + ay;
        if (px >= canvas.width || py >= canvas.height) return;
        canvas.pixels[static_cast<std::size_t>(py) * canvas.width + static_cast<std::size_t>(px)] =
            colour;
    }
};

// A hand from the centre, `degrees` clockwise from twelve o'clock, one pixel wide.
void hand(const AreaPen &pen, double cx, double cy, double degrees, double length,
          uint32_t colour) {
    const double a = degrees * kPi / 180.0;
    const double dx = std::sin(a) * length;
    const double dy = -std::cos(a) * length;
    const int steps = static_cast<int>(std::ceil(std::max(std::fabs(dx), std::fabs(dy))));
    for (int i = 0; i <= steps; ++i) {
        const double t = steps == 0 ? 0 : static_cast<double>(i) / steps;
        pen.put(static_cast<int64_t>(std::lround(cx + dx * t)),
                static_cast<int64_t>(std::lround(cy + dy * t)), colour);
    }
}

// One hand of a hand record: its length and its colour as 0xRRGGBB.
struct Hand {
    uint8_t length = 0;
    uint32_t colour = 0;
};

// The record comes in three forms (lengths at the bytes named, each followed by its colour):
// short, 14 bytes (6, 9, 12, a colour code each); medium, 17 bytes (6, 10, 14, 16 bits each: a
// 5-6-5 value in pixel mode 3, else the low half of red + green << 8 + blue << 16); long, 23
// bytes (6, 12, 18, that 32-bit value each). The other bytes are settings whose meaning only the
// controller knows.
std::array<Hand, 3> read_hands(const ScreenMode &mode, std::span<const uint8_t> hands) {
    std::array<Hand, 3> out{}; // hour, minute, second
    if (hands.size() == 17) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t at = 6 + 4 * i;
            const auto word = static_cast<uint16_t>(hands[at + 1] | (hands[at + 2] << 8));
            out[i] = {hands[at], mode.tranPixelMode == 3
                                     ? rgb_from_565(word)
                                     : (static_cast<uint32_t>(word & 0xFF) << 16) |
                                           (static_cast<uint32_t>(word >> 8) << 8)};
        }
    } else if (hands.size() == 23) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t at = 6 + 6 * i;
            out[i] = {hands[at], (static_cast<uint32_t>(hands[at + 1]) << 16) |
                                     (static_cast<uint32_t>(hands[at + 2]) << 8) | hands[at + 3]};
        }
    } else if (hands.size() >= 14) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t at = 6 + 3 * i;
            out[i] = {hands[at], code_colour(hands[at + 1])};
        }
    }
    return out;
}

void paint_hands(const AreaPen &pen, const ScreenMode &mode, std::span<const uint8_t> hands,
                 const ClockTime &time) {
    // The simulator draws thin hands of the given lengths.
    const double cx = pen.area.width / 2;
    const double cy = pen.area.height / 2;
    const double seconds = time.second;
    const double minutes = time.minute + seconds / 60.0;
    const double hours = time.hour % 12 + minutes / 60.0;
    const std::array<Hand, 3> h = read_hands(mode, hands);
    hand(pen, cx, cy, seconds * 6.0, h[2].length, panel_colour(mode, h[2].colour));
    hand(pen, cx, cy, minutes * 6.0, h[1].length, panel_colour(mode, h[1].colour));
    hand(pen, cx, cy, hours * 30.0, h[0].length, panel_colour(mode, h[0].colour));
}

} // namespace

int week_day(const ClockTime &t) {
    // Days from 1970-01-01 (a Thursday) by the civil calendar.
    const int y = t.month <= 2 ? t.year - 1 : t.year;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yoe = y - era * 400;
    const int mp = (t.month + 9) % 12;
    const int doy = (153 * mp + 2) / 5 + t.day - 1;
    const int doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    const long long days = static_cast<long long>(era) * 146097 + doe - 719468;
    return static_cast<int>(((days % 7) + 7 + 4) % 7);
}

std::optional<ClockTime> parse_clock_time(const std::string &text) {
    ClockTime t;
    char tail = 0;
    if (text.size() != 19 ||
        std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &t.year, &t.month, &t.day, &t.hour,
                    &t.minute, &t.second, &tail) != 6) {
        return std::nullopt;
    }
    for (const std::size_t digit : {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18}) {
        if (text[digit] < '0' || text[digit] > '9') return std::nullopt;
    }
    if (t.month < 1 || t.month > 12 || t.day < 1 || t.day > days_in_month(t.year, t.month) ||
        t.hour > 23 || t.minute > 59 || t.second > 59) {
        return std::nullopt;
    }
    return t;
}

std::string format_clock_time(const ClockTime &t) {
    char line[32];
    std::snprintf(line, sizeof line, "%04d-%02d-%02d %02d:%02d:%02d", t.year, t.month, t.day,
                  t.hour, t.minute, t.second);
    return line;
}

std::vector<std::size_t> item_glyphs(uint8_t type, bool twelveHour, const ClockTime &t) {
    const auto two = [](int v) {
        return std::vector<std::size_t>{static_cast<std::size_t>(v / 10 % 10),
                                        static_cast<std::size_t>(v % 10)};
    };
    switch (type) {
    case kYear: {
        const int y = t.year % 10000;
        return {static_cast<std::size_t>(y / 1000), static_cast<std::size_t>(y / 100 % 10),
                static_cast<std::size_t>(y / 10 % 10), static_cast<std::size_t>(y % 10)};
    }
    case kMonth:
        return two(t.month);
    case kDay:
        return two(t.day);
    case kHour:
        return two(twelveHour ? (t.hour % 12 == 0 ? 12 : t.hour % 12) : t.hour);
    case kMinute:
        return two(t.minute);
    case kSecond:
        return two(t.second);
    case kMeridiem:
        return {t.hour < 12 ? 0u : 1u};
    case kWeek:
        return {static_cast<std::size_t>((week_day(t) + 6) % 7)};
    case kFixedGlyph:
        return {0};
    default:
        return {};
    }
}

uint32_t item_colour(std::span<const uint8_t> record) {
    switch (record.size()) {
    case 2:
        return code_colour(record[0]);
    case 3:
        return rgb_from_565(static_cast<uint16_t>(record[0] | (record[1] << 8)));
    case 5:
        return record[0] * 0x10000u + record[1] * 0x100u + record[2];
    default:
        return 0;
    }
}

void paint_clock(Rgb &canvas, const ScreenMode &mode, const DecodedArea &area,
                 const ClockTime &time) {
    if (!area.clock) return;
    const AreaPen pen{canvas, area};
    if (const auto background =
            decode_pixels(mode, area.clock->background, area.x, area.width, area.height)) {
        for (uint32_t py = 0; py < background->height; ++py) {
            for (uint32_t px = 0; px < background->width; ++px) {
                pen.put(px, py, background->at(px, py));
            }
        }
    }
    // Ink is a 0 bit on a screen of single colours and a 1 bit on a full-colour one.
    const bool inkIsOne = mode.colorMode == 4;
    for (const DecodedClockItem &item : area.clock->items) {
        if (item.type == kHands) {
            paint_hands(pen, mode, item.table, time);
            continue;
        }
        const auto glyphs = item_glyph_table(item);
        if (!glyphs || item.color.empty()) continue;
        const bool twelveHour = item.color.back() == 1;
        const uint32_t ink = panel_colour(mode, item_colour(item.color));
        int64_t left = item.x;
        for (const std::size_t index : item_glyphs(item.type, twelveHour, time)) {
            if (index >= glyphs->size()) break;
            const DecodedGlyph &g = (*glyphs)[index];
            for (uint32_t gy = 0; gy < g.height; ++gy) {
                for (uint32_t gx = 0; gx < g.width; ++gx) {
                    if (g.bit(gx, gy) == inkIsOne) pen.put(left + gx, int64_t{item.y} + gy, ink);
                }
            }
            left += g.width;
        }
    }
}

} // namespace zel::sim
