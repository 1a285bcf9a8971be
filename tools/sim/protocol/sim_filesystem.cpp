#include "sim/protocol/sim_filesystem.h"

#include <algorithm>
#include <cstring>

#include "sdk/bytes.h"
#include "sdk/crc.h"

namespace zel::sim {

FileName file_name(const char *text) {
    FileName name{};
    std::memcpy(name.data(), text, std::min<std::size_t>(std::strlen(text), name.size()));
    return name;
}

std::string file_name_text(const FileName &name) {
    return std::string(reinterpret_cast<const char *>(name.data()), name.size());
}

SimFileSystem::SimFileSystem(uint32_t capacity) : m_capacity(capacity) {}

void SimFileSystem::set_capacity(uint32_t capacity) {
    std::lock_guard lock(m_mutex);
    m_capacity = capacity;
}

uint32_t SimFileSystem::capacity() const {
    std::lock_guard lock(m_mutex);
    return m_capacity;
}

uint16_t SimFileSystem::begin_write(FileSpace space, const FileName &name, uint8_t type,
                                    uint32_t length, uint8_t mode, uint32_t check) {
    SimFile landed;
    std::vector<LandedHook> hooks;
    {
        std::lock_guard lock(m_mutex);
        const Key key{space, name};
        const auto existing = m_files.find(key);
        if (existing != m_files.end() && mode != 1) return fs_error::kFileExists;
        const uint32_t replaced =
            existing == m_files.end() ? 0 : static_cast<uint32_t>(existing->second.bytes.size());
        if (length > m_capacity - (used_locked() - replaced)) return fs_error::kNoSpace;

        m_status.bytesReceived = 0;
        m_status.fileLength = length;
        Pending pending;
        pending.file = SimFile{space, name, type, mode, check, {}};
        pending.length = length;
        if (length > 0) {
            m_pending[key] = std::move(pending);
            return 0;
        }
        // A file of length 0 has no blocks: the header alone makes it.
        m_pending.erase(key);
        m_files[key] = pending.file;
        ++m_status.filesLanded;
        landed = pending.file;
        hooks = m_hooks;
    }
    for (const auto &hook : hooks)
        hook(landed);
    return 0;
}

uint16_t SimFileSystem::write_block(FileSpace space, const FileName &name, uint8_t last,
                                    uint32_t offset, std::span<const uint8_t> bytes) {
    SimFile landed;
    std::vector<LandedHook> hooks;
    {
        std::lock_guard lock(m_mutex);
        const Key key{space, name};
        const auto it = m_pending.find(key);
        if (it == m_pending.end()) return fs_error::kNoWriteOpen;
        Pending &pending = it->second;
        std::vector<uint8_t> &data = pending.file.bytes;
        if (offset != data.size() || bytes.size() > pending.length - data.size()) {
            m_pending.erase(it);
            return fs_error::kBadOffset;
        }
        const bool reachesEnd = data.size() + bytes.size() == pending.length;
        if ((last != 0) != reachesEnd) {
            m_pending.erase(it);
            return fs_error::kBadLastFlag;
        }
        data.insert(data.end(), bytes.begin(), bytes.end());
        m_status.bytesReceived = static_cast<uint32_t>(data.size());
        if (!reachesEnd) return 0;

        SimFile file = std::move(pending.file);
        m_pending.erase(it);
        if (!check_matches(file)) return fs_error::kBadCheck;
        m_files[key] = file;
        ++m_status.filesLanded;
        landed = std::move(file);
        hooks = m_hooks;
    }
    for (const auto &hook : hooks)
        hook(landed);
    return 0;
}

bool SimFileSystem::check_matches(const SimFile &file) {
    // The header carries the file's last four bytes; a shorter file has zeros in front.
    std::array<uint8_t, 4> tail{};
    const std::size_t n = std::min<std::size_t>(file.bytes.size(), tail.size());
    std::copy(file.bytes.end() - static_cast<std::ptrdiff_t>(n), file.bytes.end(),
              tail.end() - static_cast<std::ptrdiff_t>(n));
    if (read_u32_le(tail, 0) != file.check) return false;
    if (file.space == FileSpace::Conf) return true;
    // Program files end with the CRC-32 of everything in front of it.
    return file.bytes.size() >= 4 &&
           crc32_ieee(file.bytes.data(), file.bytes.size() - 4) == file.check;
}

void SimFileSystem::format(FileSpace space) {
    std::lock_guard lock(m_mutex);
    std::erase_if(m_files, [space](const auto &entry) { return entry.first.first == space; });
    std::erase_if(m_pending, [space](const auto &entry) { return entry.first.first == space; });
}

std::size_t SimFileSystem::remove(FileSpace space, std::span<const uint8_t> names) {
    std::lock_guard lock(m_mutex);
    std::size_t removed = 0;
    for (std::size_t at = 0; at < names.size(); at += 4) {
        const auto name = names.subspan(at, std::min<std::size_t>(4, names.size() - at));
        removed += std::erase_if(m_files, [&](const auto &entry) {
            return entry.first.first == space &&
                   std::equal(name.begin(), name.end(), entry.first.second.begin());
        });
    }
    return removed;
}

std::optional<SimFile> SimFileSystem::find(FileSpace space, const FileName &name) const {
    std::lock_guard lock(m_mutex);
    const auto it = m_files.find({space, name});
    if (it == m_files.end()) return std::nullopt;
    return it->second;
}

std::vector<SimFile> SimFileSystem::files(FileSpace space) const {
    std::lock_guard lock(m_mutex);
    std::vector<SimFile> out;
    for (const auto &[key, file] : m_files) {
        if (key.first == space) out.push_back(file);
    }
    return out;
}

std::optional<SimFileSystem::ReadBlock>
SimFileSystem::read_block(FileSpace space, const FileName &name, uint32_t offset) const {
    std::lock_guard lock(m_mutex);
    const auto it = m_files.find({space, name});
    if (it == m_files.end() || offset > it->second.bytes.size()) return std::nullopt;
    const std::vector<uint8_t> &data = it->second.bytes;
    const std::size_t length = std::min<std::size_t>(kReadBlockLen, data.size() - offset);
    ReadBlock block;
    block.last = offset + length == data.size() ? 1 : 0;
    block.bytes.assign(data.begin() + offset,
                       data.begin() + static_cast<std::ptrdiff_t>(offset + length));
    return block;
}

std::vector<std::array<uint8_t, kDirEntryLen>> SimFileSystem::directory(uint8_t kindFilter) const {
    std::lock_guard lock(m_mutex);
    std::vector<std::array<uint8_t, kDirEntryLen>> out;
    for (const auto &[key, file] : m_files) {
        if (key.first != FileSpace::Ofs || (kindFilter != kAllKinds && file.type != kindFilter)) {
            continue;
        }
        ByteWriter w(kDirEntryLen);
        w.bytes(file.name.data(), file.name.size())
            .u8(file.type)
            .u32(static_cast<uint32_t>(file.bytes.size()))
            .u32(file.check);
        std::array<uint8_t, kDirEntryLen> entry{};
        std::copy(w.data().begin(), w.data().end(), entry.begin());
        out.push_back(entry);
    }
    return out;
}

uint32_t SimFileSystem::used_locked() const {
    uint64_t total = 0;
    for (const auto &entry : m_files)
        total += entry.second.bytes.size();
    return static_cast<uint32_t>(std::min<uint64_t>(total, m_capacity));
}

uint32_t SimFileSystem::used() const {
    std::lock_guard lock(m_mutex);
    return used_locked();
}

void SimFileSystem::start_transfer() {
    std::lock_guard lock(m_mutex);
    m_status.transferring = 1;
    m_status.filesLanded = 0;
}

void SimFileSystem::end_transfer() {
    std::lock_guard lock(m_mutex);
    m_status.transferring = 0;
}

TransferStatus SimFileSystem::transfer_status() const {
    std::lock_guard lock(m_mutex);
    return m_status;
}

void SimFileSystem::on_file_landed(LandedHook hook) {
    std::lock_guard lock(m_mutex);
    m_hooks.push_back(std::move(hook));
}

} // namespace zel::sim
