#include "sim/panel/program_decoder_g6.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <zlib.h>

namespace zel::sim {
namespace {

constexpr std::size_t kHeaderSize = 29;
constexpr std::size_t kFlagOffset = 29;
constexpr std::size_t kPeriodSize = 6;
constexpr std::size_t kFrameHeaderSize = 14;
constexpr std::size_t kAreaRecordSize = 9;
constexpr std::size_t kPageRecordSize = 30;
constexpr uint32_t kPageRecordLength = 26; // what the length word of every page record says
constexpr std::size_t kPageHeaderSize = 18;
constexpr std::size_t kSoundHeaderSize = 17;
constexpr std::size_t kCrcSize = 4;
// Header, period flag, frame byte, background byte, area count, CRC.
constexpr std::size_t kSmallestProgram = kHeaderSize + 4 + kCrcSize;
// Type 9, name, eight zero bytes, CRC.
constexpr std::size_t kDataHeadSize = 13;
constexpr uint8_t kDataFileType = 9;
constexpr std::size_t kSmallestData = kDataHeadSize + kCrcSize;
constexpr uint32_t kFirstDataOffset = kDataHeadSize + 1; // offsets are one-based
constexpr std::size_t kMostPeriods = 255;
// Area record, frame byte, three attribute bytes, sound byte, five zeros, page count.
constexpr std::size_t kSmallestPictureBody = kAreaRecordSize + 1 + 3 + 1 + 5 + 2;
// The length word of a background counts its frame header as 7 bytes; it holds 14.
constexpr std::size_t kBackgroundFrameSurplus = 7;
constexpr uint8_t kTypePictures = 0;
constexpr uint8_t kTypeClock = 2;
constexpr uint8_t kTypeBackground = 11;

uint16_t get16(std::span<const uint8_t> d, std::size_t at) {
    return static_cast<uint16_t>(d[at] | (d[at + 1] << 8));
}
uint32_t get32(std::span<const uint8_t> d, std::size_t at) {
    return static_cast<uint32_t>(d[at]) | (static_cast<uint32_t>(d[at + 1]) << 8) |
           (static_cast<uint32_t>(d[at + 2]) << 16) | (static_cast<uint32_t>(d[at + 3]) << 24);
}

std::string text(const char *format, unsigned long long a = 0, unsigned long long b = 0,
                 unsigned long long c = 0) {
    char line[200];
    std::snprintf(line, sizeof line, format, a, b, c);
    return line;
}

std::optional<DecodeError> crc_error(std::span<const uint8_t> file, const char *which) {
    const std::size_t end = file.size() - kCrcSize;
    const uint32_t stored = get32(file, end);
    const auto computed = static_cast<uint32_t>(crc32(0L, file.data(), static_cast<uInt>(end)));
    if (stored == computed) return std::nullopt;
    return DecodeError{end, std::string(which) +
                                text(": the CRC-32 0x%08llX does not match the 0x%08llX of the "
                                     "bytes before it",
                                     stored, computed)};
}

// A step of the reading: a value, or where and why the file stopped making sense.
template <class T> struct Step {
    std::optional<T> value;
    DecodeError failure;
    static Step fail(std::size_t at, std::string what) {
        Step s;
        s.failure = {at, std::move(what)};
        return s;
    }
    static Step of(T v) {
        Step s;
        s.value = std::move(v);
        return s;
    }
};

// What follows an area frame in a picture body: attribute bytes, sound, zeros, page records.
struct PictureRest {
    std::array<uint8_t, 3> extra{};
    std::optional<DecodedSoundG6> sound;
    std::vector<DecodedPageG6> pages;
};

class ReaderG6 {
  public:
    ReaderG6(std::span<const uint8_t> program, std::span<const uint8_t> data,
             const ScreenMode &mode)
        : m_file(program), m_data(data), m_mode(mode), m_end(program.size() - kCrcSize),
          m_dataEnd(data.size() - kCrcSize) {}

    DecodeResultG6 run();

  private:
    std::optional<std::size_t> held(std::size_t at) const;
    bool blocks_reach_end(std::size_t at);
    Step<PictureRest> picture_rest(std::size_t at, std::size_t end) const;
    Step<DecodedAreaG6> area(std::size_t at) const;
    Step<std::vector<DecodedAreaG6>> areas(std::size_t at) const;
    std::optional<DecodeError> data_in_order(const DecodedProgramG6 &program) const;
    std::optional<DecodedClockG6> clock(std::size_t at, ClockBodyFailure &failure) const;

