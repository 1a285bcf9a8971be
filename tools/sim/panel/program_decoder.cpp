#include "sim/panel/program_decoder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unordered_map>
#include <zlib.h>

#include "sim/panel/clock_body.h"

namespace zel::sim {
namespace {

constexpr std::size_t kHeaderSize = 19;
constexpr std::size_t kFlagOffset = 19;
constexpr std::size_t kPeriodSize = 6;
constexpr std::size_t kFrameHeaderSize = 7;
constexpr std::size_t kAreaRecordSize = 9;
constexpr std::size_t kPageHeaderSize = 13;
constexpr std::size_t kCrcSize = 4;
// Header, period flag, frame mark, background mark, area count, CRC.
constexpr std::size_t kSmallestFile = kHeaderSize + 4 + kCrcSize;
constexpr std::size_t kMostPeriods = 255; // the count is one byte

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

struct Failure {
    std::size_t offset;
    std::string what;
};

template <class T> struct Parsed {
    std::optional<T> value;
    Failure failure{0, {}};
    static Parsed fail(std::size_t at, std::string what) {
        Parsed p;
        p.failure = {at, std::move(what)};
        return p;
    }
};

class Reader {
  public:
    Reader(std::span<const uint8_t> file, const ScreenMode *mode)
        : m_file(file), m_end(file.size() - kCrcSize), m_mode(mode) {}

    DecodeResult run();

  private:
    Parsed<std::vector<DecodedPage>> pages(std::size_t at, std::size_t end) const;
    Parsed<DecodedArea> area(std::size_t at, std::size_t end) const;
    Parsed<std::vector<DecodedArea>> areas(std::size_t at);
    std::vector<std::size_t> block_ends(std::size_t at) const;
    bool lengths_reach_end(std::size_t at);

