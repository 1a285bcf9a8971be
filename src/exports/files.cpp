// Exported entries of the controller file system and the configuration file.
#include "zel_sdk_dual.h"

#include <cstring>

#include "commands/control.h"
#include "commands/dir_blocks.h"
#include "commands/files.h"
#include "commands/files_data.h"
#include "commands/peer_call.h"
#include "sdk/guard.h"

using namespace zel;
using namespace zel::commands;

namespace {

const uint8_t *bytes_of(const char *text) {
    return reinterpret_cast<const uint8_t *>(text);
}

bool write_args_ok(const char *name, uint32_t length, const uint8_t *data) {
    return name != nullptr && (data != nullptr || length == 0);
}

// The record's fields are packed, so they travel through locals.
int32_t list_directory(KOR_command &peer, ZelDirectoryRecord *record) {
    uint16_t count = record->count;
    uint8_t *entries = record->entries;
    const int32_t result = readDirectory(peer, record->kindFilter, count, entries);
    record->count = count;
    record->entries = entries;
    return result;
}

int32_t transfer_status(KOR_command &peer, uint8_t *state, uint32_t *first, uint32_t *second,
                        uint32_t *third) {
    return getTransStatus(peer, *state, *first, *second, *third);
}

int32_t memory_volume(KOR_command &peer, uint32_t *first, uint32_t *second) {
    return getMemoryVolume(peer, *first, *second);
}

int32_t free_dir_block(ZelDirectoryRecord *record) {
    if (record != nullptr) dir_block_free(record->entries);
    return 0;
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_cmd_ofsFormat(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return ofsFormat(p); });
}
ZEL_API int32_t zelDual_cmd_uart_ofsFormat(const char *portName, uint8_t speedIndex) {
    return over_serial(portName, speedIndex, [](KOR_command &p) { return ofsFormat(p); });
}

ZEL_API int32_t zelDual_cmd_ofsDeleteFormatFile(const char *address, uint16_t port, uint16_t count,
                                                const char *names) {
    if (names == nullptr && count != 0) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return deleteFiles(p, FileSpace::Ofs, count, bytes_of(names));
    });
}
ZEL_API int32_t zelDual_cmd_uart_ofsDeleteFormatFile(const char *portName, uint8_t speedIndex,
                                                     uint16_t count, const char *names) {
    if (names == nullptr && count != 0) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return deleteFiles(p, FileSpace::Ofs, count, bytes_of(names));
    });
}

ZEL_API int32_t zelDual_cmd_ofsWriteFile(const char *address, uint16_t port, const char *name,
                                         uint8_t type, uint32_t length, uint8_t mode,
                                         const uint8_t *data) {
    if (!write_args_ok(name, length, data)) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return writeFile(p, FileSpace::Ofs, bytes_of(name), type, length, mode, data);
    });
}
ZEL_API int32_t zelDual_cmd_uart_ofsWriteFile(const char *portName, uint8_t speedIndex,
                                              const char *name, uint8_t type, uint32_t length,
                                              uint8_t mode, const uint8_t *data) {
    if (!write_args_ok(name, length, data)) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return writeFile(p, FileSpace::Ofs, bytes_of(name), type, length, mode, data);
    });
}

ZEL_API int32_t zelDual_cmd_ofsStartReedFile(const char *address, uint16_t port, char *name,
                                             uint32_t /*first*/, uint32_t /*second*/) {
    if (name == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return startReadFile(p, FileSpace::Ofs, reinterpret_cast<uint8_t *>(name), nullptr,
                             nullptr);
    });
}
ZEL_API int32_t zelDual_cmd_uart_ofsStartReedFile(const char *portName, uint8_t speedIndex,
                                                  char *name, uint32_t /*first*/,
                                                  uint32_t /*second*/) {
    if (name == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return startReadFile(p, FileSpace::Ofs, reinterpret_cast<uint8_t *>(name), nullptr,
                             nullptr);
    });
}

