#include <gtest/gtest.h>

#include <vector>

#include "commands/files_data.h"
#include "support/hex.h"
#include "wire/answer_builder.h"

namespace zel::commands {
namespace {

using test::hex;

std::vector<BlockStep> plan(uint32_t total, uint32_t blockSize) {
    std::vector<BlockStep> steps;
    for (uint32_t sent = 0; sent < total;) {
        steps.push_back(next_block(sent, total, blockSize));
        sent = steps.back().offset + steps.back().length;
    }
    return steps;
}

TEST(FilesData, BlockPlanEndsWithTheBlockThatReachesTheEnd) {
    const auto two = plan(2048, 1024);
    ASSERT_EQ(two.size(), 2u);
    EXPECT_EQ(two[0].offset, 0u);
    EXPECT_EQ(two[0].length, 1024u);
    EXPECT_EQ(two[0].last, 0);
    EXPECT_EQ(two[1].offset, 1024u);
    EXPECT_EQ(two[1].length, 1024u);
    EXPECT_EQ(two[1].last, 1);

    const auto three = plan(2049, 1024);
    ASSERT_EQ(three.size(), 3u);
    EXPECT_EQ(three[1].last, 0);
    EXPECT_EQ(three[2].offset, 2048u);
    EXPECT_EQ(three[2].length, 1u);
    EXPECT_EQ(three[2].last, 1);

    const auto small = plan(5, 1024);
    ASSERT_EQ(small.size(), 1u);
    EXPECT_EQ(small[0].length, 5u);
    EXPECT_EQ(small[0].last, 1);
}

TEST(FilesData, HeaderCarriesTheLastFourBytesOfTheFile) {
    const std::vector<uint8_t> file = {1, 2, 3, 4, 5, 0x11, 0x22, 0x33, 0x44};
    const uint8_t name[] = {'P', '0', '0', '0'};
    EXPECT_EQ(file_header_data(name, 0, 9, 1, file.data()),
              hex("50303030 00 09000000 01 11223344"));
    // Shorter than four bytes: what would lie in front of the data is sent as zeros.
    EXPECT_EQ(file_header_data(name, 9, 2, 0, file.data()),
              hex("50303030 09 02000000 00 00000102"));
    EXPECT_EQ(file_header_data(name, 0, 0, 1, nullptr), hex("50303030 00 00000000 01 00000000"));
}

TEST(FilesData, BlockAndDeleteLayouts) {
    const uint8_t name[] = {'P', '0', '0', '1'};
    const uint8_t bytes[] = {0xA5, 0x5A};
    EXPECT_EQ(block_data(name, 1, 0x400, bytes, 2), hex("50303031 01 00040000 A55A"));

    const uint8_t names[] = {'P', '0', '0', '0', 'C', '0', '0', '0'};
    EXPECT_EQ(delete_data(2, names), hex("0200 50303030 43303030"));
    EXPECT_EQ(conf_delete_data(2, names), hex("0200 50303030 433030"));
    EXPECT_EQ(conf_delete_data(0, nullptr), hex("00"));
}

TEST(FilesData, ConfigBlockEndsWithTheCrc16OfTheRest) {
    std::vector<uint8_t> block(kConfigBlockLen, 0);
    for (std::size_t i = 0; i < 36; ++i)
        block[i] = static_cast<uint8_t>(i * 7);
    seal_config_block(block.data(), block.size());
    const uint16_t crc = test::ref_crc16({block.begin(), block.begin() + 36});
    EXPECT_EQ(block[36], static_cast<uint8_t>(crc));
    EXPECT_EQ(block[37], static_cast<uint8_t>(crc >> 8));

    std::vector<uint8_t> g6(kConfigBlockLenG6, 0x31);
    seal_config_block(g6.data(), g6.size());
    const uint16_t crcG6 = test::ref_crc16({g6.begin(), g6.begin() + 92});
    EXPECT_EQ(g6[92], static_cast<uint8_t>(crcG6));
    EXPECT_EQ(g6[93], static_cast<uint8_t>(crcG6 >> 8));
}

} // namespace
} // namespace zel::commands
