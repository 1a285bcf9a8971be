// Cuts a fuzz input into the pieces a controller sends one after the other: each piece is a
// little-endian 16-bit length and that many bytes (fewer at the end of the input).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zel::fuzz {

inline std::vector<std::vector<uint8_t>> chunks(const uint8_t *data, std::size_t size,
                                                std::size_t maxChunk) {
    std::vector<std::vector<uint8_t>> out;
    std::size_t at = 0;
    while (at + 2 <= size) {
        std::size_t n = static_cast<std::size_t>(data[at]) | static_cast<std::size_t>(data[at + 1]) << 8;
        at += 2;
        if (n > size - at) n = size - at;
        if (n > maxChunk) n = maxChunk;
        out.emplace_back(data + at, data + at + n);
        at += n;
    }
    return out;
}

} // namespace zel::fuzz
