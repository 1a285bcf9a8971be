// Handlers of the controller file system (group 0xA1): both file spaces over one model, in
// the controller's answer formats.
#include <algorithm>

#include "sdk/bytes.h"
#include "sim/protocol/sim_files.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {
namespace {

constexpr uint8_t kGroup = 0xA1;
constexpr std::size_t kLargestListingBlock = 78; // 5 + 78 x 13 bytes fit the host's 1024

FileName name_at(const std::vector<uint8_t> &data, std::size_t offset) {
    FileName name{};
    std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(offset), name.size(), name.begin());
    return name;
}

void write_header(Simulator &sim, uint8_t code, FileSpace space) {
    sim.on(kGroup, code, [space](Simulator &s, const Request &r) {
        if (r.data.size() != 14) return Reply::error(fs_error::kBadLength);
        ByteReader in(r.data);
        const FileName name = name_at(r.data, 0);
        in.skip(4);
        const uint8_t type = in.u8();
        const uint32_t length = in.u32();
        const uint8_t mode = in.u8();
        const uint32_t check = in.u32();
        return Reply::error(files_state(s).fs.begin_write(space, name, type, length, mode, check));
    });
}

void write_block(Simulator &sim, uint8_t code, FileSpace space) {
    sim.on(kGroup, code, [space](Simulator &s, const Request &r) {
        if (r.data.size() < 9) return Reply::error(fs_error::kBadLength);
        const FileName name = name_at(r.data, 0);
        const uint8_t last = r.data[4];
        const uint32_t offset = read_u32_le(r.data, 5);
        // A block that the close-after-blocks fault drops never gets here, so it is not kept.
        return Reply::error(files_state(s).fs.write_block(
            space, name, last, offset, std::span<const uint8_t>(r.data).subspan(9)));
    });
}

void start_read(Simulator &sim, uint8_t code, FileSpace space) {
    sim.on(kGroup, code, [space](Simulator &s, const Request &r) {
        if (r.data.size() != 4) return Reply::error(fs_error::kBadLength);
        const auto file = files_state(s).fs.find(space, name_at(r.data, 0));
        if (!file) return Reply::error(fs_error::kNoSuchFile);
        return Reply::answer(ByteWriter(12)
                                 .bytes(file->name.data(), file->name.size())
                                 .u32(static_cast<uint32_t>(file->bytes.size()))
                                 .u32(file->check)
                                 .take());
    });
}

void read_block(Simulator &sim, uint8_t code, FileSpace space) {
    sim.on(kGroup, code, [space](Simulator &s, const Request &r) {
        if (r.data.size() != 8) return Reply::error(fs_error::kBadLength);
        const uint32_t offset = read_u32_le(r.data, 4);
        const auto block = files_state(s).fs.read_block(space, name_at(r.data, 0), offset);
        if (!block) return Reply::error(fs_error::kNoSuchFile);
        // The finished flag, the block's offset and length, then its bytes.
        return Reply::answer(ByteWriter(9 + block->bytes.size())
                                 .u8(block->last)
                                 .u32(offset)
                                 .u32(static_cast<uint32_t>(block->bytes.size()))
                                 .bytes(block->bytes)
                                 .take());
    });
}

void delete_files(Simulator &sim, uint8_t code, FileSpace space) {
    sim.on(kGroup, code, [space](Simulator &s, const Request &r) {
        // The conf form comes one byte short of its names, so its count may have only its
        // low byte when there is no name at all.
        const std::size_t shortBy = space == FileSpace::Conf ? 1 : 0;
        if (r.data.empty()) return Reply::error(fs_error::kBadLength);
        const uint16_t count =
            static_cast<uint16_t>(r.data[0] | (r.data.size() > 1 ? r.data[1] << 8 : 0));
        if (r.data.size() != 2 + 4 * std::size_t{count} - shortBy) {
            return Reply::error(fs_error::kBadLength);
        }
        const auto names =
            std::span<const uint8_t>(r.data).subspan(std::min<std::size_t>(2, r.data.size()));
        files_state(s).fs.remove(space, names);
        return Reply::ack();
    });
}

} // namespace

