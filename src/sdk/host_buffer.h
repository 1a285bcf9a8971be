// Memory that the library hands to the host and takes back through its free entries
// (zelDual_program_freeBuffer, zelDual_program_freeBuffer_G6). Everything handed out there is
// made by host_copy and released by host_free, so that the pairs always match. (Directory
// blocks have a registry of their own: commands/dir_blocks.h.)
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace zel {

// A heap copy of `length` bytes, or null if the allocation failed.
inline uint8_t *host_copy(const uint8_t *data, std::size_t length) {
    auto *block = static_cast<uint8_t *>(std::malloc(length == 0 ? 1 : length));
    if (block != nullptr && length > 0) {
        std::memcpy(block, data, length);
    }
    return block;
}

// Frees a block of host_copy and nulls the caller's pointer; null is skipped.
inline void host_free(uint8_t *&block) {
    if (block != nullptr) {
        std::free(block);
        block = nullptr;
    }
}

} // namespace zel
