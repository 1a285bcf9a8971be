#include "commands/files.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "commands/dir_blocks.h"
#include "commands/files_data.h"
#include "sdk/bytes.h"
#include "sdk/console.h"
#include "sdk/globals.h"

namespace zel::commands {
namespace {

uint8_t code_for(FileSpace space, uint8_t ofsCode, uint8_t confCode) {
    return space == FileSpace::Ofs ? ofsCode : confCode;
}

int32_t plain(KOR_command &peer, uint8_t code, const std::vector<uint8_t> &data) {
    // A longer list of names would go out cut to a 16-bit length.
    if (data.size() > kLargestCommandData) return -1;
    return peer.send_cmd(kGroupFiles, code, data.data(), static_cast<uint16_t>(data.size()));
}

// The largest block whose command data (9 header bytes and the block) the request's signed
// 16-bit length can still describe.
constexpr uint32_t kLargestBlock = kLargestCommandData - kBlockHeaderLen;

} // namespace

int32_t ofsFormat(KOR_command &peer) {
    return peer.send_cmd(kGroupFiles, files_code::kOfsFormat, nullptr, 0);
}

int32_t deleteFiles(KOR_command &peer, FileSpace space, uint16_t count, const uint8_t *names) {
    if (space == FileSpace::Ofs)
        return plain(peer, files_code::kOfsDelete, delete_data(count, names));
    return plain(peer, files_code::kConfDelete, conf_delete_data(count, names));
}

int32_t writeFile(KOR_command &peer, FileSpace space, const uint8_t *name, uint8_t type,
                  uint32_t length, uint8_t mode, const uint8_t *data) {
    const bool ofs = space == FileSpace::Ofs;
    int32_t result =
        plain(peer, code_for(space, files_code::kOfsWriteHeader, files_code::kConfWriteHeader),
              file_header_data(name, type, length, mode, data));
    if (ofs) console_printf("g_packetLen ======= %d \n", g_packetLen.load());
    if (result != 0) return result;

    const uint8_t blockCode =
        code_for(space, files_code::kOfsWriteBlock, files_code::kConfWriteBlock);
    for (uint32_t sent = 0; sent < length;) {
        const uint32_t blockSize = ofs ? g_packetLen.load() : kConfBlockLen;
        // A block size of 0 would resend an empty block for ever without moving on.
        if (blockSize == 0) return -1;
        const BlockStep step = next_block(sent, length, blockSize);
        if (step.length > kLargestBlock) {
            result = -1;
        } else {
            result =
                plain(peer, blockCode,
                      block_data(name, step.last, step.offset, data + step.offset, step.length));
        }
        sent = step.offset + step.length;
        if (result != 0) {
            if (ofs) console_printf("dataLen-oldLen ======= %d \n", static_cast<int>(step.length));
            return result;
        }
    }
    return result;
}

int32_t startReadFile(KOR_command &peer, FileSpace space, uint8_t *name, uint32_t *first,
                      uint32_t *second) {
    std::array<uint8_t, kStartReadAnswerLen> answer{};
    uint16_t capacity = kStartReadAnswerLen;
    const int32_t result = peer.send_recv_cmd(
        kGroupFiles, code_for(space, files_code::kOfsStartRead, files_code::kConfStartRead), name,
        kFileNameLen, answer.data(), capacity);
    if (result == 0) {
        std::memcpy(name, answer.data(), kFileNameLen);
        if (first != nullptr) *first = read_u32_le(answer, 4);
        if (second != nullptr) *second = read_u32_le(answer, 8);
    }
    return result;
}

int32_t readFileBlocks(KOR_command &peer, FileSpace space, const uint8_t *name) {
    const std::vector<uint8_t> request = ByteWriter(8).bytes(name, kFileNameLen).u32(0).take();
    uint8_t unused = 0;
    uint16_t capacity = 0;
    const int32_t result = peer.send_recv_cmd(
        kGroupFiles, code_for(space, files_code::kOfsReadBlock, files_code::kConfReadBlock),
        request.data(), static_cast<uint16_t>(request.size()), &unused, capacity);
    if (result != 0) return result;
    // Only an acknowledge gets here. It carries no finished flag, so the block loop could never
    // end: the read stops instead of copying the acknowledge over the host's output for ever.
    return -1;
}

int32_t readDirectory(KOR_command &peer, uint8_t kindFilter, uint16_t &count, uint8_t *&entries) {
    // Room for any capacity that an answer can leave behind: it is not reset between passes.
    std::vector<uint8_t> answer(kFrameBufferLen, 0);
    uint16_t capacity = kDirAnswerCapacity;
    const uint8_t start[] = {kindFilter, kDirBlockRequest};
    int32_t result = peer.send_recv_cmd(kGroupFiles, files_code::kDirStart, start, sizeof start,
                                        answer.data(), capacity);
    if (result != 0) return result;

    const uint16_t announced = read_u16_le(answer, 0);
    count = announced;
    const std::size_t blockLen = std::size_t{announced} * kDirEntryLen;
    entries = dir_block_alloc(blockLen);
    if (entries == nullptr) return -1;
    std::fill(answer.begin(), answer.end(), 0);

    uint16_t received = 0;
    for (;;) {
        const uint8_t next[] = {static_cast<uint8_t>(received),
                                static_cast<uint8_t>(received >> 8)};
        result = peer.send_recv_cmd(kGroupFiles, files_code::kDirBlock, next, sizeof next,
                                    answer.data(), capacity);
        if (result != 0) return result;
        const uint8_t finished = answer[0];
        const uint16_t blockCount = read_u16_le(answer, 3);
        // Entries land at their position; whatever the controller sends beyond the block it
        // announced is dropped.
        const int length = static_cast<int16_t>(capacity) - 5;
        const std::size_t at = std::size_t{received} * kDirEntryLen;
        if (length > 0 && at < blockLen) {
            const std::size_t n =
                std::min<std::size_t>(static_cast<std::size_t>(length), blockLen - at);
            std::memcpy(entries + at, answer.data() + 5, n);
        }
        received = static_cast<uint16_t>(received + blockCount);
        if (finished != 0) break;
        // A block without entries and without the finished flag would repeat the same request
        // for ever.
        if (blockCount == 0) return -1;
    }
    if (received != announced) count = received;
    return result;
}

int32_t startFileTransfer(KOR_command &peer) {
    return peer.send_cmd(kGroupFiles, files_code::kStartTransfer, nullptr, 0);
}

int32_t endFileTransfer(KOR_command &peer) {
    return peer.send_cmd(kGroupFiles, files_code::kEndTransfer, nullptr, 0);
}

int32_t getMemoryVolume(KOR_command &peer, uint32_t &first, uint32_t &second) {
    std::array<uint8_t, kMemoryVolumeLen> answer{};
    uint16_t capacity = kMemoryVolumeLen;
    const int32_t result = peer.send_recv_cmd(kGroupFiles, files_code::kMemoryVolume, nullptr, 0,
                                              answer.data(), capacity);
    if (result == 0) {
        first = read_u32_le(answer, 0);
        second = read_u32_le(answer, 4);
    }
    return result;
}

int32_t getTransStatus(KOR_command &peer, uint8_t &state, uint32_t &first, uint32_t &second,
                       uint32_t &third) {
    std::array<uint8_t, kTransferStatusLen> answer{};
    uint16_t capacity = kTransferStatusLen;
    const int32_t result = peer.send_recv_cmd(kGroupFiles, files_code::kTransferStatus, nullptr, 0,
                                              answer.data(), capacity);
    state = answer[0];
    first = read_u32_le(answer, 1);
    second = read_u32_le(answer, 5);
    third = read_u32_le(answer, 9);
    return result;
}

int32_t sendConfigFile(KOR_command &peer, uint8_t *block, std::size_t length) {
    seal_config_block(block, length);
    return writeFile(peer, FileSpace::Conf, reinterpret_cast<const uint8_t *>(kConfigFileName),
                     kConfigFileType, static_cast<uint32_t>(length), kConfigFileMode, block);
}

} // namespace zel::commands