ZEL_API int32_t zelDual_cmd_ofsReedFileBlock(const char *address, uint16_t port, const char *name,
                                             uint8_t * /*output*/) {
    if (name == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return readFileBlocks(p, FileSpace::Ofs, bytes_of(name));
    });
}
ZEL_API int32_t zelDual_cmd_uart_ofsReedFileBlock(const char *portName, uint8_t speedIndex,
                                                  const char *name, uint8_t * /*output*/) {
    if (name == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return readFileBlocks(p, FileSpace::Ofs, bytes_of(name));
    });
}

ZEL_API int32_t zelDual_cmd_ofsReedDirBlock(const char *address, uint16_t port,
                                            ZelDirectoryRecord *record) {
    if (record == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return list_directory(p, record); });
}
ZEL_API int32_t zelDual_cmd_uart_ofsReedDirBlock(const char *portName, uint8_t speedIndex,
                                                 ZelDirectoryRecord *record) {
    if (record == nullptr) return -1;
    return over_serial(portName, speedIndex,
                       [=](KOR_command &p) { return list_directory(p, record); });
}

ZEL_API int32_t zelDual_cmd_ofsStartFileTransf(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return startFileTransfer(p); });
}
ZEL_API int32_t zelDual_cmd_uart_ofsStartFileTransf(const char *portName, uint8_t speedIndex) {
    return over_serial(portName, speedIndex, [](KOR_command &p) { return startFileTransfer(p); });
}

ZEL_API int32_t zelDual_cmd_ofsEndFileTransf(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return endFileTransfer(p); });
}
ZEL_API int32_t zelDual_cmd_uart_ofsEndFileTransf(const char *portName, uint8_t speedIndex) {
    return over_serial(portName, speedIndex, [](KOR_command &p) { return endFileTransfer(p); });
}

ZEL_API int32_t zelDual_cmd_confDeleteFormatFile(const char *address, uint16_t port, uint16_t count,
                                                 const char *names) {
    if (names == nullptr && count != 0) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return deleteFiles(p, FileSpace::Conf, count, bytes_of(names));
    });
}
ZEL_API int32_t zelDual_cmd_uart_confDeleteFormatFile(const char *portName, uint8_t speedIndex,
                                                      uint16_t count, const char *names) {
    if (names == nullptr && count != 0) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return deleteFiles(p, FileSpace::Conf, count, bytes_of(names));
    });
}

ZEL_API int32_t zelDual_cmd_confWriteFile(const char *address, uint16_t port, const char *name,
                                          uint8_t type, uint32_t length, uint8_t mode,
                                          const uint8_t *data) {
    if (!write_args_ok(name, length, data)) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return writeFile(p, FileSpace::Conf, bytes_of(name), type, length, mode, data);
    });
}
ZEL_API int32_t zelDual_cmd_uart_confWriteFile(const char *portName, uint8_t speedIndex,
                                               const char *name, uint8_t type, uint32_t length,
                                               uint8_t mode, const uint8_t *data) {
    if (!write_args_ok(name, length, data)) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return writeFile(p, FileSpace::Conf, bytes_of(name), type, length, mode, data);
    });
}

ZEL_API int32_t zelDual_cmd_confStartReedFile(const char *address, uint16_t port, char *name,
                                              uint32_t *first, uint32_t *second) {
    if (name == nullptr || first == nullptr || second == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return startReadFile(p, FileSpace::Conf, reinterpret_cast<uint8_t *>(name), first, second);
    });
}
ZEL_API int32_t zelDual_cmd_uart_confStartReedFile(const char *portName, uint8_t speedIndex,
                                                   char *name, uint32_t *first, uint32_t *second) {
    if (name == nullptr || first == nullptr || second == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return startReadFile(p, FileSpace::Conf, reinterpret_cast<uint8_t *>(name), first, second);
    });
}

