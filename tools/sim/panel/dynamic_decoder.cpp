#include "sim/panel/dynamic_decoder.h"

#include <algorithm>

namespace zel::sim {
namespace {

constexpr uint8_t kForm = 1;
constexpr uint8_t kGroup = 0xA7;
constexpr std::size_t kHeadLen = 5;
constexpr uint8_t kAll = 0xFF;
constexpr uint32_t kPageRecordLen = 30;
constexpr uint32_t kPageRecordTail = 26;
constexpr uint32_t kG5PageHeadTail = 13;

struct Malformed {
    std::size_t offset;
    std::string what;
};

class Cursor {
  public:
    Cursor(std::span<const uint8_t> data, std::size_t pos) : m_data(data), m_pos(pos) {}
    std::size_t pos() const { return m_pos; }
    std::size_t left() const { return m_data.size() - m_pos; }
    void need(std::size_t n, const char *what) const {
        if (left() < n) throw Malformed{m_pos, std::string("the command ends inside ") + what};
    }
    uint8_t u8(const char *what) {
        need(1, what);
        return m_data[m_pos++];
    }
    uint16_t u16(const char *what) {
        need(2, what);
        const auto v = static_cast<uint16_t>(m_data[m_pos] | (m_data[m_pos + 1] << 8));
        m_pos += 2;
        return v;
    }
    uint32_t u32(const char *what) {
        need(4, what);
        uint32_t v = 0;
        for (std::size_t i = 0; i < 4; ++i)
            v |= static_cast<uint32_t>(m_data[m_pos + i]) << (8 * i);
        m_pos += 4;
        return v;
    }
    std::span<const uint8_t> take(std::size_t n, const char *what) {
        need(n, what);
        const auto s = m_data.subspan(m_pos, n);
        m_pos += n;
        return s;
    }