FilesState &files_state(Simulator &sim) {
    return sim.module_state<FilesState>();
}

SimFileSystem &file_system(Simulator &sim) {
    return files_state(sim).fs;
}

void register_files_handlers(Simulator &sim) {
    files_state(sim).fs.on_file_landed([&sim](const SimFile &file) {
        sim.notify_file_written(file.space == FileSpace::Ofs ? 0 : 1, file_name_text(file.name),
                                file.bytes);
    });

    sim.on(kGroup, 0x00, [](Simulator &s, const Request &r) {
        if (!r.data.empty()) return Reply::error(fs_error::kBadLength);
        files_state(s).fs.format(FileSpace::Ofs);
        return Reply::ack();
    });
    delete_files(sim, 0x01, FileSpace::Ofs);
    write_header(sim, 0x02, FileSpace::Ofs);
    write_block(sim, 0x03, FileSpace::Ofs);
    start_read(sim, 0x04, FileSpace::Ofs);
    read_block(sim, 0x05, FileSpace::Ofs);

    sim.on(kGroup, 0x06, [](Simulator &s, const Request &r) {
        if (r.data.size() != 2) return Reply::error(fs_error::kBadLength);
        DirectoryListing &listing = files_state(s).listing;
        listing.open = true;
        listing.perBlock = std::clamp<std::size_t>(r.data[1], 1, kLargestListingBlock);
        listing.entries = files_state(s).fs.directory(r.data[0]);
        // The count, padded to the length of a full block of entries: the host keeps the
        // length of this answer as the room for the first block.
        return Reply::answer(ByteWriter()
                                 .u16(static_cast<uint16_t>(listing.entries.size()))
                                 .zeros(3 + kDirEntryLen * listing.perBlock)
                                 .take());
    });
    sim.on(kGroup, 0x07, [](Simulator &s, const Request &r) {
        if (r.data.size() != 2) return Reply::error(fs_error::kBadLength);
        DirectoryListing &listing = files_state(s).listing;
        if (!listing.open) {
            listing.open = true;
            listing.entries = files_state(s).fs.directory(kAllKinds);
        }
        const std::size_t first =
            std::min<std::size_t>(read_u16_le(r.data, 0), listing.entries.size());
        const std::size_t count = std::min(listing.perBlock, listing.entries.size() - first);
        ByteWriter w;
        w.u8(first + count == listing.entries.size() ? 1 : 0)
            .u16(static_cast<uint16_t>(first))
            .u16(static_cast<uint16_t>(count));
        for (std::size_t i = first; i < first + count; ++i)
            w.bytes(listing.entries[i]);
        return Reply::answer(w.take());
    });
    sim.on(kGroup, 0x08, [](Simulator &s, const Request &) {
        files_state(s).fs.start_transfer();
        return Reply::ack();
    });
    sim.on(kGroup, 0x09, [](Simulator &s, const Request &) {
        files_state(s).fs.end_transfer();
        return Reply::ack();
    });

    delete_files(sim, 0x0A, FileSpace::Conf);
    write_header(sim, 0x0B, FileSpace::Conf);
    write_block(sim, 0x0C, FileSpace::Conf);
    start_read(sim, 0x0D, FileSpace::Conf);
    read_block(sim, 0x0E, FileSpace::Conf);

    sim.on(kGroup, 0x12, [](Simulator &s, const Request &) {
        const SimFileSystem &fs = files_state(s).fs;
        return Reply::answer(
            ByteWriter(8).u32(fs.capacity()).u32(fs.capacity() - fs.used()).take());
    });
    sim.on(kGroup, 0x13, [](Simulator &s, const Request &) {
        const TransferStatus status = files_state(s).fs.transfer_status();
        return Reply::answer(ByteWriter(13)
                                 .u8(status.transferring)
                                 .u32(status.filesLanded)
                                 .u32(status.bytesReceived)
                                 .u32(status.fileLength)
                                 .take());
    });
}

} // namespace zel::sim
