// Files laid out by hand for the simulator's readers.
#pragma once

#include <cstdint>
#include <vector>
#include <zlib.h>

namespace zel::sim {

// Closes a file image with the CRC-32 of everything before it, low byte first.
inline void close_with_crc(std::vector<uint8_t> &file) {
    const auto crc = static_cast<uint32_t>(crc32(0L, file.data(), static_cast<uInt>(file.size())));
    for (int i = 0; i < 4; ++i)
        file.push_back(static_cast<uint8_t>(crc >> (8 * i)));
}

} // namespace zel::sim