  private:
    std::span<const uint8_t> m_data;
    std::size_t m_pos;
};

void read_rect(Cursor &c, DecodedArea &area) {
    area.x = c.u16("the rectangle");
    area.y = c.u16("the rectangle");
    area.width = c.u16("the rectangle");
    area.height = c.u16("the rectangle");
}

DecodedDynamic read_add_g5(std::span<const uint8_t> data) {
    Cursor c(data, kHeadLen);
    const uint32_t dataLength = c.u32("the data length");
    if (dataLength != c.left()) {
        throw Malformed{kHeadLen, "the data length " + std::to_string(dataLength) + " is not the " +
                                      std::to_string(c.left()) + " bytes behind it"};
    }
    DecodedDynamicArea a;
    a.g5.headByte0 = c.u8("the head");
    a.areaID = a.g5.headByte0;
    a.g5.headByte1 = c.u8("the head");
    a.g5.headWord = c.u16("the head");
    a.g5.listFlag = c.u8("the list flag");
    const uint16_t listCount = c.u16("the list count");
    if (a.g5.listFlag == 0) {
        for (uint16_t i = 0; i < listCount; ++i)
            a.g5.listWords.push_back(c.u16("the list"));
    }
    a.g5.playByte = c.u8("the play byte");
    c.u32("the reserved word");
    a.area.offset = c.pos();
    a.area.type = c.u8("the area kind");
    read_rect(c, a.area);
    const std::size_t frameAt = c.pos();
    if (c.u8("the frame flag") != 0) throw Malformed{frameAt, "a G5 dynamic area has no frame"};
    const uint16_t pageCount = c.u16("the page count");
    for (uint16_t p = 0; p < pageCount; ++p) {
        DecodedPage page;
        page.offset = c.pos();
        const uint32_t pageBytes = c.u32("a page head");
        if (pageBytes < kG5PageHeadTail) {
            throw Malformed{page.offset, "a page's length is below its 13 header bytes"};
        }
        const auto head = c.take(kG5PageHeadTail, "a page head");
        std::copy(head.begin(), head.end(), page.header.begin());
        page.pixels = c.take(pageBytes - kG5PageHeadTail, "a page's pixels");
        a.area.pages.push_back(page);
    }
    a.area.end = c.pos();
    DecodedDynamic out;
    out.areas.push_back(std::move(a));
    return out;
}

struct BlockG6 {
    DecodedDynamicArea area;
    std::vector<std::pair<uint32_t, uint32_t>> pixelRefs; // offset, length per page
    std::size_t pixelTotal = 0;
};

// The part of a block behind the frame, from `c` to the block's end; throws if it does not
// end exactly there.
void read_block_tail(Cursor &c, std::size_t end, BlockG6 &b) {
    c.take(3, "the tail");
    const uint8_t hasSound = c.u8("the tail");
    if (hasSound != 0) {
        c.take(16, "the sound block");
        const uint32_t n = c.u32("the sound block");
        const auto text = c.take(n, "the sound text");
        b.area.g6.soundText = std::string(text.begin(), text.end());
    }
    c.take(5, "the reserved bytes");
    const uint16_t pageCount = c.u16("the page count");
    for (uint16_t p = 0; p < pageCount; ++p) {
        DecodedPage page;
        page.offset = c.pos();
        if (c.u32("a page record") != kPageRecordTail) {
            throw Malformed{page.offset, "a page record does not start with 26"};
        }
        const auto head = c.take(18, "a page record");
        std::copy_n(head.begin(), 9, page.header.begin());
        const uint32_t offset = c.u32("a page record");
        const uint32_t length = c.u32("a page record");
        b.pixelRefs.emplace_back(offset, length);
        b.pixelTotal += length;
        b.area.area.pages.push_back(page);
    }
    if (c.pos() != end) {
        throw Malformed{c.pos(),
                        "the area block ends " + std::to_string(end) + " by its itemLen, not here"};
    }
}

BlockG6 read_block_g6(std::span<const uint8_t> data, std::size_t at, bool withFrame) {
    Cursor c(data, at);
    BlockG6 b;
    b.area.area.offset = at;
    const uint32_t itemLen = c.u32("an area block");
    const std::size_t end = at + 4 + std::size_t{itemLen};
    if (end > data.size()) throw Malformed{at, "the itemLen runs past the command"};
    b.area.areaID = c.u8("an area block");
    auto &h = b.area.g6;
    h.runMode = c.u8("an area block");
    h.timeout = c.u16("an area block");
    h.allPrograms = c.u8("an area block");
    h.programCount = c.u16("an area block");
    if (h.allPrograms == 0) {
        for (uint16_t i = 0; i < h.programCount; ++i)
            h.programs.push_back(c.u16("the programs"));
    }
    h.immediate = c.u8("an area block");
    c.u32("an area block");
    b.area.area.type = c.u8("an area block");
    read_rect(c, b.area.area);
    const uint8_t hasFrame = c.u8("an area block");
    if (hasFrame != 1 || !withFrame) {
        read_block_tail(c, end, b);
        b.area.area.end = end;
        return b;
    }
    // The strip's length is whatever makes the rest of the block end at its itemLen.
    DecodedFrame frame;
    frame.offset = c.pos();
    const auto head = c.take(13, "the frame block");
    std::copy_n(head.begin(), 5, frame.header.begin() + 1);
    frame.header[0] = 1;
    const std::size_t stripAt = c.pos();
    for (std::size_t n = 0; stripAt + n < end; ++n) {
        Cursor rest(data, stripAt + n);
        BlockG6 tail = b;
        try {
            read_block_tail(rest, end, tail);
        } catch (const Malformed &) {
            continue;
        }
        frame.strip = data.subspan(stripAt, n);
        tail.area.area.frame = frame;
        tail.area.area.end = end;
        return tail;
    }
    throw Malformed{stripAt, "no length of the frame strip lets the area block end at its itemLen"};
}

// Points each page at its pixels; `base` is where offset 0 stands.
void attach_pixels(std::span<const uint8_t> data, std::size_t base, std::size_t expectedFirst,
                   BlockG6 &b) {
    std::size_t expected = expectedFirst;
    for (std::size_t p = 0; p < b.pixelRefs.size(); ++p) {
        const auto [offset, length] = b.pixelRefs[p];
        if (offset != expected) {
            throw Malformed{b.area.area.pages[p].offset + 22,
                            "a page's pixels start at " + std::to_string(offset) + ", not at " +
                                std::to_string(expected)};
        }
        if (base + offset + length > data.size()) {
            throw Malformed{b.area.area.pages[p].offset + 22,
                            "a page's pixels run past the command"};
        }
        b.area.area.pages[p].pixels = data.subspan(base + offset, length);
        expected += length;
    }
}

DecodedDynamic read_add_g6(std::span<const uint8_t> data, bool split) {
    Cursor c(data, kHeadLen);
    const uint16_t count = c.u16("the area count");
    std::vector<BlockG6> blocks;
    std::size_t at = c.pos();
    if (!split) {
        for (uint16_t i = 0; i < count; ++i) {
            BlockG6 b = read_block_g6(data, at, true);
            attach_pixels(data, b.area.area.end, 0, b);
            at = b.area.area.end + b.pixelTotal;
            blocks.push_back(std::move(b));
        }
    } else {
        for (uint16_t i = 0; i < count; ++i) {
            blocks.push_back(read_block_g6(data, at, false));
            at = blocks.back().area.area.end;
        }
        const std::size_t base = at;
        std::size_t running = 0;
        for (BlockG6 &b : blocks) {
            attach_pixels(data, base, running, b);
            running += b.pixelTotal;
        }
        at = base + running;
    }
    if (at != data.size()) {
        throw Malformed{at, std::to_string(data.size() - at) + " bytes follow the last area"};
    }
    DecodedDynamic out;
    out.splitLayout = split;
    for (BlockG6 &b : blocks) {
        for (const DecodedDynamicArea &seen : out.areas) {
            if (seen.areaID == b.area.areaID) {
                throw Malformed{b.area.area.offset,
                                "area " + std::to_string(b.area.areaID) + " comes twice"};
            }
        }
        out.areas.push_back(std::move(b.area));
    }
    return out;
}

DecodedDynamic read_delete(std::span<const uint8_t> data) {
    Cursor c(data, kHeadLen);
    DecodedDynamic out;
    out.kind = DecodedDynamic::Kind::Delete;
    const uint8_t count = c.u8("the count");
    if (count == kAll) {
        out.deleteAll = true;
    } else {
        const auto numbers = c.take(count, "the area numbers");
        out.deleted.assign(numbers.begin(), numbers.end());
    }
    if (c.left() != 0) throw Malformed{c.pos(), "bytes follow the area numbers"};
    return out;
}

std::string read_sound(Cursor &c) {
    c.take(16, "a sound block");
    const uint32_t n = c.u32("a sound block");
    const auto text = c.take(n, "a sound text");
    return {text.begin(), text.end()};
}

DecodedDynamic read_sound_insert(std::span<const uint8_t> data) {
    Cursor c(data, kHeadLen);
    DecodedDynamic out;
    out.kind = DecodedDynamic::Kind::SoundInsert;
    c.take(5, "the insert head");
    const std::size_t lengthAt = c.pos();
    const uint32_t dataLen = c.u32("the sound length");
    if (dataLen != c.left()) throw Malformed{lengthAt, "the sound length is not what follows"};
    out.soundTexts.push_back(read_sound(c));
    if (c.left() != 0) throw Malformed{c.pos(), "bytes follow the sound block"};
    return out;
}

DecodedDynamic read_sound_update(std::span<const uint8_t> data) {
    Cursor c(data, kHeadLen);
    DecodedDynamic out;
    out.kind = DecodedDynamic::Kind::SoundUpdate;
    c.u8("the update head");
    const uint8_t count = c.u8("the item count");
    for (uint8_t i = 0; i < count; ++i) {
        c.u8("an item");
        const std::size_t lengthAt = c.pos();
        const uint32_t dataLen = c.u32("an item");
        const std::size_t start = c.pos();
        out.soundTexts.push_back(read_sound(c));
        if (c.pos() - start != dataLen) throw Malformed{lengthAt, "an item's length is wrong"};
    }
    if (c.left() != 0) throw Malformed{c.pos(), "bytes follow the last item"};
    return out;
}

} // namespace

DynamicDecodeResult decode_dynamic(std::span<const uint8_t> data, DynamicFamily family) {
    DynamicDecodeResult result;
    try {
        if (data.size() < kHeadLen) throw Malformed{0, "the command head is cut short"};
        if (data[0] != kForm || data[1] != kGroup) {
            throw Malformed{0, "not a dynamic-area command"};
        }
        switch (data[2]) {
        case 0:
            if (family == DynamicFamily::G5) {
                result.command = read_add_g5(data);
            } else {
                try {
                    result.command = read_add_g6(data, false);
                } catch (const Malformed &) {
                    result.command = read_add_g6(data, true); // its error is the one reported
                }
            }
            break;
        case 1:
            result.command = read_delete(data);
            break;
        case 2:
            result.command = read_sound_update(data);
            break;
        case 7:
            result.command = read_sound_insert(data);
            break;
        default:
            throw Malformed{2, "unknown command code " + std::to_string(data[2])};
        }
    } catch (const Malformed &m) {
        result.command.reset();
        result.error = DecodeError{m.offset, m.what};
    }
    return result;
}

} // namespace zel::sim
