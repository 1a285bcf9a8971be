#include "sdk/crc.h"

#include <zlib.h>

#include <bit>
#include <cstring>

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

// Slicing: table k gives the CRC of a byte followed by k zero bytes, so that the bytes of a
// 16-byte block (the running CRC folded into its first two) are looked up independently and
// their contributions XORed.
constexpr std::size_t kSlices = 16;
using SliceTables = std::array<std::array<uint16_t, 256>, kSlices>;

constexpr SliceTables make_slice_tables() {
    SliceTables tables{};
    tables[0] = kCrc16Table;
    for (std::size_t k = 1; k < kSlices; ++k) {
        for (std::size_t n = 0; n < 256; ++n) {
            const uint16_t prev = tables[k - 1][n];
            tables[k][n] = static_cast<uint16_t>((prev >> 8) ^ kCrc16Table[prev & 0xFF]);
        }
    }
    return tables;
}

constexpr SliceTables kSliceTables = make_slice_tables();

inline uint64_t load_le64(const uint8_t *p) {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// One byte per step from `crc` on.
uint16_t crc16_continue(uint16_t crc, const uint8_t *data, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        crc = static_cast<uint16_t>((crc >> 8) ^ kCrc16Table[(crc ^ data[i]) & 0xFF]);
    }
    return crc;
}

} // namespace

const std::array<uint16_t, 256> &crc16_table() {
    return kCrc16Table;
}

uint8_t crc16_table_byte(std::size_t index) {
    const uint16_t entry = kCrc16Table[(index / 2) & 0xFF];
    return static_cast<uint8_t>((index & 1) ? entry >> 8 : entry);
}

uint16_t crc16(const uint8_t *data, std::size_t length) {
    static_assert(std::endian::native == std::endian::little);
    const auto &t = kSliceTables;
    uint32_t crc = 0;
    for (; length >= kSlices; length -= kSlices, data += kSlices) {
        const uint64_t lo = load_le64(data) ^ crc;
        const uint64_t hi = load_le64(data + 8);
        uint32_t c = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            c ^= t[kSlices - 1 - i][(lo >> (8 * i)) & 0xFF];
            c ^= t[7 - i][(hi >> (8 * i)) & 0xFF];
        }
        crc = c;
    }
    return crc16_continue(static_cast<uint16_t>(crc), data, length);
}

uint16_t crc16_bytewise(const uint8_t *data, std::size_t length) {
    return crc16_continue(0, data, length);
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
