// The blocks of directory entries that a listing hands to the host. The library keeps every
// block it made, so that a block is freed once however often the host frees it, and so that an
// entry is never read from a block that the host has already freed; a freed block is handed
// out again by a later listing of its size.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::commands {

// A zeroed block of `length` bytes for the host, or null if the allocation failed.
uint8_t *dir_block_alloc(std::size_t length);

// Takes back a block of dir_block_alloc for a later listing; a block taken back before, or one
// the library never made, is left alone.
void dir_block_free(uint8_t *block);

enum class DirBlockState { Live, Freed, Unknown };
// Live blocks also report their length.
DirBlockState dir_block_state(const uint8_t *block, std::size_t &length);

} // namespace zel::commands
