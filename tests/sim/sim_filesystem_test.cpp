#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "sdk/crc.h"
#include "sim/protocol/sim_filesystem.h"

namespace zel::sim {
namespace {

// A program image: `n` bytes and their CRC-32 behind them, little-endian.
std::vector<uint8_t> program_image(std::size_t n) {
    std::vector<uint8_t> image(n);
    std::iota(image.begin(), image.end(), uint8_t{7});
    const uint32_t crc = crc32_ieee(image.data(), image.size());
    for (int i = 0; i < 4; ++i)
        image.push_back(static_cast<uint8_t>(crc >> (8 * i)));
    return image;
}

uint32_t tail(const std::vector<uint8_t> &file) {
    const std::size_t n = file.size();
    return file[n - 4] | (file[n - 3] << 8) | (file[n - 2] << 16) |
           (static_cast<uint32_t>(file[n - 1]) << 24);
}

std::span<const uint8_t> part(const std::vector<uint8_t> &v, std::size_t at, std::size_t n) {
    return std::span<const uint8_t>(v).subspan(at, n);
}

TEST(SimFileSystem, BlocksOutOfOrderOrWithTheWrongFlagAbortTheWrite) {
    SimFileSystem fs;
    const auto image = program_image(2044);
    const FileName name = file_name("P001");
    EXPECT_EQ(fs.write_block(FileSpace::Ofs, name, 0, 0, part(image, 0, 1024)),
              fs_error::kNoWriteOpen);

    struct Case {
        uint8_t last;
        uint32_t offset;
        std::size_t length;
        uint16_t error;
    };
    const Case cases[] = {
        {0, 1024, 1024, fs_error::kBadOffset}, // a gap
        {0, 0, 2049, fs_error::kBadOffset},    // beyond the announced length
        {1, 0, 1024, fs_error::kBadLastFlag},  // flag before the end
        {0, 0, 2048, fs_error::kBadLastFlag},  // the end without the flag
    };
    for (const Case &c : cases) {
        ASSERT_EQ(fs.begin_write(FileSpace::Ofs, name, 0, 2048, 1, tail(image)), 0);
        std::vector<uint8_t> bytes(c.length, 0);
        EXPECT_EQ(fs.write_block(FileSpace::Ofs, name, c.last, c.offset, bytes), c.error)
            << c.offset << " " << c.length;
        // The write is gone: the host must start again with a header.
        EXPECT_EQ(fs.write_block(FileSpace::Ofs, name, 1, 0, image), fs_error::kNoWriteOpen);
    }
    EXPECT_TRUE(fs.files(FileSpace::Ofs).empty());
}

TEST(SimFileSystem, ChecksTheHeadersFourBytesAgainstTheFile) {
    SimFileSystem fs;
    const FileName name = file_name("P002");
    auto image = program_image(60);
    // Program space: the header's value must be the CRC-32 of all but the last four bytes.
    image[0] ^= 1;
    ASSERT_EQ(fs.begin_write(FileSpace::Ofs, name, 0, 64, 1, tail(image)), 0);
    EXPECT_EQ(fs.write_block(FileSpace::Ofs, name, 1, 0, image), fs_error::kBadCheck);
    EXPECT_FALSE(fs.find(FileSpace::Ofs, name).has_value());

    // Configuration space: any content, as long as the header carried its last four bytes.
    const std::vector<uint8_t> conf = {1, 2, 3, 4, 5, 6};
    const FileName c000 = file_name("C000");
    ASSERT_EQ(fs.begin_write(FileSpace::Conf, c000, 1, 6, 1, 0x06050403), 0);
    EXPECT_EQ(fs.write_block(FileSpace::Conf, c000, 1, 0, conf), 0);
    ASSERT_EQ(fs.begin_write(FileSpace::Conf, c000, 1, 6, 1, 0x06050404), 0);
    EXPECT_EQ(fs.write_block(FileSpace::Conf, c000, 1, 0, conf), fs_error::kBadCheck);
    // Shorter than four bytes: zeros stand in front.
    ASSERT_EQ(fs.begin_write(FileSpace::Conf, c000, 1, 2, 1, 0x02010000), 0);
    EXPECT_EQ(fs.write_block(FileSpace::Conf, c000, 1, 0, part(conf, 0, 2)), 0);
    EXPECT_EQ(fs.find(FileSpace::Conf, c000)->bytes, (std::vector<uint8_t>{1, 2}));
}

TEST(SimFileSystem, OverwriteSpaceAndEmptyFiles) {
    SimFileSystem fs(100);
    const FileName name = file_name("P003");
    const auto image = program_image(56);
    ASSERT_EQ(fs.begin_write(FileSpace::Ofs, name, 0, 60, 0, tail(image)), 0);
    ASSERT_EQ(fs.write_block(FileSpace::Ofs, name, 1, 0, image), 0);
    EXPECT_EQ(fs.begin_write(FileSpace::Ofs, name, 0, 60, 0, tail(image)), fs_error::kFileExists);
    // Replacing the file frees its own room first; a second file of 60 does not fit.
    EXPECT_EQ(fs.begin_write(FileSpace::Ofs, name, 0, 100, 1, 0), 0);
    EXPECT_EQ(fs.begin_write(FileSpace::Ofs, file_name("P004"), 0, 41, 1, 0), fs_error::kNoSpace);

    int landed = 0;
    fs.on_file_landed([&](const SimFile &f) {
        ++landed;
        EXPECT_TRUE(f.bytes.empty());
    });
    EXPECT_EQ(fs.begin_write(FileSpace::Conf, file_name("C001"), 1, 0, 1, 0), 0);
    EXPECT_EQ(landed, 1);
    EXPECT_TRUE(fs.find(FileSpace::Conf, file_name("C001")).has_value());
}

TEST(SimFileSystem, ReadingDeletingByShortNamesAndFormat) {
    SimFileSystem fs;
    const auto image = program_image(1500);
    for (const char *n : {"P000", "P001", "D000"}) {
        ASSERT_EQ(fs.begin_write(FileSpace::Ofs, file_name(n), 0, 1504, 1, tail(image)), 0);
        ASSERT_EQ(fs.write_block(FileSpace::Ofs, file_name(n), 1, 0, image), 0);
    }
    ASSERT_EQ(fs.begin_write(FileSpace::Conf, file_name("C000"), 1, 0, 1, 0), 0);

    const auto first = fs.read_block(FileSpace::Ofs, file_name("P000"), 0);
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->last, 0);
    EXPECT_EQ(first->bytes, std::vector<uint8_t>(image.begin(), image.begin() + 1024));
    const auto second = fs.read_block(FileSpace::Ofs, file_name("P000"), 1024);
    EXPECT_EQ(second->last, 1);
    EXPECT_EQ(second->bytes.size(), 480u);
    EXPECT_FALSE(fs.read_block(FileSpace::Ofs, file_name("P000"), 1505).has_value());
    EXPECT_FALSE(fs.read_block(FileSpace::Conf, file_name("P000"), 0).has_value());

    // A name cut short matches by the bytes that came.
    const uint8_t names[] = {'P', '0', '0', '1', 'D', '0', '0'};
    EXPECT_EQ(fs.remove(FileSpace::Ofs, names), 2u);
    EXPECT_EQ(fs.files(FileSpace::Ofs).size(), 1u);

    fs.format(FileSpace::Ofs);
    EXPECT_TRUE(fs.files(FileSpace::Ofs).empty());
    EXPECT_EQ(fs.files(FileSpace::Conf).size(), 1u);
}

} // namespace
} // namespace zel::sim
