#include "wire/packet.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <emmintrin.h>

#include "sdk/bytes.h"
#include "sdk/console.h"
#include "sdk/crc.h"
#include "sdk/globals.h"

namespace zel {
namespace {

constexpr uint8_t kEscapeLow = 0x5B;  // leads the escapes of 0x5A and 0x5B
constexpr uint8_t kEscapeHigh = 0xA6; // leads the escapes of 0xA5 and 0xA6
constexpr uint8_t kFixedG5 = 0x84;
constexpr uint16_t kFixedG6 = 0x00FF;
constexpr uint16_t kSequenceStart = 2;
constexpr uint16_t kSequenceLimit = 32767;
constexpr uint8_t kBodyFormRequest = 1;
constexpr std::size_t kBodyDataOffset = 9; // answer body: form, group, code, 2, error, length

// The command body of a request: form, group, code, i16 data length, data.
void put_request_body(ByteWriter &w, uint8_t group, uint8_t code, const uint8_t *data,
                      int16_t dataLen) {
    w.u8(kBodyFormRequest).u8(group).u8(code).i16(dataLen);
    if (dataLen > 0 && data != nullptr) {
        w.bytes(data, static_cast<std::size_t>(dataLen));
    }
}

// Each byte's escape as it goes out (lead byte low, code high), 0 for a byte sent as it is.
constexpr std::array<uint16_t, 256> make_escapes() {
    std::array<uint16_t, 256> table{};
    table[kFrameEnd] = kEscapeLow | 0x02 << 8;
    table[kEscapeLow] = kEscapeLow | 0x01 << 8;
    table[kFrameStart] = kEscapeHigh | 0x02 << 8;
    table[kEscapeHigh] = kEscapeHigh | 0x01 << 8;
    return table;
}
constexpr std::array<uint16_t, 256> kEscapes = make_escapes();

constexpr std::size_t kScanBytes = 16;

inline __m128i load16(const uint8_t *p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
}

inline __m128i bytes_equal(__m128i v, uint8_t b) {
    return _mm_cmpeq_epi8(v, _mm_set1_epi8(static_cast<char>(b)));
}

// 0xFF for each byte of p[0 .. 16) that has to be escaped (0x5A, 0x5B, 0xA5, 0xA6).
inline __m128i escape_hits(const uint8_t *p) {
    const __m128i v = load16(p);
    return _mm_or_si128(_mm_or_si128(bytes_equal(v, kFrameEnd), bytes_equal(v, kEscapeLow)),
                        _mm_or_si128(bytes_equal(v, kFrameStart), bytes_equal(v, kEscapeHigh)));
}

inline uint32_t escape_mask(const uint8_t *p) {
    return static_cast<uint32_t>(_mm_movemask_epi8(escape_hits(p)));
}

// The number of bytes of in[0 .. n) that have to be escaped: per-byte counters of up to 255
// steps of sixteen bytes, summed.
std::size_t count_escapes(const uint8_t *in, std::size_t n) {
    std::size_t total = 0;
    std::size_t i = 0;
    while (i + kScanBytes <= n) {
        __m128i counts = _mm_setzero_si128();
        for (int steps = 0; steps < 255 && i + kScanBytes <= n; ++steps, i += kScanBytes) {
            counts = _mm_sub_epi8(counts, escape_hits(in + i)); // a hit is -1
        }
        const __m128i sums = _mm_sad_epu8(counts, _mm_setzero_si128());
        total += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                 static_cast<std::size_t>(_mm_extract_epi16(sums, 4));
    }
    for (; i < n; ++i) {
        total += kEscapes[in[i]] != 0 ? 1 : 0;
    }
    return total;
}

// One bit per byte of p[0 .. 16) that may lead an escape (0x5B, 0xA6).
inline uint32_t lead_mask(const uint8_t *p) {
    const __m128i v = load16(p);
    return static_cast<uint32_t>(
        _mm_movemask_epi8(_mm_or_si128(bytes_equal(v, kEscapeLow), bytes_equal(v, kEscapeHigh))));
}

// Removes the controller's XOR pad from body[0 .. length).
void remove_pad(uint8_t *body, std::size_t length, uint8_t index) {
    for (std::size_t i = 0; i < length; ++i) {
        body[i] ^= crc16_table_byte(index + (i % kPadPeriod));
    }
}

} // namespace

HeaderForm header_form_for(uint16_t deviceType) {
    switch (deviceType & 0xFF) {
    case 0x50:
    case 0x51:
    case 0x52:
    case 0x53:
    case 0x54:
    case 0x55:
    case 0x5E:
        return HeaderForm::G5;
    case 0x58:
    case 0x62:
    case 0x63:
    case 0x64:
    case 0x66:
    case 0x74:
        return HeaderForm::G6;
    default:
        return HeaderForm::None;
    }
}

void frame_bytes(std::span<const uint8_t> inner, std::vector<uint8_t> &out) {
    const uint8_t *in = inner.data();
    const std::size_t n = inner.size();
    // Sized once: the escapes are counted first, sixteen bytes at a time.
    const std::size_t escapes = count_escapes(in, n);
    out.clear();
    out.resize(kFrameStartRun + n + escapes + 1);
    uint8_t *o = out.data();
    std::memset(o, kFrameStart, kFrameStartRun);
    o += kFrameStartRun;
    // Runs of sixteen bytes without a delimiter are copied whole.
    auto put = [&o](uint8_t b) {
        const uint16_t escape = kEscapes[b];
        if (escape != 0) {
            o[0] = static_cast<uint8_t>(escape);
            o[1] = static_cast<uint8_t>(escape >> 8);
            o += 2;
        } else {
            *o++ = b;
        }
    };
    std::size_t i = 0;
    for (; i + kScanBytes <= n; i += kScanBytes) {
        if (escape_mask(in + i) == 0) {
            std::memcpy(o, in + i, kScanBytes);
            o += kScanBytes;
        } else {
            for (std::size_t k = 0; k < kScanBytes; ++k)
                put(in[i + k]);
        }
    }
    for (; i < n; ++i) {
        put(in[i]);
    }
    *o = kFrameEnd;
}

std::size_t unframe_bytes(std::span<const uint8_t> frame, uint8_t *out) {
    const int16_t length = static_cast<int16_t>(frame.size());
    int16_t first = 0;
    while (first < length && frame[static_cast<std::size_t>(first)] == kFrameStart) {
        ++first;
    }
    // Trailing end bytes are dropped down to, not including, position 0. When nothing but end
    // bytes stands there, the range runs to the frame's end.
    int16_t stop = length; // one past the last byte of the range
    for (int16_t i = static_cast<int16_t>(length - 1); i > 0; --i) {
        if (frame[static_cast<std::size_t>(i)] != kFrameEnd) {
            stop = static_cast<int16_t>(i + 1);
            break;
        }
    }
    if (first >= stop) return 0;
    const uint8_t *f = frame.data();
    const auto end = static_cast<std::size_t>(stop);
    std::size_t n = 0;
    for (auto i = static_cast<std::size_t>(first); i < end;) {
        // Up to the next byte that may lead an escape, sixteen bytes at a time.
        if (i + kScanBytes <= end) {
            const uint32_t leads = lead_mask(f + i);
            const std::size_t plain =
                leads == 0 ? kScanBytes : static_cast<std::size_t>(std::countr_zero(leads));
            std::memcpy(out + n, f + i, plain);
            n += plain;
            i += plain;
            if (plain == kScanBytes) continue;
        }
        const uint8_t b = f[i];
        const bool has_next = i + 1 < end;
        const uint8_t next = has_next ? f[i + 1] : 0;
        if (has_next && (b == kEscapeLow || b == kEscapeHigh) && (next == 0x01 || next == 0x02)) {
            if (b == kEscapeLow) {
                out[n++] = next == 0x02 ? kFrameEnd : kEscapeLow;
            } else {
                out[n++] = next == 0x02 ? kFrameStart : kEscapeHigh;
            }
            i += 2;
        } else {
            out[n++] = b;
            i += 1;
        }
    }
    return n;
}

LedPacket::LedPacket() {
    g_screenNum.store(kBroadcastScreenNum, std::memory_order_relaxed);
}

LedPacket::~LedPacket() = default;

uint16_t LedTKPacket::next_sequence() {
    const uint16_t current = m_sequence;
    m_sequence = static_cast<uint16_t>(m_sequence + 2);
    if (m_sequence >= kSequenceLimit) {
        m_sequence = kSequenceStart;
    }
    return current;
}

void LedTKPacket::pack(uint8_t group, uint8_t code, const uint8_t *data, int16_t dataLen,
                       std::vector<uint8_t> &out) {
    const HeaderForm form = header_form_for(m_DeviceType);
    if (form == HeaderForm::None) {
        return;
    }
    ByteWriter body;
    put_request_body(body, group, code, data, dataLen);
    const uint16_t bodyLen = static_cast<uint16_t>(5 + dataLen);
    const uint16_t bodyCrc = crc16(body.data().data(), body.size());
    const uint16_t screen = g_screenNum.load(std::memory_order_relaxed);

    ByteWriter w(kHeaderLenG6 + body.size());
    w.u16(screen).u16(kSourceAddress);
    if (form == HeaderForm::G5) {
        w.u8(kHeaderVersionG5).u8(m_echo).u16(m_DeviceType).u8(m_reservedA).u8(0);
        w.u16(next_sequence()).u8(0).u8(kFixedG5);
        w.u8(kNoPadMarker).u8(0).zeros(6).u16(bodyLen).u16(bodyCrc);
        w.u8(xor_check(w.data().data(), w.size()));
    } else {
        const uint8_t capability = static_cast<uint8_t>((m_capMask | 2) & m_capAnswer);
        w.u8(kHeaderVersionG6).u8(m_echo).u16(m_DeviceType).u8(m_reservedA).u8(capability);
        w.u16(next_sequence()).u16(kFixedG6);
        w.u8(kNoPadMarker).u8(0).zeros(6).u16(bodyLen).u16(bodyCrc).u8(0);
        w.u8(xor_check(w.data().data(), w.size()));
    }
    w.bytes(body.data().data(), body.size());
    frame_bytes(w.data(), out);
}

void LedTKPacket::pack_probe(std::vector<uint8_t> &out) {
    const uint8_t body[4] = {kGroupControl, 0x00, 0x00, 0x00};
    ByteWriter w(kProbeLen);
    w.u16(kBroadcastScreenNum).u16(kSourceAddress).u8(kHeaderVersionProbe).u8(0);
    w.u8(0xFE).u8(0x01).u16(next_sequence()).u16(sizeof body).u16(crc16(body, sizeof body));
    w.u8(xor_check(w.data().data(), w.size()));
    w.bytes(body, sizeof body);
    frame_bytes(w.data(), out);
}

void LedTKPacket::pack240(uint8_t, uint8_t, const uint8_t *data, uint16_t dataLen,
                          std::vector<uint8_t> &out) {
    out = pack_240_large(0, 0, data, dataLen);
}

std::vector<uint8_t> LedTKPacket::pack_240_large(uint8_t, uint8_t, const uint8_t *data,
                                                 uint32_t dataLen) {
    // The group and code of a dynamic exchange only recognise the answer; the packet carries
    // them inside its data.
    ByteWriter w(kHeaderLenDynamic + dataLen + 2);
    w.u16(g_screenNum.load(std::memory_order_relaxed)).u16(kSourceAddress);
    w.u8(kHeaderVersionDynamic).u8(0).u16(m_DeviceType).u32(0).u32(dataLen);
    if (dataLen > 0 && data != nullptr) {
        w.bytes(data, dataLen);
    }
    w.u16(crc16(w.data().data(), w.size()));
    std::vector<uint8_t> out;
    frame_bytes(w.data(), out);
    return out;
}

int32_t LedTKPacket::unpack(const uint8_t *frame, uint16_t frameLen, uint8_t group, uint8_t code,
                            uint8_t *out, uint16_t &capacity) {
    // Lengths are signed 16-bit here. A length of 0 or one that turns negative would make the
    // controller's own parser read outside the frame; it is refused as a bad frame.
    const int16_t signedLen = static_cast<int16_t>(frameLen);
    if (frame == nullptr || signedLen <= 0 || frame[0] != kFrameStart ||
        frame[signedLen - 1] != kFrameEnd) {
        return kResultFailed;
    }
    const int16_t room = static_cast<int16_t>(capacity);
    std::vector<uint8_t> work(kWorkAreaLen, 0);
    const std::size_t length = unframe_bytes({frame, frameLen}, work.data());
    capacity = static_cast<uint16_t>(length);

    std::size_t bodyStart = 0;
    switch (work[4]) {
    case kHeaderVersionG5:
    case kHeaderVersionG6: {
        const bool g5 = work[4] == kHeaderVersionG5;
        const std::size_t headerLen = g5 ? kHeaderLenG5 : kHeaderLenG6;
        m_echo = work[5];
        if (!g5) {
            m_capAnswer = work[9];
        }
        if (work[14] != kNoPadMarker && length > headerLen) {
            remove_pad(work.data() + headerLen, length - headerLen, work[15]);
        }
        const std::size_t checkAt = headerLen - 1;
        if (xor_check(work.data(), checkAt) != work[checkAt]) {
            return kResultHeaderCheck;
        }
        // The body length comes from the controller; a length beyond the work area is checked
        // over what the work area holds, and fails.
        const std::size_t bodyLen =
            std::min<std::size_t>(read_u16_le(work, 22), kWorkAreaLen - headerLen);
        if (crc16(work.data() + headerLen, bodyLen) != read_u16_le(work, 24)) {
            return kResultBodyCrc;
        }
        bodyStart = headerLen;
        break;
    }
    case kHeaderVersionDynamic:
        bodyStart = kHeaderLenDynamic;
        break;
    default:
        return kResultUnknownVersion;
    }

    const uint8_t *body = work.data() + bodyStart;
    if (body[1] == group && body[2] == code + 128) {
        const uint16_t dataLen = read_u16_le(work, bodyStart + 7);
        const std::size_t available = kWorkAreaLen - bodyStart - kBodyDataOffset;
        if (room > 0 && dataLen > room) {
            console_printf("return Data Length too long!!! Control Card Return:cmd_header->datalen"
                           " = %d; but membuff len = %d;\n ",
                           dataLen, room);
            std::memcpy(out, body + kBodyDataOffset, static_cast<std::size_t>(room));
            capacity = static_cast<uint16_t>(room);
            return kResultTruncated;
        }
        if (room <= 0) {
            console_printf("nCmdDataLen <= %d \n ", room);
            return kResultFailed;
        }
        std::memcpy(out, body + kBodyDataOffset, std::min<std::size_t>(dataLen, available));
        capacity = dataLen;
        return kResultOk;
    }
    if (body[1] == kGroupAck) {
        if (body[2] == 0) {
            return kResultOk;
        }
        if (body[2] == 1) {
            return read_u16_le(work, bodyStart + 5);
        }
    }
    return kResultUnexpected;
}

int32_t LedTKPacket::unpack_probe(const uint8_t *frame, uint16_t frameLen,
                                  std::vector<uint8_t> &out, uint16_t &outLen) {
    const int16_t signedLen = static_cast<int16_t>(frameLen);
    if (frame == nullptr || signedLen <= 0 || frame[0] != kFrameStart ||
        frame[signedLen - 1] != kFrameEnd) {
        return kResultFailed;
    }
    out.assign(kWorkAreaLen, 0);
    outLen = static_cast<uint16_t>(unframe_bytes({frame, frameLen}, out.data()));
    if (out[4] == kHeaderVersionG5 || out[4] == kHeaderVersionG6) {
        m_echo = out[5];
        return kResultOk;
    }
    return kResultUnknownVersion;
}

} // namespace zel