    std::span<const uint8_t> m_file;
    std::span<const uint8_t> m_data;
    ScreenMode m_mode;
    std::size_t m_end;     // where the program file's CRC starts
    std::size_t m_dataEnd; // where the data file's CRC starts
    std::unordered_map<std::size_t, bool> m_reach;
};

// The body bytes that the block at `at` holds, or nothing when they run past the CRC.
std::optional<std::size_t> ReaderG6::held(std::size_t at) const {
    if (at > m_end || m_end - at < 4 + kAreaRecordSize + 1) return std::nullopt;
    std::size_t length = get32(m_file, at);
    const std::size_t body = at + 4;
    if (m_file[body] == kTypeClock) {
        ClockBodyFailure failure;
        const auto c = clock(at, failure);
        if (!c) return std::nullopt;
        length = c->bodyBytes;
    } else if (length > kAreaRecordSize && m_file[body] == kTypeBackground &&
               m_file[body + kAreaRecordSize] == 1) {
        length += kBackgroundFrameSurplus;
    }
    if (length > m_end - body) return std::nullopt;
    return length;
}

std::optional<DecodedClockG6> ReaderG6::clock(std::size_t at, ClockBodyFailure &failure) const {
    return read_clock_body_g6(m_file, at + 4, get32(m_file, at), m_end, m_data, m_dataEnd, m_mode,
                              failure);
}

// Only the chain of block lengths, bodies unread: a cheap test before a full reading.
bool ReaderG6::blocks_reach_end(std::size_t at) {
    std::vector<std::size_t> seen;
    bool result = false;
    std::size_t p = at;
    for (;;) {
        if (p == m_end) {
            result = true;
            break;
        }
        if (auto it = m_reach.find(p); it != m_reach.end()) {
            result = it->second;
            break;
        }
        seen.push_back(p);
        const auto length = held(p);
        if (!length) break;
        p += 4 + *length;
    }
    for (const std::size_t s : seen)
        m_reach[s] = result;
    return result;
}

Step<PictureRest> ReaderG6::picture_rest(std::size_t at, std::size_t end) const {
    using Result = Step<PictureRest>;
    if (end < at || end - at < 3 + 1 + 5 + 2) {
        return Result::fail(at, "the attribute bytes, sound and page count run past the area's "
                                "end");
    }
    PictureRest rest;
    std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(at), 3, rest.extra.begin());
    std::size_t p = at + 3;
    if (m_file[p] == 1) {
        if (end - p < kSoundHeaderSize + 4) {
            return Result::fail(p, "the sound header runs past the area's end");
        }
        DecodedSoundG6 sound;
        std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(p), kSoundHeaderSize,
                    sound.header.begin());
        const uint32_t length = get32(m_file, p + kSoundHeaderSize);
        p += kSoundHeaderSize + 4;
        if (length > end - p) {
            return Result::fail(
                p - 4, text("a sound text of %llu bytes runs past the area's end", length));
        }
        sound.text.assign(reinterpret_cast<const char *>(m_file.data()) + p, length);
        p += length;
        rest.sound = std::move(sound);
    } else if (m_file[p] == 0) {
        ++p;
    } else {
        return Result::fail(p, text("sound mark %llu is neither 0 nor 1", m_file[p]));
    }
    if (end - p < 5 + 2) {
        return Result::fail(p, "the five zero bytes and the page count run past the area's end");
    }
    for (std::size_t i = 0; i < 5; ++i) {
        if (m_file[p + i] != 0) return Result::fail(p + i, "a byte that is always 0 is not");
    }
    p += 5;
    const uint16_t count = get16(m_file, p);
    p += 2;
    if ((end - p) != kPageRecordSize * count) {
        return Result::fail(p - 2, text("%llu page records of 30 bytes do not end at the area's "
                                        "end, %llu bytes on",
                                        count, end - p));
    }
    for (uint32_t i = 0; i < count; ++i, p += kPageRecordSize) {
        if (get32(m_file, p) != kPageRecordLength) {
            return Result::fail(p, text("page %llu: the record's length word is %llu, not 26", i,
                                        get32(m_file, p)));
        }
        DecodedPageG6 page;
        page.offset = p;
        std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(p + 4), kPageHeaderSize,
                    page.header.begin());
        page.dataOffset = get32(m_file, p + 4 + kPageHeaderSize);
        page.dataLength = get32(m_file, p + 8 + kPageHeaderSize);
        if (page.dataOffset < kFirstDataOffset || page.dataLength > m_dataEnd ||
            page.dataOffset - 1 > m_dataEnd - page.dataLength) {
            return Result::fail(p + 4 + kPageHeaderSize,
                                text("page %llu: %llu bytes at offset %llu lie outside the data "
                                     "file's pixels",
                                     i, page.dataLength, page.dataOffset));
        }
        page.pixels = m_data.subspan(page.dataOffset - 1, page.dataLength);
        rest.pages.push_back(page);
    }
    return Result::of(std::move(rest));
}

