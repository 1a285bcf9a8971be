// Command data of the controller file system: the write header, the blocks and their plan,
// the delete lists, the configuration block's check. Pure functions.
#pragma once

#include <cstdint>
#include <vector>

namespace zel::commands {

inline constexpr std::size_t kFileNameLen = 4; // one 32-bit word, no terminator
inline constexpr std::size_t kFileHeaderLen = 14;
inline constexpr std::size_t kBlockHeaderLen = 9;
inline constexpr std::size_t kFileCheckLen = 4; // a program image ends with its CRC-32
inline constexpr std::size_t kDirEntryLen = 13;
inline constexpr uint16_t kConfBlockLen = 1024; // g_packetLen does not reach the conf space

// The configuration file and its two block forms.
inline constexpr char kConfigFileName[] = "C000";
inline constexpr uint8_t kConfigFileType = 1;
inline constexpr uint8_t kConfigFileMode = 1;
inline constexpr std::size_t kConfigBlockLen = 38;
inline constexpr std::size_t kConfigBlockLenG6 = 94;

// The 14 bytes of a write header: name, type, length, mode, and the last four bytes of the
// file as its check. Bytes of the check that would lie in front of the data (files shorter
// than four bytes) are sent as zeros.
std::vector<uint8_t> file_header_data(const uint8_t *name, uint8_t type, uint32_t length,
                                      uint8_t mode, const uint8_t *data);

// One step of the block loop. A block that ends exactly at the file's end is the last one,
// so the last block holds 1 to blockSize bytes. The comparison is signed, as the controller's
// tools make it, so a short tail is never read past.
struct BlockStep {
    uint32_t offset;
    uint32_t length;
    uint8_t last;
};
BlockStep next_block(uint32_t sent, uint32_t total, uint32_t blockSize);

// Name, last-block flag, offset, then the block's bytes.
std::vector<uint8_t> block_data(const uint8_t *name, uint8_t last, uint32_t offset,
                                const uint8_t *bytes, uint32_t length);

// The count and count names. The conf form is one byte short: its length is count x 4 + 1, so
// the last name byte stays behind. Controllers expect exactly that length.
std::vector<uint8_t> delete_data(uint16_t count, const uint8_t *names);
std::vector<uint8_t> conf_delete_data(uint16_t count, const uint8_t *names);

// Stores the CRC-16 of the first `length - 2` bytes at the block's end.
void seal_config_block(uint8_t *block, std::size_t length);

} // namespace zel::commands
