// The three checks of the protocol and the program files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel {

// CRC-16/ARC: reflected polynomial 0xA001, start 0, no final XOR ("123456789" -> 0xBB3D).
// Sixteen bytes per step through sixteen derived tables.
uint16_t crc16(const uint8_t *data, std::size_t length);

// The same CRC one byte per step through the byte table: the plain form that crc16 is checked
// and measured against.
uint16_t crc16_bytewise(const uint8_t *data, std::size_t length);

// CRC-32 of IEEE 802.3, as zlib computes it ("123456789" -> 0xCBF43926). Program files end
// with it; it never travels in a packet header.
uint32_t crc32_ieee(const uint8_t *data, std::size_t length);

// XOR of all bytes: the header check.
uint8_t xor_check(const uint8_t *data, std::size_t length);

// The CRC-16 table, 256 entries; a controller's answer pad is read from it as bytes.
const std::array<uint16_t, 256> &crc16_table();

// The table as 512 bytes, each entry's low byte first.
uint8_t crc16_table_byte(std::size_t index);

} // namespace zel