    std::span<const uint8_t> m_file;
    std::size_t m_end;        // where the CRC starts
    const ScreenMode *m_mode; // null: clock bodies are not read
    std::unordered_map<std::size_t, bool> m_reach;
    // For a block whose end the chain of lengths had to choose: the end chosen.
    std::unordered_map<std::size_t, std::size_t> m_chosen;
};

Parsed<std::vector<DecodedPage>> Reader::pages(std::size_t at, std::size_t end) const {
    using Result = Parsed<std::vector<DecodedPage>>;
    if (end - at < 2) {
        return Result::fail(at, "the page count runs past the area's end");
    }
    const uint16_t count = get16(m_file, at);
    std::vector<DecodedPage> out;
    std::size_t p = at + 2;
    for (uint32_t i = 0; i < count; ++i) {
        if (end - p < 4) {
            return Result::fail(p, text("page %llu of %llu: its length word runs past the "
                                        "area's end",
                                        i, count));
        }
        const uint32_t length = get32(m_file, p);
        if (length < kPageHeaderSize) {
            return Result::fail(p, text("page %llu: a record of %llu bytes is shorter than its "
                                        "13-byte header",
                                        i, length));
        }
        if (length > end - p - 4) {
            return Result::fail(p, text("page %llu: a record of %llu bytes runs past the "
                                        "area's end at %llu",
                                        i, length, end));
        }
        DecodedPage page;
        page.offset = p;
        std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(p + 4), kPageHeaderSize,
                    page.header.begin());
        page.pixels = m_file.subspan(p + 4 + kPageHeaderSize, length - kPageHeaderSize);
        out.push_back(page);
        p += 4 + length;
    }
    if (p != end) {
        return Result::fail(
            p, text("the %llu pages end here but the area runs on to %llu", count, end));
    }
    Result ok;
    ok.value = std::move(out);
    return ok;
}

Parsed<DecodedArea> Reader::area(std::size_t at, std::size_t end) const {
    using Result = Parsed<DecodedArea>;
    if (end - at < kAreaRecordSize + 3) {
        return Result::fail(at, text("an area body of %llu bytes is shorter than the 12 of "
                                     "an empty one",
                                     end - at));
    }
    DecodedArea a;
    a.offset = at - 4;
    a.bodyLength = static_cast<uint32_t>(end - at);
    a.type = m_file[at];
    a.x = get16(m_file, at + 1);
    a.y = get16(m_file, at + 3);
    a.width = get16(m_file, at + 5);
    a.height = get16(m_file, at + 7);
    const std::size_t mark = at + kAreaRecordSize;
    a.end = end;
    if (a.type == 2) {
        if (m_mode != nullptr) {
            ClockBodyFailure failure;
            a.clock = read_clock_body(m_file, at, end, *m_mode, failure);
            if (!a.clock) return Result::fail(failure.offset, failure.what);
            // What the block declares, also where its items run longer.
            a.bodyLength = get32(m_file, at - 4);
        } else if (m_file[mark] != 0) {
            return Result::fail(mark, "a clock area carries a frame mark other than 0");
        }
        Result ok;
        ok.value = a;
        return ok;
    }
    if (a.type != 0) {
        return Result::fail(at,
                            text("area type %llu is neither 0 (pictures) nor 2 (clock)", a.type));
    }
    if (m_file[mark] == 0) {
        auto p = pages(mark + 1, end);
        if (!p.value) {
            return Result::fail(p.failure.offset, p.failure.what);
        }
        a.pages = std::move(*p.value);
        Result ok;
        ok.value = std::move(a);
        return ok;
    }
    if (m_file[mark] != 1) {
        return Result::fail(mark, text("area frame mark %llu is neither 0 nor 1", m_file[mark]));
    }
    // The strip has no length: count, for every place behind the frame header, how many page
    // records follow each other from there to the area's end, and take the first place whose
    // page count says exactly that.
    const std::size_t first = mark + kFrameHeaderSize;
    if (end < first + 2) {
        return Result::fail(mark, "the area frame header runs past the area's end");
    }
    std::vector<int64_t> chain(end - first + 1, -1);
    chain[end - first] = 0;
    for (std::size_t p = end; p-- > first;) {
        if (end - p < 4) continue;
        const uint32_t length = get32(m_file, p);
        if (length < kPageHeaderSize || length > end - p - 4) continue;
        const int64_t next = chain[p + 4 + length - first];
        if (next >= 0) chain[p - first] = next + 1;
    }
    for (std::size_t o = first; o + 2 <= end; ++o) {
        if (chain[o + 2 - first] == get16(m_file, o)) {
            auto p = pages(o, end);
            if (!p.value) continue;
            DecodedFrame frame;
            frame.offset = mark;
            std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(mark), kFrameHeaderSize,
                        frame.header.begin());
            frame.strip = m_file.subspan(first, o - first);
            a.frame = frame;
            a.pages = std::move(*p.value);
            Result ok;
            ok.value = std::move(a);
            return ok;
        }
    }
    return Result::fail(mark, "no length of the area frame's strip lets the page records end "
                              "at the area's end");
}

// Where the block at `at` may end: where its length says; for a clock read with a screen, the
// item boundaries from there on, since its items may run longer than the length declares.
std::vector<std::size_t> Reader::block_ends(std::size_t at) const {
    if (at > m_end || m_end - at < 4 + kAreaRecordSize + 3) return {};
    const uint32_t length = get32(m_file, at);
    if (length > m_end - at - 4) return {};
    const std::size_t declared = at + 4 + length;
    if (m_mode != nullptr && m_file[at + 4] == 2) {
        return clock_body_ends(m_file, at + 4, declared, m_end, *m_mode);
    }
    return {declared};
}