Step<DecodedAreaG6> ReaderG6::area(std::size_t at) const {
    using Result = Step<DecodedAreaG6>;
    DecodedAreaG6 a;
    a.offset = at;
    a.bodyLength = get32(m_file, at);
    a.bodyBytes = *held(at);
    const std::size_t body = at + 4;
    const std::size_t end = body + a.bodyBytes;
    a.type = m_file[body];
    a.x = get16(m_file, body + 1);
    a.y = get16(m_file, body + 3);
    a.width = get16(m_file, body + 5);
    a.height = get16(m_file, body + 7);
    const std::size_t mark = body + kAreaRecordSize;
    if (a.type == kTypeClock) {
        ClockBodyFailure failure;
        a.clock = clock(at, failure);
        if (!a.clock) return Result::fail(failure.offset, failure.what);
        return Result::of(std::move(a));
    }
    if (a.type != kTypePictures && a.type != kTypeBackground) {
        return Result::fail(body, text("area type %llu is none of 0 (pictures), 2 (clock) and 11 "
                                       "(background)",
                                       a.type));
    }
    if (a.bodyBytes < kSmallestPictureBody) {
        return Result::fail(body, text("an area body of %llu bytes is shorter than the 21 of an "
                                       "empty one",
                                       a.bodyBytes));
    }
    auto accept = [&](PictureRest rest) {
        a.extra = rest.extra;
        a.sound = std::move(rest.sound);
        a.pages = std::move(rest.pages);
        return Result::of(std::move(a));
    };
    if (m_file[mark] == 0) {
        auto rest = picture_rest(mark + 1, end);
        if (!rest.value) return Result::fail(rest.failure.offset, rest.failure.what);
        return accept(std::move(*rest.value));
    }
    if (m_file[mark] != 1) {
        return Result::fail(mark, text("area frame mark %llu is neither 0 nor 1", m_file[mark]));
    }
    // The strip has no length: take the first under which the rest of the body holds.
    const std::size_t strip = mark + kFrameHeaderSize;
    if (end < strip) {
        return Result::fail(mark, "the area frame header runs past the area's end");
    }
    for (std::size_t after = strip; after <= end; ++after) {
        auto rest = picture_rest(after, end);
        if (!rest.value) continue;
        DecodedFrameG6 frame;
        frame.offset = mark;
        std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(mark), kFrameHeaderSize,
                    frame.header.begin());
        frame.strip = m_file.subspan(strip, after - strip);
        a.frame = frame;
        return accept(std::move(*rest.value));
    }
    return Result::fail(mark, "no length of the area frame's strip lets the page records end "
                              "at the area's end");
}

Step<std::vector<DecodedAreaG6>> ReaderG6::areas(std::size_t at) const {
    using Result = Step<std::vector<DecodedAreaG6>>;
    std::vector<DecodedAreaG6> out;
    std::size_t p = at;
    while (p != m_end) {
        const auto length = held(p);
        if (!length) {
            return Result::fail(
                p, text("area %llu: its block runs past the CRC at %llu", out.size(), m_end));
        }
        auto a = area(p);
        if (!a.value) {
            return Result::fail(a.failure.offset, text("area %llu: ", out.size()) + a.failure.what);
        }
        out.push_back(std::move(*a.value));
        p += 4 + *length;
    }
    return Result::of(std::move(out));
}

