// The simulated controller's file system: the ordinary space (programs) and the configuration
// space, files written by a header and blocks, read back in blocks, listed in directory
// blocks. Thread-safe: connections and tests may touch it at once.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

enum class FileSpace : uint8_t { Ofs, Conf };

using FileName = std::array<uint8_t, 4>;
FileName file_name(const char *text); // the first four characters
std::string file_name_text(const FileName &name);

struct SimFile {
    FileSpace space = FileSpace::Ofs;
    FileName name{};
    uint8_t type = 0;
    uint8_t mode = 0;
    uint32_t check = 0; // the four bytes the write header carried
    std::vector<uint8_t> bytes;
};

// Error codes that the simulated controller puts into an acknowledge of code 1. They are the
// simulator's own: the real codes are the controller's affair.
namespace fs_error {
inline constexpr uint16_t kNoWriteOpen = 0x31; // a block for a file without a header
inline constexpr uint16_t kBadOffset = 0x32;   // the block does not follow the last one
inline constexpr uint16_t kBadLastFlag = 0x33; // flag and end of file disagree
inline constexpr uint16_t kBadCheck = 0x34;    // the file does not match the header's check
inline constexpr uint16_t kNoSuchFile = 0x35;
inline constexpr uint16_t kNoSpace = 0x36;
inline constexpr uint16_t kFileExists = 0x37; // a header without overwrite for an existing file
inline constexpr uint16_t kBadLength = 0x38;  // command data of the wrong length
} // namespace fs_error

inline constexpr std::size_t kDirEntryLen = 13;
inline constexpr std::size_t kReadBlockLen = 1024;
inline constexpr uint8_t kAllKinds = 0xFF; // directory filter that lists every file

// What the transfer-status command reports.
struct TransferStatus {
    uint8_t transferring = 0;   // 1 between start-transfer and end-transfer
    uint32_t filesLanded = 0;   // whole files since the last start-transfer
    uint32_t bytesReceived = 0; // of the file being written, or of the last one
    uint32_t fileLength = 0;    // announced length of that file
};

class SimFileSystem {
  public:
    using LandedHook = std::function<void(const SimFile &)>;

    explicit SimFileSystem(uint32_t capacity = 8u * 1024 * 1024);

    // Write header: name, type, announced length, mode (1 overwrites), check. 0 or an error.
    uint16_t begin_write(FileSpace space, const FileName &name, uint8_t type, uint32_t length,
                         uint8_t mode, uint32_t check);
    // One block at `offset`; the block that ends the file must carry the last flag. When the
    // file is whole its check is verified, it replaces any file of that name and the landed
    // hooks run. 0 or an error.
    uint16_t write_block(FileSpace space, const FileName &name, uint8_t last, uint32_t offset,
                         std::span<const uint8_t> bytes);

    void format(FileSpace space);
    // Deletes the named files; a name of fewer than four bytes matches by its prefix. Names
    // that are not there are passed over. Returns how many files went.
    std::size_t remove(FileSpace space, std::span<const uint8_t> names);

    std::optional<SimFile> find(FileSpace space, const FileName &name) const;
    std::vector<SimFile> files(FileSpace space) const;

    // Up to kReadBlockLen bytes from `offset`; `last` is 1 when they reach the file's end.
    struct ReadBlock {
        uint8_t last = 0;
        std::vector<uint8_t> bytes;
    };
    std::optional<ReadBlock> read_block(FileSpace space, const FileName &name,
                                        uint32_t offset) const;

    // 13-byte entries of the ordinary space: name, type, u32 length, u32 check.
    std::vector<std::array<uint8_t, kDirEntryLen>> directory(uint8_t kindFilter) const;

    uint32_t capacity() const;
    void set_capacity(uint32_t capacity);
    uint32_t used() const;

    void start_transfer();
    void end_transfer();
    TransferStatus transfer_status() const;

    // Runs after every whole file, outside the file system's lock.
    void on_file_landed(LandedHook hook);

  private:
    struct Pending {
        SimFile file;
        uint32_t length = 0;
    };
    using Key = std::pair<FileSpace, FileName>;

    uint32_t used_locked() const;
    static bool check_matches(const SimFile &file);

    uint32_t m_capacity;
    mutable std::mutex m_mutex;
    std::map<Key, SimFile> m_files;
    std::map<Key, Pending> m_pending;
    TransferStatus m_status;
    std::vector<LandedHook> m_hooks;
};

} // namespace zel::sim