// Only the chain of block ends, bodies unread but for the items of clocks: a cheap test before
// a full reading. Where a clock block may end in several places, the first one from which the
// chain reaches the CRC is remembered for the full reading.
bool Reader::lengths_reach_end(std::size_t at) {
    struct Step {
        std::size_t pos;
        std::vector<std::size_t> ends;
        std::size_t next = 0;
    };
    auto known = [&](std::size_t p) -> std::optional<bool> {
        if (p == m_end) return true;
        if (auto it = m_reach.find(p); it != m_reach.end()) return it->second;
        return std::nullopt;
    };
    if (const auto k = known(at)) return *k;
    std::vector<Step> path{{at, block_ends(at)}};
    m_reach[at] = false; // until a way to the CRC is found
    while (!path.empty()) {
        Step &step = path.back();
        if (step.next == step.ends.size()) {
            m_chosen.erase(step.pos);
            path.pop_back();
            continue;
        }
        const std::size_t end = step.ends[step.next++];
        const auto k = known(end);
        if (k && !*k) continue;
        if (step.ends.size() > 1) m_chosen[step.pos] = end;
        if (k) {
            for (const Step &s : path)
                m_reach[s.pos] = true;
            return true;
        }
        m_reach[end] = false;
        path.push_back({end, block_ends(end)});
    }
    return false;
}

Parsed<std::vector<DecodedArea>> Reader::areas(std::size_t at) {
    using Result = Parsed<std::vector<DecodedArea>>;
    std::vector<DecodedArea> out;
    std::size_t p = at;
    while (p != m_end) {
        if (p > m_end || m_end - p < 4) {
            return Result::fail(p, "an area block's length word runs into the CRC");
        }
        const uint32_t length = get32(m_file, p);
        if (length > m_end - p - 4) {
            return Result::fail(p, text("area %llu: a block of %llu bytes runs past the CRC at "
                                        "%llu",
                                        out.size(), length, m_end));
        }
        // A clock's block ends where the chain of lengths found its way, otherwise at its first
        // possible end; any other block where its length says.
        std::size_t end = p + 4 + length;
        if (const auto chosen = m_chosen.find(p); chosen != m_chosen.end()) {
            end = chosen->second;
        } else if (const auto ends = block_ends(p); !ends.empty()) {
            end = ends.front();
        }
        auto a = area(p + 4, end);
        if (!a.value) {
            return Result::fail(a.failure.offset, text("area %llu: ", out.size()) + a.failure.what);
        }
        out.push_back(std::move(*a.value));
        p = end;
    }
    Result ok;
    ok.value = std::move(out);
    return ok;
}

