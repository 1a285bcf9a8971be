#include "sim/panel/clock_body_g6.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace zel::sim {
namespace {

constexpr std::size_t kAreaRecordSize = 9;
constexpr std::size_t kBattle = 10;
constexpr std::size_t kReserved = 37;
constexpr std::size_t kBackgroundOffset = 39;
constexpr std::size_t kCount = 47;
constexpr std::size_t kItems = 48;
constexpr std::size_t kItemHead = 6; // x, y, type, align
constexpr uint8_t kLastDigitalType = 7;
constexpr uint8_t kAnalogType = 8;
constexpr uint8_t kFixedGlyphType = 12;
constexpr uint32_t kFirstDataOffset = 14;

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

bool all_zero(std::span<const uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t b) { return b == 0; });
}

// The bytes at a data offset, or nothing when they lie outside the data file's pixels.
std::optional<std::span<const uint8_t>> in_data(std::span<const uint8_t> data, std::size_t dataEnd,
                                                uint32_t offset, uint32_t length) {
    if (offset < kFirstDataOffset || length > dataEnd || offset - 1 > dataEnd - length) {
        return std::nullopt;
    }
    return data.subspan(offset - 1, length);
}

} // namespace

std::size_t hand_record_size_g6(const ScreenMode &mode) {
    if (mode.colorMode != 4) return 14;
    return mode.tranPixelMode == 5 ? 23 : 17;
}

std::optional<DecodedClockG6> read_clock_body_g6(std::span<const uint8_t> file, std::size_t at,
                                                 uint32_t declaredLength, std::size_t limit,
                                                 std::span<const uint8_t> data, std::size_t dataEnd,
                                                 const ScreenMode &mode,
                                                 ClockBodyFailure &failure) {
    if (limit < at || limit - at < kItems) {
        failure = {at, "a G6 clock body is shorter than its 48 bytes of head"};
        return std::nullopt;
    }
    if (file[at + kAreaRecordSize] != 0) {
        failure = {at + kAreaRecordSize, "a clock area carries a frame mark other than 0"};
        return std::nullopt;
    }
    if (file[at + kReserved] != 0 || file[at + kReserved + 1] != 0) {
        failure = {at + kReserved, "the two bytes behind the battle record are not 0"};
        return std::nullopt;
    }
    DecodedClockG6 c;
    std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(at + kBattle), c.battleRecord.size(),
                c.battleRecord.begin());
    c.backgroundOffset = get32(file, at + kBackgroundOffset);
    c.backgroundLength = get32(file, at + kBackgroundOffset + 4);
    const std::size_t expected =
        encoded_page_size(mode, get16(file, at + 1), get16(file, at + 5), get16(file, at + 7));
    const auto background = in_data(data, dataEnd, c.backgroundOffset, c.backgroundLength);
    if (!background || c.backgroundLength != expected) {
        failure = {at + kBackgroundOffset,
                   text("a background of %llu bytes at data offset %llu is not the area's "
                        "encoded rectangle in the data file",
                        c.backgroundLength, c.backgroundOffset)};
        return std::nullopt;
    }
    c.clock.background = *background;
    c.clock.unitCount = file[at + kCount];

    const std::size_t colorSize = clock_color_size(mode);
    const std::size_t handSize = hand_record_size_g6(mode);
    const std::size_t declaredEnd = at + declaredLength;
    std::size_t p = at + kItems;
    for (uint32_t i = 0; i < c.clock.unitCount; ++i) {
        if (limit - p < kItemHead) {
            failure = {p, text("item %llu: its head runs past the CRC", i)};
            return std::nullopt;
        }
        const uint8_t type = file[p + 4];
        const std::size_t size = kItemHead + (type == kAnalogType ? handSize : colorSize + 8);
        if (limit - p < size) {
            failure = {p, text("item %llu of %llu bytes runs past the CRC", i, size)};
            return std::nullopt;
        }
        // An item counted for an unknown format was never written: zeros to the declared end.
        if (p + size <= declaredEnd && all_zero(file.subspan(p, size))) break;
        DecodedClockItem item;
        item.offset = p;
        item.x = get16(file, p);
        item.y = get16(file, p + 2);
        item.type = type;
        item.align = file[p + 5];
        DecodedClockG6::Table table;
        if (type == kAnalogType) {
            item.table = file.subspan(p + kItemHead, handSize);
        } else {
            if (type > kLastDigitalType && type != kFixedGlyphType) {
                failure = {p + 4, text("item type %llu is none of a G6 clock's", type)};
                return std::nullopt;
            }
            item.color = file.subspan(p + kItemHead, colorSize);
            table.offset = get32(file, p + kItemHead + colorSize);
            table.length = get32(file, p + kItemHead + colorSize + 4);
            const auto bytes = in_data(data, dataEnd, table.offset, table.length);
            if (!bytes) {
                failure = {p + kItemHead + colorSize,
                           text("a glyph table of %llu bytes at data offset %llu lies outside "
                                "the data file's pixels",
                                table.length, table.offset)};
                return std::nullopt;
            }
            item.table = *bytes;
            if (!item_glyph_table(item)) {
                failure = {p + kItemHead + colorSize,
                           "the glyph table's count, offsets and glyphs do not agree with its "
                           "length (a fixed glyph's: count 1 and two equal copies)"};
                return std::nullopt;
            }
        }
        c.clock.items.push_back(item);
        c.tables.push_back(table);
        p += size;
    }
    if (p < declaredEnd) {
        if (declaredEnd > limit || !all_zero(file.subspan(p, declaredEnd - p))) {
            failure = {p, "the bytes between the items and the declared end are not 0"};
            return std::nullopt;
        }
        p = declaredEnd;
    }
    c.bodyBytes = p - at;
    return c;
}

} // namespace zel::sim
