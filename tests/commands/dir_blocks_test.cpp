#include <gtest/gtest.h>

#include <random>
#include <set>

#include "commands/dir_blocks.h"

namespace zel::commands {
namespace {

constexpr std::size_t kEntry = 13;

TEST(DirBlocks, AFreedBlockReadsAsFreedUntilAListingOfItsSizeTakesItZeroed) {
    std::size_t length = 0;
    uint8_t *forty = dir_block_alloc(40 * kEntry);
    ASSERT_NE(forty, nullptr);
    ASSERT_EQ(dir_block_state(forty, length), DirBlockState::Live);
    EXPECT_EQ(length, 40 * kEntry);
    std::fill_n(forty, 40 * kEntry, 0xEE);

    dir_block_free(forty);
    dir_block_free(forty); // a second free is ignored: the block is not queued twice
    EXPECT_EQ(dir_block_state(forty, length), DirBlockState::Freed);

    uint8_t *other = dir_block_alloc(7 * kEntry); // another size: another block
    EXPECT_NE(other, forty);
    EXPECT_EQ(dir_block_state(forty, length), DirBlockState::Freed);

    uint8_t *fortyFive = dir_block_alloc(45 * kEntry);
    uint8_t *fifty = dir_block_alloc(50 * kEntry);
    EXPECT_EQ(fortyFive, forty) << "the freed block of the same size is taken again";
    EXPECT_NE(fifty, forty) << "once only";
    ASSERT_EQ(dir_block_state(fortyFive, length), DirBlockState::Live);
    EXPECT_EQ(length, 45 * kEntry);
    EXPECT_EQ(std::count(fortyFive, fortyFive + 45 * kEntry, 0), 45 * kEntry);

    const uint8_t own[kEntry] = {};
    EXPECT_EQ(dir_block_state(own, length), DirBlockState::Unknown);
    for (uint8_t *b : {other, fortyFive, fifty})
        dir_block_free(b);
}

// A host that lists for days, one listing at a time, of whatever size: the library keeps no
// more blocks than there are sizes, however many listings it made.
TEST(DirBlocks, ListingsOneAtATimeKeepOneBlockPerSize) {
    std::mt19937 rng(3);
    std::uniform_int_distribution<std::size_t> count(0, 65535);
    std::set<const uint8_t *> seen;
    for (int i = 0; i < 5000; ++i) {
        uint8_t *b = dir_block_alloc(count(rng) * kEntry);
        ASSERT_NE(b, nullptr);
        seen.insert(b);
        dir_block_free(b);
    }
    EXPECT_LE(seen.size(), 15u) << "64 bytes to 1 MiB";
}

} // namespace
} // namespace zel::commands