DecodeResult Reader::run() {
    DecodeResult result;
    DecodedProgram program;
    std::copy_n(m_file.begin(), kHeaderSize, program.header.begin());
    program.name.assign(reinterpret_cast<const char *>(m_file.data()) + 1, 4);
    program.playPeriodFlag = m_file[kFlagOffset];
    if (program.playPeriodFlag > 1) {
        result.error = DecodeError{
            kFlagOffset, text("play period flag %llu is neither 0 nor 1", program.playPeriodFlag)};
        return result;
    }

    struct Reading {
        std::size_t periods;
        std::size_t frameMark;
        std::optional<std::size_t> strip; // length of the program frame's strip
    };
    auto accept = [&](const Reading &r, std::vector<DecodedArea> found) {
        for (std::size_t i = 0; i < r.periods; ++i) {
            std::array<uint8_t, 6> period{};
            std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(20 + i * kPeriodSize),
                        kPeriodSize, period.begin());
            program.playPeriods.push_back(period);
        }
        std::size_t after = r.frameMark + 1;
        if (r.strip) {
            DecodedFrame frame;
            frame.offset = r.frameMark;
            std::copy_n(m_file.begin() + static_cast<std::ptrdiff_t>(r.frameMark), kFrameHeaderSize,
                        frame.header.begin());
            frame.strip = m_file.subspan(r.frameMark + kFrameHeaderSize, *r.strip);
            program.frame = frame;
            after = r.frameMark + kFrameHeaderSize + *r.strip;
        }
        program.areaCount = m_file[after + 1];
        program.areas = std::move(found);
        program.crc = get32(m_file, m_end);
        result.program = std::move(program);
    };
    // Tries one reading: the background mark 0, the count, then area blocks up to the CRC.
    // A frameless reading whose block lengths lead exactly to the CRC is the file's structure
    // beyond reasonable doubt: a body that fails there is where the file stops making sense.
    std::optional<Failure> deepest;
    bool settled = false;
    auto attempt = [&](const Reading &r, bool frameless) {
        const std::size_t background =
            r.strip ? r.frameMark + kFrameHeaderSize + *r.strip : r.frameMark + 1;
        if (background + 2 > m_end) return false;
        if (m_file[background] != 0) {
            if (frameless && (!deepest || background >= deepest->offset)) {
                deepest = Failure{background, "the background mark is not 0"};
            }
            return false;
        }
        const std::size_t first = background + 2;
        const bool chained = lengths_reach_end(first);
        if (!frameless && !chained) return false;
        auto found = areas(first);
        if (!found.value) {
            if (frameless && (!deepest || found.failure.offset >= deepest->offset || chained)) {
                deepest = found.failure;
                settled = chained;
            }
            return false;
        }
        // A frame strip is only believed with a count that can stand for its blocks: replacing
        // areas raises the count above them, nothing lowers it below.
        const uint8_t count = m_file[background + 1];
        if (!frameless && (count < found.value->size() || (found.value->empty() && count != 0))) {
            return false;
        }
        accept(r, std::move(*found.value));
        return true;
    };

    const std::size_t most = program.playPeriodFlag == 0 ? 0 : kMostPeriods;
    const std::size_t least = program.playPeriodFlag == 0 ? 0 : 1;
    // Without a frame the mark is 0; a program frame's first byte is the host's and may be 0
    // too, so frames are tried after every frameless reading. With both periods and a frame
    // the file cannot tell where one ends and the other begins: the fewest periods win.
    for (std::size_t k = least; k <= most; ++k) {
        const std::size_t mark = 20 + k * kPeriodSize;
        if (mark + 3 > m_end) break;
        if (m_file[mark] == 0 && attempt({k, mark, std::nullopt}, true)) return result;
        if (settled) break;
    }
    for (std::size_t k = least; k <= most && !settled; ++k) {
        const std::size_t mark = 20 + k * kPeriodSize;
        if (mark + kFrameHeaderSize + 2 > m_end) break;
        for (std::size_t strip = 0; mark + kFrameHeaderSize + strip + 2 <= m_end; ++strip) {
            if (attempt({k, mark, strip}, false)) return result;
        }
    }
    if (deepest) {
        result.error = DecodeError{deepest->offset, deepest->what};
    } else {
        result.error = DecodeError{kFlagOffset + 1,
                                   "no reading of the play periods and the program frame lets "
                                   "the area blocks end at the CRC"};
    }
    return result;
}

bool planes_mode(const ScreenMode &mode) {
    return mode.colorMode >= 1 && mode.colorMode <= 3 &&
           (mode.tranPixelMode == 0 || mode.tranPixelMode == 4);
}

struct Row {
    uint32_t padLeft, rowPixels;
};
Row row_of(const ScreenMode &mode, uint32_t left, uint32_t width) {
    const uint32_t unit = mode.tranPixelMode == 4 ? 32 : 8;
    const uint32_t padLeft = left % unit;
    const uint32_t end = left + width;
    const uint32_t padRight = end % unit == 0 ? 0 : unit - end % unit;
    return {padLeft, padLeft + width + padRight};
}

// Brightness before the panel's gamma: the encoder looks every component up in a table of
// exponent 2, so the reader takes the smallest value that the table raises to at least `v`.
uint8_t ungamma(uint32_t v) {
    static const std::array<uint8_t, 256> inverse = [] {
        std::array<uint8_t, 256> table{};
        std::size_t i = 0;
        for (uint32_t want = 0; want < 256; ++want) {
            while (i < 255) {
                const double s = (static_cast<double>(i) + 0.5) / 256.0;
                if (static_cast<uint32_t>(s * s * 256.0 - 0.5) >= want) break;
                ++i;
            }
            table[want] = static_cast<uint8_t>(i);
        }
        return table;
    }();
    return inverse[std::min<uint32_t>(v, 255)];
}

