#include "commands/dir_blocks.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace zel::commands {
namespace {

// The smallest block made; a listing of up to four entries fits.
constexpr std::size_t kSmallestBlock = 64;

struct Block {
    std::unique_ptr<uint8_t[]> bytes;
    std::size_t capacity = 0;
    std::size_t length = 0;
    bool live = false;
};

// Blocks come in powers of two and are never given back to the allocator: a freed block waits
// for the next listing of its size. Its address stays the library's, so it reads as freed until
// a listing takes it again, and the registry holds no more blocks than the host ever held at
// once in each size.
struct Registry {
    std::mutex mutex;
    std::map<const uint8_t *, Block> blocks;
    std::map<std::size_t, std::vector<uint8_t *>> idle; // by capacity
};

Registry &registry() {
    static Registry instance;
    return instance;
}

} // namespace

uint8_t *dir_block_alloc(std::size_t length) {
    const std::size_t capacity = std::bit_ceil(std::max(length, kSmallestBlock));
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    uint8_t *block = nullptr;
    auto &waiting = r.idle[capacity];
    if (!waiting.empty()) {
        block = waiting.back();
        waiting.pop_back();
    } else {
        std::unique_ptr<uint8_t[]> bytes(new (std::nothrow) uint8_t[capacity]);
        if (bytes == nullptr) return nullptr;
        block = bytes.get();
        r.blocks[block] = Block{std::move(bytes), capacity};
    }
    Block &b = r.blocks[block];
    b.length = length;
    b.live = true;
    std::memset(block, 0, length);
    return block;
}

void dir_block_free(uint8_t *block) {
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    const auto it = r.blocks.find(block);
    if (it == r.blocks.end() || !it->second.live) return;
    it->second.live = false;
    r.idle[it->second.capacity].push_back(block);
}

DirBlockState dir_block_state(const uint8_t *block, std::size_t &length) {
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    const auto it = r.blocks.find(block);
    if (it == r.blocks.end()) return DirBlockState::Unknown;
    if (!it->second.live) return DirBlockState::Freed;
    length = it->second.length;
    return DirBlockState::Live;
}

} // namespace zel::commands
