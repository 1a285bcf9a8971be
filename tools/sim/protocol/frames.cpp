#include "sim/protocol/frames.h"

#include "sdk/crc.h"

namespace zel::sim {
namespace {

constexpr uint8_t kStart = 0xA5;
constexpr uint8_t kEnd = 0x5A;
constexpr uint8_t kEscLow = 0x5B;
constexpr uint8_t kEscHigh = 0xA6;
constexpr std::size_t kStartRun = 8;
constexpr uint8_t kNoPad = 0x96;
constexpr uint8_t kPadMarker = 0x69; // any value but 0x96 says the body is padded
constexpr std::size_t kPadPeriod = 112;
constexpr std::size_t kProbeLen = 19;
constexpr std::size_t kHeaderG5 = 27;
constexpr std::size_t kHeaderG6 = 28;
constexpr std::size_t kHeaderDynamic = 16;

uint16_t u16_at(const std::vector<uint8_t> &b, std::size_t at) {
    return at + 2 <= b.size() ? static_cast<uint16_t>(b[at] | (b[at + 1] << 8)) : 0;
}

uint32_t u32_at(const std::vector<uint8_t> &b, std::size_t at) {
    return at + 4 <= b.size() ? static_cast<uint32_t>(u16_at(b, at)) |
                                    (static_cast<uint32_t>(u16_at(b, at + 2)) << 16)
                              : 0;
}

void put_u16(std::vector<uint8_t> &b, uint16_t v) {
    b.push_back(static_cast<uint8_t>(v));
    b.push_back(static_cast<uint8_t>(v >> 8));
}

uint8_t xor_of(const std::vector<uint8_t> &b, std::size_t count) {
    uint8_t x = 0;
    for (std::size_t i = 0; i < count && i < b.size(); ++i)
        x ^= b[i];
    return x;
}

// The pad is the CRC-16 table read as bytes, each entry's low byte first.
uint8_t pad_byte(std::size_t index) {
    const uint16_t entry = crc16_table()[(index / 2) % 256];
    return static_cast<uint8_t>((index & 1) != 0 ? entry >> 8 : entry);
}

} // namespace

void FrameSplitter::feed(const uint8_t *data, std::size_t len) {
    for (std::size_t i = 0; i < len; ++i) {
        const uint8_t b = data[i];
        if (m_buffer.empty()) {
            if (b == kStart) m_buffer.push_back(b); // anything before a start run is noise
            continue;
        }
        if (b == kStart && m_buffer.back() != kStart) {
            // A new start run in the middle of a frame: the frame before it was cut short.
            m_buffer.clear();
            m_buffer.push_back(b);
            continue;
        }
        m_buffer.push_back(b);
        if (b == kEnd) {
            m_ready.push_back(std::move(m_buffer));
            m_buffer.clear();
        } else if (m_buffer.size() > kMaxFrameLen) {
            m_buffer.clear();
        }
    }
}

std::optional<std::vector<uint8_t>> FrameSplitter::next() {
    if (m_ready.empty()) {
        return std::nullopt;
    }
    std::vector<uint8_t> frame = std::move(m_ready.front());
    m_ready.erase(m_ready.begin());
    return frame;
}

std::vector<uint8_t> unescape(const std::vector<uint8_t> &frame) {
    std::size_t first = 0;
    while (first < frame.size() && frame[first] == kStart)
        ++first;
    std::size_t stop = frame.size();
    while (stop > first && frame[stop - 1] == kEnd)
        --stop;
    std::vector<uint8_t> out;
    out.reserve(stop - first);
    for (std::size_t i = first; i < stop; ++i) {
        const uint8_t b = frame[i];
        if ((b == kEscLow || b == kEscHigh) && i + 1 < stop &&
            (frame[i + 1] == 0x01 || frame[i + 1] == 0x02)) {
            const bool second = frame[i + 1] == 0x02;
            out.push_back(b == kEscLow ? (second ? kEnd : kEscLow) : (second ? kStart : kEscHigh));
            ++i;
        } else {
            out.push_back(b);
        }
    }
    return out;
}

std::vector<uint8_t> escape(const std::vector<uint8_t> &inner) {
    std::vector<uint8_t> out(kStartRun, kStart);
    for (const uint8_t b : inner) {
        switch (b) {
        case kEnd:
            out.insert(out.end(), {kEscLow, 0x02});
            break;
        case kEscLow:
            out.insert(out.end(), {kEscLow, 0x01});
            break;
        case kStart:
            out.insert(out.end(), {kEscHigh, 0x02});
            break;
        case kEscHigh:
            out.insert(out.end(), {kEscHigh, 0x01});
            break;
        default:
            out.push_back(b);
            break;
        }
    }
    out.push_back(kEnd);
    return out;
}

ParsedRequest parse_request(const std::vector<uint8_t> &inner) {
    ParsedRequest r;
    if (inner.size() < 5) {
        return r;
    }
    r.version = inner[4];
    r.screen = u16_at(inner, 0);
    switch (r.version) {
    case 0: {
        if (inner.size() < kProbeLen) return r;
        r.sequence = u16_at(inner, 8);
        r.group = inner[15];
        r.code = inner[16];
        const std::vector<uint8_t> body(inner.begin() + 15, inner.begin() + 19);
        r.valid = xor_of(inner, 14) == inner[14] && u16_at(inner, 10) == 4 &&
                  crc16(body.data(), body.size()) == u16_at(inner, 12);
        return r;
    }
    case 5:
    case 7: {
        const std::size_t header = r.version == 5 ? kHeaderG5 : kHeaderG6;
        if (inner.size() < header + 5) return r;
        r.echo = inner[5];
        r.deviceType = u16_at(inner, 6);
        r.sequence = u16_at(inner, 10);
        r.group = inner[header + 1];
        r.code = inner[header + 2];
        const std::size_t bodyLen = u16_at(inner, 22);
        const std::size_t dataLen = u16_at(inner, header + 3);
        const bool fits = header + bodyLen == inner.size() && dataLen + 5 == bodyLen;
        const std::size_t available = inner.size() - header - 5;
        r.data.assign(inner.begin() + static_cast<std::ptrdiff_t>(header + 5),
                      inner.begin() +
                          static_cast<std::ptrdiff_t>(header + 5 + std::min(dataLen, available)));
        r.valid = fits && xor_of(inner, header - 1) == inner[header - 1] &&
                  crc16(inner.data() + header, inner.size() - header) == u16_at(inner, 24);
        return r;
    }
    case 240: {
        if (inner.size() < kHeaderDynamic + 2) return r;
        r.deviceType = u16_at(inner, 6);
        const std::size_t dataLen = u32_at(inner, 12);
        const std::size_t available = inner.size() - kHeaderDynamic - 2;
        r.data.assign(inner.begin() + kHeaderDynamic,
                      inner.begin() + static_cast<std::ptrdiff_t>(kHeaderDynamic +
                                                                  std::min(dataLen, available)));
        // The group and code of a dynamic command stand inside its data.
        r.group = r.data.size() > 1 ? r.data[1] : 0;
        r.code = r.data.size() > 2 ? r.data[2] : 0;
        r.valid = dataLen == available && crc16(inner.data(), kHeaderDynamic + dataLen) ==
                                              u16_at(inner, kHeaderDynamic + dataLen);
        return r;
    }
    default:
        return r;
    }
}

std::vector<uint8_t> answer_inner(const AnswerLayout &layout) {
    std::vector<uint8_t> body = {0x01, layout.group, layout.code, 0x00, 0x00};
    put_u16(body, layout.errorCode);
    put_u16(body, static_cast<uint16_t>(layout.data.size()));
    body.insert(body.end(), layout.data.begin(), layout.data.end());
    uint16_t crc = crc16(body.data(), body.size());
    if (layout.badCrc) crc = static_cast<uint16_t>(crc ^ 0x5555);

    const bool g6 = layout.version == 7;
    const bool padded = layout.padIndex >= 0 && layout.padIndex <= 255;
    std::vector<uint8_t> h;
    put_u16(h, 0x8000); // to the host
    put_u16(h, 0xFFFE);
    h.push_back(layout.headerVersion >= 0 ? static_cast<uint8_t>(layout.headerVersion)
                                          : (g6 ? 7 : 5));
    h.push_back(layout.echo);
    put_u16(h, layout.deviceType);
    h.push_back(0);
    h.push_back(g6 ? layout.capability : 0);
    put_u16(h, layout.sequence);
    if (g6) {
        put_u16(h, 0x00FF);
    } else {
        h.push_back(0);
        h.push_back(0x84);
    }
    h.push_back(padded ? kPadMarker : kNoPad);
    h.push_back(padded ? static_cast<uint8_t>(layout.padIndex) : 0);
    h.insert(h.end(), 6, 0);
    put_u16(h, static_cast<uint16_t>(body.size()));
    put_u16(h, crc);
    if (g6) h.push_back(0);
    uint8_t check = xor_of(h, h.size());
    if (layout.badHeaderCheck) check = static_cast<uint8_t>(check ^ 0xFF);
    h.push_back(check);

    if (padded) {
        for (std::size_t i = 0; i < body.size(); ++i) {
            body[i] ^= pad_byte(static_cast<std::size_t>(layout.padIndex) + i % kPadPeriod);
        }
    }
    h.insert(h.end(), body.begin(), body.end());
    return h;
}

std::vector<uint8_t> answer_frame(const AnswerLayout &layout) {
    return escape(answer_inner(layout));
}

} // namespace zel::sim