uint32_t plane_colour(const ScreenMode &mode, bool p1, bool p2, bool p3) {
    switch (mode.colorMode) {
    case 1:
        return p1 ? 0xFF0000u : 0; // a one-colour panel is shown in red
    case 2: {
        const bool red = mode.doubleColor == 1 ? p1 : p2;
        const bool green = mode.doubleColor == 1 ? p2 : p1;
        return (red ? 0xFF0000u : 0) | (green ? 0x00FF00u : 0);
    }
    default:
        return (p1 ? 0xFF0000u : 0) | (p2 ? 0x00FF00u : 0) | (p3 ? 0x0000FFu : 0);
    }
}

} // namespace

namespace {

DecodeResult decode(std::span<const uint8_t> file, const ScreenMode *mode) {
    DecodeResult result;
    if (file.size() < kSmallestFile) {
        result.error = DecodeError{file.size(), text("a file of %llu bytes is shorter than the "
                                                     "27 of an empty program",
                                                     file.size())};
        return result;
    }
    const std::size_t end = file.size() - kCrcSize;
    const uint32_t stored = get32(file, end);
    const auto computed = static_cast<uint32_t>(crc32(0L, file.data(), static_cast<uInt>(end)));
    if (stored != computed) {
        result.error = DecodeError{end, text("the CRC-32 0x%08llX does not match the 0x%08llX "
                                             "of the bytes before it",
                                             stored, computed)};
        return result;
    }
    return Reader(file, mode).run();
}

} // namespace

DecodeResult decode_program(std::span<const uint8_t> file) {
    return decode(file, nullptr);
}

DecodeResult decode_program(std::span<const uint8_t> file, const ScreenMode &mode) {
    return decode(file, &mode);
}

uint32_t rgb_from_565(uint16_t w) {
    // Blue in the top five bits, red in the low five.
    const uint32_t r = ungamma((w & 0x1Fu) << 3);
    const uint32_t g = ungamma(((w >> 5) & 0x3Fu) << 2);
    const uint32_t b = ungamma(((w >> 11) & 0x1Fu) << 3);
    return (r << 16) | (g << 8) | b;
}

uint32_t panel_colour(const ScreenMode &mode, uint32_t rgb) {
    if (mode.colorMode == 4) return rgb & 0xFFFFFFu;
    // The encoder's rule: a component of 97 or more is lit; a colour with neither red nor green
    // lit but blue lights the first plane of a two-colour screen.
    const bool r = ((rgb >> 16) & 0xFF) >= 97;
    const bool g = ((rgb >> 8) & 0xFF) >= 97;
    const bool b = (rgb & 0xFF) >= 97;
    switch (mode.colorMode) {
    case 1:
        return plane_colour(mode, r || g || b, false, false);
    case 2: {
        const bool redPlane = r || (!r && !g && b);
        return mode.doubleColor == 1 ? plane_colour(mode, redPlane, g, false)
                                     : plane_colour(mode, g, redPlane, false);
    }
    default:
        return plane_colour(mode, r, g, b);
    }
}

std::size_t encoded_page_size(const ScreenMode &mode, uint32_t left, uint32_t width,
                              uint32_t height) {
    if (planes_mode(mode)) {
        const Row row = row_of(mode, left, width);
        return static_cast<std::size_t>(row.rowPixels) * height / 8 *
               static_cast<std::size_t>(mode.colorMode);
    }
    if (mode.colorMode == 4) {
        const std::size_t pixels = static_cast<std::size_t>(width) * height;
        switch (mode.tranPixelMode) {
        case 1:
        case 3:
            return pixels * 2;
        case 5:
            return pixels * 3;
        default:
            return 0;
        }
    }
    return 0;
}

