// Command bodies of the controller file system (group 0xA1), for both file spaces: `ofs`, the
// ordinary space for programs, and `conf`, the configuration space. Each runs on a peer that
// the caller has initialised.
#pragma once

#include <cstdint>

#include "wire/kor_command.h"

namespace zel::commands {

enum class FileSpace { Ofs, Conf };

namespace files_code {
inline constexpr uint8_t kOfsFormat = 0x00;
inline constexpr uint8_t kOfsDelete = 0x01;
inline constexpr uint8_t kOfsWriteHeader = 0x02;
inline constexpr uint8_t kOfsWriteBlock = 0x03;
inline constexpr uint8_t kOfsStartRead = 0x04;
inline constexpr uint8_t kOfsReadBlock = 0x05;
inline constexpr uint8_t kDirStart = 0x06;
inline constexpr uint8_t kDirBlock = 0x07;
inline constexpr uint8_t kStartTransfer = 0x08;
inline constexpr uint8_t kEndTransfer = 0x09;
inline constexpr uint8_t kConfDelete = 0x0A;
inline constexpr uint8_t kConfWriteHeader = 0x0B;
inline constexpr uint8_t kConfWriteBlock = 0x0C;
inline constexpr uint8_t kConfStartRead = 0x0D;
inline constexpr uint8_t kConfReadBlock = 0x0E;
inline constexpr uint8_t kMemoryVolume = 0x12;
inline constexpr uint8_t kTransferStatus = 0x13;
} // namespace files_code

inline constexpr uint8_t kDirBlockRequest = 0x20; // second byte of every listing request
inline constexpr uint16_t kDirAnswerCapacity = 1024;
inline constexpr uint16_t kStartReadAnswerLen = 12;
inline constexpr uint16_t kMemoryVolumeLen = 8;
inline constexpr uint16_t kTransferStatusLen = 13;

int32_t ofsFormat(KOR_command &peer);
int32_t deleteFiles(KOR_command &peer, FileSpace space, uint16_t count, const uint8_t *names);

// Sends the header, then the file in blocks (g_packetLen bytes for ofs, read again for every
// block; 1024 for conf), one exchange per block. The result is that of the last command.
int32_t writeFile(KOR_command &peer, FileSpace space, const uint8_t *name, uint8_t type,
                  uint32_t length, uint8_t mode, const uint8_t *data);

// Asks the controller to open a file for reading. On success the answer's first word goes over
// the name, and the next two go to `first` and `second` where given (ofs gives neither).
int32_t startReadFile(KOR_command &peer, FileSpace space, uint8_t *name, uint32_t *first,
                      uint32_t *second);

// Reads a file in blocks. The request passes an answer capacity of 0, so a controller's data
// answer ends the read with -1 ("nCmdDataLen <= 0"); `output` is never written.
int32_t readFileBlocks(KOR_command &peer, FileSpace space, const uint8_t *name);

// Lists the ordinary space. `count` and `entries` (13 bytes per entry, a block that the host
// frees through the directory-block entries) are set as the listing goes.
int32_t readDirectory(KOR_command &peer, uint8_t kindFilter, uint16_t &count, uint8_t *&entries);

int32_t startFileTransfer(KOR_command &peer);
int32_t endFileTransfer(KOR_command &peer);

// Both outputs are written only on result 0.
int32_t getMemoryVolume(KOR_command &peer, uint32_t &first, uint32_t &second);
// The four outputs are written whatever the result (zeros when nothing came).
int32_t getTransStatus(KOR_command &peer, uint8_t &state, uint32_t &first, uint32_t &second,
                       uint32_t &third);

// Closes the block with its CRC-16 (over all but its last two bytes) and writes it as the
// configuration file "C000", type 1, mode 1.
int32_t sendConfigFile(KOR_command &peer, uint8_t *block, std::size_t length);

} // namespace zel::commands