// The pixels stand in the data file one after the other, in the order of the records that
// point at them, and nothing else does.
std::optional<DecodeError> ReaderG6::data_in_order(const DecodedProgramG6 &program) const {
    uint64_t next = kFirstDataOffset;
    auto follows = [&](std::size_t where, uint32_t offset, uint32_t length) {
        if (offset != next) {
            return std::optional<DecodeError>(DecodeError{
                where, text("a record points at data offset %llu where the data file's next "
                            "bytes stand at %llu",
                            offset, next)});
        }
        next += length;
        return std::optional<DecodeError>();
    };
    for (const DecodedAreaG6 &a : program.areas) {
        for (const DecodedPageG6 &page : a.pages) {
            if (auto e =
                    follows(page.offset + 4 + kPageHeaderSize, page.dataOffset, page.dataLength)) {
                return e;
            }
        }
        if (!a.clock) continue;
        // The background, then each item's table in the order of the items.
        if (auto e =
                follows(a.offset + 4 + 39, a.clock->backgroundOffset, a.clock->backgroundLength)) {
            return e;
        }
        for (std::size_t i = 0; i < a.clock->tables.size(); ++i) {
            const DecodedClockG6::Table &t = a.clock->tables[i];
            if (a.clock->clock.items[i].type == 8) continue; // hands have no table
            if (auto e = follows(a.clock->clock.items[i].offset + 6 +
                                     a.clock->clock.items[i].color.size(),
                                 t.offset, t.length)) {
                return e;
            }
        }
    }
    if (next - 1 != m_dataEnd) {
        return DecodeError{m_end, text("the records point at %llu pixel bytes; the data file holds "
                                       "%llu",
                                       next - kFirstDataOffset, m_dataEnd - kDataHeadSize)};
    }
    return std::nullopt;
}

DecodeResultG6 ReaderG6::run() {
    DecodeResultG6 result;
    DecodedProgramG6 program;
    std::copy_n(m_file.begin(), kHeaderSize, program.header.begin());
    program.name.assign(reinterpret_cast<const char *>(m_file.data()) + 1, 4);
    program.dataName.assign(reinterpret_cast<const char *>(m_data.data()) + 1, 4);
    program.crc = get32(m_file, m_end);
    program.dataCrc = get32(m_data, m_dataEnd);
    program.playPeriodFlag = m_file[kFlagOffset];
    if (program.playPeriodFlag > 1) {
        result.error = DecodeError{
            kFlagOffset, text("play period flag %llu is neither 0 nor 1", program.playPeriodFlag)};
        return result;
    }

    std::optional<DecodeError> deepest;
    bool settled = false;
    // One reading: k periods, then the frame byte or a frame header with a strip of `strip`
    // bytes, the background byte, the count and the blocks up to the CRC. A frameless reading
    // whose block lengths lead exactly to the CRC is the file's structure: a body that fails
    // there is where the file stops making sense.
    auto attempt = [&](std::size_t k, std::optional<std::size_t> strip) {
        const std::size_t mark = kFlagOffset + 1 + k * kPeriodSize;
        const std::size_t background = strip ? mark + kFrameHeaderSize + *strip : mark + 1;
        if (background + 2 > m_end) return false;
        if (m_file[background] > 1) {
            if (!strip && (!deepest || background >= deepest->offset)) {
                deepest = DecodeError{background, "the background byte is neither 0 nor 1"};
            }
            return false;
        }
        const std::size_t first = background + 2;
        const bool chained = blocks_reach_end(first);
        if (strip && !chained) return false;
        auto found = areas(first);
        if (!found.value) {
            if (!strip && (!deepest || found.failure.offset >= deepest->offset || chained)) {
                deepest = found.failure;
                settled = chained;
            }
            return false;
        }
        const uint8_t count = m_file[background + 1];
        if (strip && (count < found.value->size() || (found.value->empty() && count != 0))) {
            return false;
        }
        for (std::size_t i = 0; i < k; ++i) {
            std::array<uint8_t, 6> period{};
            std::copy_n(m_file.begin() +
                            static_cast<std::ptrdiff_t>(kFlagOffset + 1 + i * kPeriodSize),
                        kPeriodSize, period.begin());
            program.playPeriods.push_back(period);
        }
        if (strip) {
            DecodedFrameG6 frame;
            frame.offset = mark;
            std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(mark), kFrameHeaderSize,
                        frame.header.begin());
            frame.strip = m_file.subspan(mark + kFrameHeaderSize, *strip);
            program.frame = frame;
        }
        program.hasBackground = m_file[background];
        program.areaCount = count;
        program.areas = std::move(*found.value);
        return true;
    };

    const std::size_t most = program.playPeriodFlag == 0 ? 0 : kMostPeriods;
    const std::size_t least = program.playPeriodFlag == 0 ? 0 : 1;
    bool read = false;
    for (std::size_t k = least; k <= most && !read; ++k) {
        const std::size_t mark = kFlagOffset + 1 + k * kPeriodSize;
        if (mark + 3 > m_end) break;
        if (m_file[mark] == 0 && attempt(k, std::nullopt)) read = true;
        if (settled) break;
    }
    // A program frame's header starts with 1.
    for (std::size_t k = least; k <= most && !read && !settled; ++k) {
        const std::size_t mark = kFlagOffset + 1 + k * kPeriodSize;
        if (mark + kFrameHeaderSize + 2 > m_end) break;
        if (m_file[mark] != 1) continue;
        for (std::size_t strip = 0; mark + kFrameHeaderSize + strip + 2 <= m_end; ++strip) {
            if (attempt(k, strip)) {
                read = true;
                break;
            }
        }
    }
    if (!read) {
        result.error =
            deepest ? *deepest
                    : DecodeError{kFlagOffset + 1, "no reading of the play periods and the program "
                                                   "frame lets the area blocks end at the CRC"};
        return result;
    }
    if (auto error = data_in_order(program)) {
        result.error = error;
        return result;
    }
    result.program = std::move(program);
    return result;
}

} // namespace

