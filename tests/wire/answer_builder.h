// Builds controller answers from the answer layout, independently of the library's packer, so
// that unpack is checked against the format and not against itself.
#pragma once

#include <cstdint>
#include <vector>

namespace zel::test {

// The CRC-16/ARC and the escape rule, written bit by bit from their definitions.
inline uint16_t ref_crc16(const std::vector<uint8_t> &data) {
    uint16_t crc = 0;
    for (const uint8_t b : data) {
        crc ^= b;
        for (int k = 0; k < 8; ++k) crc = (crc & 1) ? static_cast<uint16_t>((crc >> 1) ^ 0xA001)
                                                  : static_cast<uint16_t>(crc >> 1);
    }
    return crc;
}

inline uint8_t ref_table_byte(std::size_t index) {
    uint16_t c = static_cast<uint16_t>(index / 2);
    for (int k = 0; k < 8; ++k) c = (c & 1) ? static_cast<uint16_t>((c >> 1) ^ 0xA001)
                                          : static_cast<uint16_t>(c >> 1);
    return static_cast<uint8_t>((index & 1) ? c >> 8 : c);
}

inline std::vector<uint8_t> ref_frame(const std::vector<uint8_t> &inner) {
    std::vector<uint8_t> out(8, 0xA5);
    for (const uint8_t b : inner) {
        if (b == 0x5A) { out.push_back(0x5B); out.push_back(0x02); }
        else if (b == 0x5B) { out.push_back(0x5B); out.push_back(0x01); }
        else if (b == 0xA5) { out.push_back(0xA6); out.push_back(0x02); }
        else if (b == 0xA6) { out.push_back(0xA6); out.push_back(0x01); }
        else out.push_back(b);
    }
    out.push_back(0x5A);
    return out;
}

struct Answer {
    uint8_t version = 5;
    uint8_t group = 0xA2;
    uint8_t code = 0x81;
    uint16_t errorCode = 0;
    std::vector<uint8_t> data;
    uint16_t deviceType = 0x0051;
    uint8_t echo = 0x33;
    uint8_t capability = 0;
    uint8_t padMarker = 0x96;
    uint8_t padIndex = 0;
    bool breakHeaderCheck = false;
    bool breakCrc = false;

    std::vector<uint8_t> body() const {
        std::vector<uint8_t> b = {0x01, group, code, 0x00, 0x00,
                                  static_cast<uint8_t>(errorCode),
                                  static_cast<uint8_t>(errorCode >> 8),
                                  static_cast<uint8_t>(data.size()),
                                  static_cast<uint8_t>(data.size() >> 8)};
        b.insert(b.end(), data.begin(), data.end());
        return b;
    }

    // The unescaped packet.
    std::vector<uint8_t> inner() const {
        std::vector<uint8_t> b = body();
        if (version == 240) {
            std::vector<uint8_t> p = {0xFE, 0xFF, 0x00, 0x80, 240, 0,
                                      static_cast<uint8_t>(deviceType),
                                      static_cast<uint8_t>(deviceType >> 8), 0, 0, 0, 0,
                                      static_cast<uint8_t>(b.size()),
                                      static_cast<uint8_t>(b.size() >> 8), 0, 0};
            p.insert(p.end(), b.begin(), b.end());
            return p;
        }
        uint16_t crc = ref_crc16(b);
        if (breakCrc) crc ^= 0x0101;
        std::vector<uint8_t> h = {0x00, 0x80, 0xFE, 0xFF, version, echo,
                                  static_cast<uint8_t>(deviceType),
                                  static_cast<uint8_t>(deviceType >> 8), 0x00, capability,
                                  0x02, 0x00, 0x00, 0x84, padMarker, padIndex, 0, 0, 0, 0, 0, 0,
                                  static_cast<uint8_t>(b.size()),
                                  static_cast<uint8_t>(b.size() >> 8),
                                  static_cast<uint8_t>(crc), static_cast<uint8_t>(crc >> 8)};
        if (version == 7) h.push_back(0x00);
        uint8_t x = 0;
        for (const uint8_t v : h) x ^= v;
        h.push_back(breakHeaderCheck ? static_cast<uint8_t>(x ^ 0xFF) : x);
        if (padMarker != 0x96) {
            for (std::size_t i = 0; i < b.size(); ++i) b[i] ^= ref_table_byte(padIndex + i % 112);
        }
        h.insert(h.end(), b.begin(), b.end());
        return h;
    }

    std::vector<uint8_t> frame() const { return ref_frame(inner()); }
};

} // namespace zel::test
