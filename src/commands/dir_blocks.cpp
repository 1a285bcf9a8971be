#include "commands/dir_blocks.h"

#include <map>
#include <mutex>
#include <set>
#include <vector>

#include "sdk/host_buffer.h"

namespace zel::commands {
namespace {

struct Registry {
    std::mutex mutex;
    std::map<const uint8_t *, std::size_t> live;
    // Addresses freed and not handed out again since; the allocator may reuse them, and then
    // they move back to `live`.
    std::set<const uint8_t *> freed;
};

Registry &registry() {
    static Registry instance;
    return instance;
}

} // namespace

uint8_t *dir_block_alloc(std::size_t length) {
    const std::vector<uint8_t> zeros(length, 0);
    uint8_t *block = host_copy(zeros.data(), length);
    if (block == nullptr) return nullptr;
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    r.freed.erase(block);
    r.live[block] = length;
    return block;
}

void dir_block_free(uint8_t *block) {
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    const auto it = r.live.find(block);
    if (it == r.live.end()) return;
    r.live.erase(it);
    r.freed.insert(block);
    host_free(block);
}

DirBlockState dir_block_state(const uint8_t *block, std::size_t &length) {
    Registry &r = registry();
    std::lock_guard lock(r.mutex);
    const auto it = r.live.find(block);
    if (it != r.live.end()) {
        length = it->second;
        return DirBlockState::Live;
    }
    return r.freed.count(block) != 0 ? DirBlockState::Freed : DirBlockState::Unknown;
}

} // namespace zel::commands
