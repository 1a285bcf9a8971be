#include "sim/panel/clock_body.h"

#include <algorithm>
#include <cstdio>

namespace zel::sim {
namespace {

constexpr std::size_t kAreaRecordSize = 9;
constexpr std::size_t kBodyHead = kAreaRecordSize + 3; // record, frame mark, two zeros
constexpr std::size_t kItemHead = 6;                   // x, y, type, align
constexpr std::size_t kHandRecordSize = 14;
constexpr uint8_t kLastDigitalType = 7;
constexpr uint8_t kAnalogType = 8;
constexpr uint8_t kFixedGlyphType = 12; // G6 only
// Items run past their declared end by a few at most (colour records a byte or three longer,
// or the one field of an unknown format): a handful of candidate ends is plenty.
constexpr std::size_t kMostEnds = 8;

uint16_t get16(std::span<const uint8_t> d, std::size_t at) {
    return static_cast<uint16_t>(d[at] | (d[at + 1] << 8));
}
uint32_t get32(std::span<const uint8_t> d, std::size_t at) {
    return static_cast<uint32_t>(d[at]) | (static_cast<uint32_t>(d[at + 1]) << 8) |
           (static_cast<uint32_t>(d[at + 2]) << 16) | (static_cast<uint32_t>(d[at + 3]) << 24);
}

std::string text(const char *format, unsigned long long a = 0, unsigned long long b = 0) {
    char line[160];
    std::snprintf(line, sizeof line, format, a, b);
    return line;
}

// Reads the head of the body: where the items start, the background and the count.
struct Head {
    std::size_t items = 0;
    std::span<const uint8_t> background;
    uint8_t unitCount = 0;
};
std::optional<Head> read_head(std::span<const uint8_t> file, std::size_t at, std::size_t limit,
                              const ScreenMode &mode, ClockBodyFailure &failure) {
    if (limit < at || limit - at < kBodyHead + 1) {
        failure = {at, "a clock body is shorter than its record, marks and count"};
        return std::nullopt;
    }
    if (file[at + kAreaRecordSize] != 0) {
        failure = {at + kAreaRecordSize, "a clock area carries a frame mark other than 0"};
        return std::nullopt;
    }
    if (file[at + kAreaRecordSize + 1] != 0 || file[at + kAreaRecordSize + 2] != 0) {
        failure = {at + kAreaRecordSize + 1, "the two bytes behind a clock's frame mark are not 0"};
        return std::nullopt;
    }
    const uint16_t x = get16(file, at + 1);
    const uint16_t width = get16(file, at + 5);
    const uint16_t height = get16(file, at + 7);
    const std::size_t e = encoded_page_size(mode, x, width, height);
    const std::size_t background = at + kBodyHead;
    if (limit - background < e + 1) {
        failure = {background, text("a background of %llu bytes and the count run past the "
                                    "body's end",
                                    e)};
        return std::nullopt;
    }
    return Head{background + e + 1, file.subspan(background, e), file[background + e]};
}

// Reads one item at `at`, not beyond `limit`.
std::optional<DecodedClockItem> read_item(std::span<const uint8_t> file, std::size_t at,
                                          std::size_t limit, std::size_t colorSize,
                                          ClockBodyFailure &failure) {
    if (limit - at < kItemHead) {
        failure = {at, "an item's head runs past the body's end"};
        return std::nullopt;
    }
    DecodedClockItem item;
    item.offset = at;
    item.x = get16(file, at);
    item.y = get16(file, at + 2);
    item.type = file[at + 4];
    item.align = file[at + 5];
    std::size_t p = at + kItemHead;
    if (item.type == kAnalogType) {
        if (limit - p < kHandRecordSize) {
            failure = {p, "the hand record runs past the body's end"};
            return std::nullopt;
        }
        item.table = file.subspan(p, kHandRecordSize);
        return item;
    }
    if (item.type > kLastDigitalType) {
        failure = {at + 4, text("item type %llu is none of a G5 clock's", item.type)};
        return std::nullopt;
    }
    if (limit - p < colorSize + 4) {
        failure = {p, "an item's colour record and table length run past the body's end"};
        return std::nullopt;
    }
    item.color = file.subspan(p, colorSize);
    p += colorSize;
    const uint32_t length = get32(file, p);
    if (length > limit - p - 4) {
        failure = {p, text("a glyph table of %llu bytes runs past the body's end", length)};
        return std::nullopt;
    }
    item.table = file.subspan(p, 4 + std::size_t{length});
    if (!decode_glyph_table(item.table)) {
        failure = {p, "the glyph table's count, offsets and glyphs do not agree with its length"};
        return std::nullopt;
    }
    return item;
}

std::size_t item_size(const DecodedClockItem &item) {
    return kItemHead + item.color.size() + item.table.size();
}

} // namespace

std::size_t clock_color_size(const ScreenMode &mode) {
    if (mode.colorMode != 4) return 2;
    return mode.tranPixelMode == 3 ? 3 : 5;
}

bool DecodedGlyph::bit(uint32_t px, uint32_t py) const {
    const std::size_t at = static_cast<std::size_t>(py) * rowBytes + px / 8;
    if (px >= 8u * rowBytes || at >= rows.size()) return false;
    return ((rows[at] >> (7 - px % 8)) & 1) != 0;
}

std::optional<std::vector<DecodedGlyph>> decode_glyph_table(std::span<const uint8_t> table) {
    if (table.size() < 6 || get32(table, 0) != table.size() - 4) return std::nullopt;
    const uint16_t count = get16(table, 4);
    const std::size_t offsets = 6;
    if (table.size() < offsets + 4 * std::size_t{count}) return std::nullopt;
    const std::size_t glyphBytes = table.size() - offsets - 4 * std::size_t{count};
    std::vector<DecodedGlyph> glyphs;
    if (count == 0) {
        if (glyphBytes != 0) return std::nullopt;
        return glyphs;
    }
    if (glyphBytes % count != 0) return std::nullopt;
    const std::size_t size = glyphBytes / count;
    const std::size_t first = offsets + 4 * std::size_t{count};
    for (std::size_t i = 0; i < count; ++i) {
        if (get32(table, offsets + 4 * i) != i * size || size < 3) return std::nullopt;
        const std::size_t at = first + i * size;
        DecodedGlyph g{table[at], table[at + 1], table[at + 2], table.subspan(at + 3, size - 3)};
        if (std::size_t{g.rowBytes} * g.height != size - 3 || g.width > 8u * g.rowBytes) {
            return std::nullopt;
        }
        glyphs.push_back(g);
    }
    return glyphs;
}

std::optional<std::vector<DecodedGlyph>> decode_fixed_glyph_table(std::span<const uint8_t> table) {
    // Length, count 1, offset 0, then the one glyph twice: the count says 1 and the table holds
    // two equal copies.
    if (table.size() < 10 || get32(table, 0) != table.size() - 4 || get16(table, 4) != 1 ||
        get32(table, 6) != 0 || (table.size() - 10) % 2 != 0) {
        return std::nullopt;
    }
    const std::size_t size = (table.size() - 10) / 2;
    const auto first = table.subspan(10, size);
    const auto second = table.subspan(10 + size, size);
    if (size < 3 || !std::equal(first.begin(), first.end(), second.begin())) return std::nullopt;
    DecodedGlyph g{first[0], first[1], first[2], first.subspan(3)};
    if (std::size_t{g.rowBytes} * g.height != size - 3 || g.width > 8u * g.rowBytes) {
        return std::nullopt;
    }
    return std::vector<DecodedGlyph>{g};
}

std::optional<std::vector<DecodedGlyph>> item_glyph_table(const DecodedClockItem &item) {
    return item.type == kFixedGlyphType ? decode_fixed_glyph_table(item.table)
                                        : decode_glyph_table(item.table);
}

std::optional<DecodedClock> read_clock_body(std::span<const uint8_t> file, std::size_t at,
                                            std::size_t end, const ScreenMode &mode,
                                            ClockBodyFailure &failure) {
    const auto head = read_head(file, at, end, mode, failure);
    if (!head) return std::nullopt;
    DecodedClock clock;
    clock.background = head->background;
    clock.unitCount = head->unitCount;
    const std::size_t colorSize = clock_color_size(mode);
    std::size_t p = head->items;
    while (p < end) {
        const auto item = read_item(file, p, end, colorSize, failure);
        if (!item) return std::nullopt;
        clock.items.push_back(*item);
        p += item_size(*item);
    }
    return clock;
}

std::vector<std::size_t> clock_body_ends(std::span<const uint8_t> file, std::size_t at,
                                         std::size_t declaredEnd, std::size_t limit,
                                         const ScreenMode &mode) {
    std::vector<std::size_t> ends;
    ClockBodyFailure ignored;
    const auto head = read_head(file, at, limit, mode, ignored);
    if (!head) return ends;
    const std::size_t colorSize = clock_color_size(mode);
    std::size_t p = head->items;
    for (;;) {
        if (p >= declaredEnd) ends.push_back(p);
        if (p >= limit || ends.size() == kMostEnds) break;
        const auto item = read_item(file, p, limit, colorSize, ignored);
        if (!item) break;
        p += item_size(*item);
    }
    return ends;
}

} // namespace zel::sim
