#include "sdk/crc.h"

#include <zlib.h>

namespace zel {
namespace {

constexpr std::array<uint16_t, 256> make_crc16_table() {
    std::array<uint16_t, 256> table{};
    for (uint16_t n = 0; n < 256; ++n) {
        uint16_t c = n;
        for (int k = 0; k < 8; ++k) {
            c = static_cast<uint16_t>((c & 1) ? (c >> 1) ^ 0xA001 : c >> 1);
        }
        table[n] = c;
    }
    return table;
}

constexpr std::array<uint16_t, 256> kCrc16Table = make_crc16_table();
static_assert(kCrc16Table[1] == 0xC0C1 && kCrc16Table[2] == 0xC181 && kCrc16Table[3] == 0x0140);

} // namespace

const std::array<uint16_t, 256> &crc16_table() {
    return kCrc16Table;
}

uint8_t crc16_table_byte(std::size_t index) {
    const uint16_t entry = kCrc16Table[(index / 2) & 0xFF];
    return static_cast<uint8_t>((index & 1) ? entry >> 8 : entry);
}

uint16_t crc16(const uint8_t *data, std::size_t length) {
    uint16_t crc = 0;
    for (std::size_t i = 0; i < length; ++i) {
        crc = static_cast<uint16_t>((crc >> 8) ^ kCrc16Table[(crc ^ data[i]) & 0xFF]);
    }
    return crc;
}

uint32_t crc32_ieee(const uint8_t *data, std::size_t length) {
    uLong crc = ::crc32(0L, Z_NULL, 0);
    // zlib takes 32-bit lengths; feed larger ranges in slices.
    while (length > 0) {
        const uInt slice = length > 0x40000000u ? 0x40000000u : static_cast<uInt>(length);
        crc = ::crc32(crc, data, slice);
        data += slice;
        length -= slice;
    }
    return static_cast<uint32_t>(crc);
}

uint8_t xor_check(const uint8_t *data, std::size_t length) {
    uint8_t x = 0;
    for (std::size_t i = 0; i < length; ++i) {
        x ^= data[i];
    }
    return x;
}

} // namespace zel