std::optional<Rgb> decode_pixels(const ScreenMode &mode, std::span<const uint8_t> bytes,
                                 uint32_t left, uint32_t width, uint32_t height) {
    const std::size_t size = encoded_page_size(mode, left, width, height);
    if (bytes.size() != size) {
        return std::nullopt;
    }
    if (size == 0) {
        // A screen kind that carries no pixel bytes shows its pages dark, whatever size the
        // file claims for them: the image stops at the screen, beyond which nothing shows.
        width = std::min(width, mode.width);
        height = std::min(height, mode.height);
    }
    Rgb image{width, height, std::vector<uint32_t>(static_cast<std::size_t>(width) * height, 0)};
    if (planes_mode(mode)) {
        const Row row = row_of(mode, left, width);
        const std::size_t planes = static_cast<std::size_t>(mode.colorMode);
        const std::size_t planeBytes = static_cast<std::size_t>(row.rowPixels) * height / 8;
        // Bits are active-low: 0 is a lit LED.
        auto lit = [&](std::size_t plane, std::size_t position) -> bool {
            if (plane >= planes) return false;
            if (mode.tranPixelMode == 0) {
                // Groups of 8 positions, one byte per plane; two colours put plane 2 first.
                std::size_t slot = plane;
                if (planes == 2) slot = 1 - plane;
                const uint8_t b = bytes[(position / 8) * planes + slot];
                return ((b >> (7 - position % 8)) & 1) == 0;
            }
            // Whole planes of little-endian 32-bit words, first position in the top bit.
            const std::size_t word = plane * planeBytes + (position / 32) * 4;
            const uint32_t w = get32(bytes, word);
            return ((w >> (31 - position % 32)) & 1) == 0;
        };
        for (uint32_t py = 0; py < height; ++py) {
            for (uint32_t px = 0; px < width; ++px) {
                const std::size_t position =
                    static_cast<std::size_t>(py) * row.rowPixels + row.padLeft + px;
                image.pixels[static_cast<std::size_t>(py) * width + px] =
                    plane_colour(mode, lit(0, position), lit(1, position), lit(2, position));
            }
        }
        return image;
    }
    if (mode.colorMode == 4) {
        for (std::size_t i = 0; i < image.pixels.size(); ++i) {
            if (mode.tranPixelMode == 3) {
                image.pixels[i] = rgb_from_565(get16(bytes, i * 2));
            } else if (mode.tranPixelMode == 5) {
                image.pixels[i] = (static_cast<uint32_t>(bytes[i * 3]) << 16) |
                                  (static_cast<uint32_t>(bytes[i * 3 + 1]) << 8) | bytes[i * 3 + 2];
            }
        }
    }
    return image;
}

std::optional<DrawRect> draw_rect(const ScreenMode &mode, const DecodedArea &area) {
    auto fits = [&](int32_t t) {
        const int32_t w = area.width - 2 * t;
        const int32_t h = area.height - 2 * t;
        if (w < 0 || h < 0) return false;
        const std::size_t size =
            encoded_page_size(mode, static_cast<uint32_t>(area.x + t), static_cast<uint32_t>(w),
                              static_cast<uint32_t>(h));
        return std::all_of(area.pages.begin(), area.pages.end(),
                           [&](const DecodedPage &p) { return p.pixels.size() == size; });
    };
    auto rect = [&](int32_t t) {
        return DrawRect{area.x + t, area.y + t, area.width - 2 * t, area.height - 2 * t, t};
    };
    if (!area.frame) {
        if (fits(0)) return rect(0);
        return std::nullopt;
    }
    if (area.pages.empty()) return std::nullopt;
    for (int32_t t = 0; 2 * t <= std::min<int32_t>(area.width, area.height); ++t) {
        if (fits(t)) return rect(t);
    }
    return std::nullopt;
}

} // namespace zel::sim