ZEL_API int32_t zelDual_cmd_confReedFileBlock(const char *address, uint16_t port, const char *name,
                                              uint8_t * /*output*/) {
    if (name == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return readFileBlocks(p, FileSpace::Conf, bytes_of(name));
    });
}
ZEL_API int32_t zelDual_cmd_uart_confReedFileBlock(const char *portName, uint8_t speedIndex,
                                                   const char *name, uint8_t * /*output*/) {
    if (name == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return readFileBlocks(p, FileSpace::Conf, bytes_of(name));
    });
}

ZEL_API int32_t zelDual_cmd_ofsGetMemoryVolume(const char *address, uint16_t port, uint32_t *first,
                                               uint32_t *second) {
    if (first == nullptr || second == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return memory_volume(p, first, second); });
}
ZEL_API int32_t zelDual_cmd_uart_ofsGetMemoryVolume(const char *portName, uint8_t speedIndex,
                                                    uint32_t *first, uint32_t *second) {
    if (first == nullptr || second == nullptr) return -1;
    return over_serial(portName, speedIndex,
                       [=](KOR_command &p) { return memory_volume(p, first, second); });
}

ZEL_API int32_t zelDual_cmd_ofsGetTransStatus(const char *address, uint16_t port, uint8_t *state,
                                              uint32_t *first, uint32_t *second, uint32_t *third) {
    if (state == nullptr || first == nullptr || second == nullptr || third == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) {
        return transfer_status(p, state, first, second, third);
    });
}
ZEL_API int32_t zelDual_cmd_uart_ofsGetTransStatus(const char *portName, uint8_t speedIndex,
                                                   uint8_t *state, uint32_t *first,
                                                   uint32_t *second, uint32_t *third) {
    if (state == nullptr || first == nullptr || second == nullptr || third == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return transfer_status(p, state, first, second, third);
    });
}

ZEL_API int32_t zelDual_cmd_sendConfigFile(const char *address, uint16_t port, uint8_t *block) {
    if (block == nullptr) return -1;
    return over_tcp(address, port,
                    [=](KOR_command &p) { return sendConfigFile(p, block, kConfigBlockLen); });
}
ZEL_API int32_t zelDual_cmd_sendConfigFile_G6(const char *address, uint16_t port, uint8_t *block) {
    if (block == nullptr) return -1;
    return over_tcp(address, port,
                    [=](KOR_command &p) { return sendConfigFile(p, block, kConfigBlockLenG6); });
}
ZEL_API int32_t zelDual_cmd_uart_sendConfigFile(const char *portName, uint8_t speedIndex,
                                                uint8_t *block) {
    if (block == nullptr) return -1;
    return over_serial(portName, speedIndex,
                       [=](KOR_command &p) { return sendConfigFile(p, block, kConfigBlockLen); });
}

ZEL_API int32_t zelDual_cmd_firmwareActivate(const char *address, uint16_t port,
                                             const uint8_t *four) {
    if (four == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return firmwareActivate(p, four); });
}

ZEL_API int32_t zelDual_cmd_getFileAttr(const ZelDirectoryRecord *record, uint16_t index,
                                        uint8_t *entry) {
    if (record == nullptr || entry == nullptr) return -1;
    if (index >= record->count) return -1;
    const uint8_t *entries = record->entries;
    std::size_t length = 0;
    switch (dir_block_state(entries, length)) {
    case DirBlockState::Freed:
        return -1; // the block went back through a free entry
    case DirBlockState::Live:
        if ((std::size_t{index} + 1) * kDirEntryLen > length) return -1;
        break;
    case DirBlockState::Unknown:
        if (entries == nullptr) return -1;
        break; // a block of the host's own making
    }
    std::memcpy(entry, entries + std::size_t{index} * kDirEntryLen, kDirEntryLen);
    return 0;
}

ZEL_API int32_t zelDual_cmd_ofs_freeDirBlock(ZelDirectoryRecord *record) {
    return free_dir_block(record);
}

ZEL_API int32_t zelDual_cmd_uart_ofsFreeDirBlock(ZelDirectoryRecord *record) {
    return free_dir_block(record);
}

} // extern "C"
