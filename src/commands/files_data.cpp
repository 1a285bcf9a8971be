#include "commands/files_data.h"

#include <cstdint>

#include "sdk/bytes.h"
#include "sdk/crc.h"

namespace zel::commands {

std::vector<uint8_t> file_header_data(const uint8_t *name, uint8_t type, uint32_t length,
                                      uint8_t mode, const uint8_t *data) {
    ByteWriter w(kFileHeaderLen);
    w.bytes(name, kFileNameLen).u8(type).u32(length).u8(mode);
    const std::size_t missing = length < kFileCheckLen ? kFileCheckLen - length : 0;
    w.zeros(missing);
    w.bytes(data + (length + missing - kFileCheckLen), kFileCheckLen - missing);
    return w.take();
}

BlockStep next_block(uint32_t sent, uint32_t total, uint32_t blockSize) {
    if (static_cast<int64_t>(total) - (static_cast<int64_t>(sent) + blockSize) > 0) {
        return {sent, blockSize, 0};
    }
    return {sent, total - sent, 1};
}

std::vector<uint8_t> block_data(const uint8_t *name, uint8_t last, uint32_t offset,
                                const uint8_t *bytes, uint32_t length) {
    return ByteWriter(kBlockHeaderLen + length)
        .bytes(name, kFileNameLen)
        .u8(last)
        .u32(offset)
        .bytes(bytes, length)
        .take();
}

std::vector<uint8_t> delete_data(uint16_t count, const uint8_t *names) {
    return ByteWriter(2 + kFileNameLen * count)
        .u16(count)
        .bytes(names, kFileNameLen * count)
        .take();
}

std::vector<uint8_t> conf_delete_data(uint16_t count, const uint8_t *names) {
    std::vector<uint8_t> data = delete_data(count, names);
    data.pop_back();
    return data;
}

void seal_config_block(uint8_t *block, std::size_t length) {
    write_u16_le(block + length - 2, crc16(block, length - 2));
}

} // namespace zel::commands