DecodeResultG6 decode_program_g6(std::span<const uint8_t> programFile,
                                 std::span<const uint8_t> dataFile, const ScreenMode &mode) {
    DecodeResultG6 result;
    if (dataFile.size() < kSmallestData) {
        result.inDataFile = true;
        result.error = DecodeError{dataFile.size(), text("a data file of %llu bytes is shorter "
                                                         "than the 17 of an empty one",
                                                         dataFile.size())};
        return result;
    }
    if (auto error = crc_error(dataFile, "data file")) {
        result.inDataFile = true;
        result.error = error;
        return result;
    }
    if (dataFile[0] != kDataFileType) {
        result.inDataFile = true;
        result.error = DecodeError{0, text("data file type %llu is not 9", dataFile[0])};
        return result;
    }
    for (std::size_t i = 5; i < kDataHeadSize; ++i) {
        if (dataFile[i] != 0) {
            result.inDataFile = true;
            result.error = DecodeError{i, "a byte of the data file's head that is always 0 is not"};
            return result;
        }
    }
    if (programFile.size() < kSmallestProgram) {
        result.error = DecodeError{programFile.size(), text("a program file of %llu bytes is "
                                                            "shorter than the 37 of an empty one",
                                                            programFile.size())};
        return result;
    }
    if (auto error = crc_error(programFile, "program file")) {
        result.error = error;
        return result;
    }
    return ReaderG6(programFile, dataFile, mode).run();
}

DecodedArea panel_area(const DecodedAreaG6 &area) {
    DecodedArea a;
    a.offset = area.offset;
    a.bodyLength = area.bodyLength;
    a.type = area.type == kTypeClock ? kTypeClock : kTypePictures;
    a.x = area.x;
    a.y = area.y;
    a.width = area.width;
    a.height = area.height;
    if (area.frame) {
        DecodedFrame frame;
        frame.offset = area.frame->offset;
        std::copy_n(area.frame->header.begin(), frame.header.size(), frame.header.begin());
        frame.strip = area.frame->strip;
        a.frame = frame;
    }
    a.end = area.offset + 4 + area.bodyBytes;
    if (area.clock) a.clock = area.clock->clock;
    for (const DecodedPageG6 &page : area.pages) {
        DecodedPage p;
        p.offset = page.offset;
        std::copy_n(page.header.begin(), p.header.size(), p.header.begin());
        p.pixels = page.pixels;
        a.pages.push_back(p);
    }
    return a;
}

std::string data_file_name_for(const std::string &programName) {
    std::string name = programName;
    if (!name.empty()) name[0] = 'D';
    return name;
}

} // namespace zel::sim
