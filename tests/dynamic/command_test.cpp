// The bytes of the dynamic-area commands, from the numbers of the protocol: G5 add and delete,
// the G6 area blocks in both layouts, and the independent sound commands.
#include <gtest/gtest.h>

#include "dynamic/command_g5.h"
#include "dynamic/command_g6.h"
#include "sdk/bytes.h"
#include "support/capture.h"
#include "support/hex.h"

namespace zel::dynamic {
namespace {

using test::hex;

uint32_t u32_at(const std::vector<uint8_t> &b, std::size_t at) {
    return read_u32_le(b, at);
}
uint16_t u16_at(const std::vector<uint8_t> &b, std::size_t at) {
    return read_u16_le(b, at);
}

RenderedPages pages_of(std::vector<std::size_t> sizes, uint8_t effect, uint16_t lastWidth) {
    RenderedPages r;
    r.effects.displayEffect = effect;
    uint8_t fill = 0xA1;
    for (std::size_t n : sizes)
        r.pages.emplace_back(n, fill++);
    r.lastPageWidth = lastWidth;
    return r;
}

TEST(DynamicCommandG5, OnePageOfHundredBytesMakesTheWholeLayout) {
    AddHeadG5 head;
    head.rect = {8, 4, 64, 32};
    const RenderedPages one[] = {pages_of({100}, 1, 20)};
    const auto cmd = build_add_g5(head, one);
    ASSERT_EQ(cmd.size(), 150u);
    EXPECT_EQ(u32_at(cmd, 5), 141u); // 24 + 17 + 100
    // head, dataLength, head bytes 0 0, word 5, list flag 1, count 0, play byte, reserved,
    // kind 16, the rectangle, frame flag 0, one page
    EXPECT_EQ(std::vector<uint8_t>(cmd.begin(), cmd.begin() + 33),
              hex("01 A7 00 0000 8D000000 00 00 0500 01 0000 00 00000000 10"
                  "0800 0400 4000 2000 00 0100"));
    // pageBytes 113, the defaults 0 1 1 1 300 1, the width of the only page: min(64, 20)
    EXPECT_EQ(std::vector<uint8_t>(cmd.begin() + 33, cmd.begin() + 50),
              hex("71000000 00 01 01 01 2C01 01 1400 00000000"));
    EXPECT_EQ(cmd[50], 0xA1);
}

TEST(DynamicCommandG5, ListWordsOnlyWithFlagZeroAndTheFrameNeverGoesOut) {
    AddHeadG5 head;
    head.listCount = 2;
    head.listWords = {0x1234, 0x5678};
    head.frameFlag = 1;
    head.frameBytes = {9, 9, 9, 9};
    const RenderedPages none[] = {pages_of({}, 1, 0)};
    const auto withFlag1 = build_add_g5(head, none);
    head.listFlag = 0;
    const auto withFlag0 = build_add_g5(head, none);
    ASSERT_EQ(withFlag1.size() + 4, withFlag0.size());
    EXPECT_EQ(u32_at(withFlag1, 5), 24u);
    EXPECT_EQ(u32_at(withFlag0, 5), 28u);
    EXPECT_EQ(u16_at(withFlag1, 14), 2u); // the count is written in both
    EXPECT_EQ(std::vector<uint8_t>(withFlag0.begin() + 16, withFlag0.begin() + 20),
              hex("3412 7856"));
    EXPECT_EQ(withFlag1[withFlag1.size() - 3], 0); // frame flag 1 on the wire as 0
    EXPECT_EQ(withFlag0[withFlag0.size() - 3], 0);

    head.listWords.clear();
    head.listMissing = true; // a count without its words abandons the command
    EXPECT_TRUE(build_add_g5(head, none).empty());
}

TEST(DynamicCommandG5, ReversedEffectWritesTheLastPageFirstAndShortensTheFirst) {
    AddHeadG5 head; // width 64
    const RenderedPages three[] = {pages_of({3, 4, 5}, 0x26, 10)};
    const auto cmd = build_add_g5(head, three);
    std::size_t at = 33;
    const uint8_t expectedFill[] = {0xA3, 0xA2, 0xA1};
    const uint16_t expectedWidth[] = {64, 64, 10};
    const uint32_t expectedBytes[] = {18, 17, 16};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(u32_at(cmd, at), expectedBytes[i]) << i;
        EXPECT_EQ(cmd[at + 5], 0x26);
        EXPECT_EQ(u16_at(cmd, at + 11), expectedWidth[i]) << i;
        EXPECT_EQ(cmd[at + 17], expectedFill[i]) << i;
        at += 17 + expectedBytes[i] - 13;
    }
    EXPECT_EQ(at, cmd.size());

    // Forward, with two contents: each content's last page takes its own width.
    const RenderedPages two[] = {pages_of({1, 1}, 1, 100), pages_of({1}, 4, 7)};
    const auto fwd = build_add_g5(head, two);
    EXPECT_EQ(u16_at(fwd, 31), 3u); // pageCount
    EXPECT_EQ(u16_at(fwd, 33 + 11), 64u);
    EXPECT_EQ(u16_at(fwd, 33 + 18 + 11), 64u); // min(64, 100)
    EXPECT_EQ(u16_at(fwd, 33 + 36 + 11), 7u);
}

// Deleting one area, all of them, or a list reaches the simulator in the integration test.
TEST(DynamicCommandG5, DeleteListWritesItsNumbersOnlyWhenTheCountAgrees) {
    const uint8_t numbers[] = {1, 2, 3};
    EXPECT_EQ(build_delete(3, numbers), hex("01 A7 01 0000 03 010203"));
    EXPECT_EQ(build_delete(4, numbers), hex("01 A7 01 0000 04")); // disagreeing count
}

PageDisplayRecord_G6 header_g6(uint8_t effect) {
    PageDisplayRecord_G6 h;
    h.pageByte0 = 0;
    h.displayEffect = effect;
    h.pageByte2 = 2;
    h.pageByte3 = 3;
    h.pageWord4 = 0x0405;
    h.pageByte6 = 6;
    h.pageWidth = 64;
    h.pageByte10 = 0xEE; // never reaches the wire
    return h;
}

TEST(DynamicCommandG6, OneAreaOfTwoPagesInLayoutA) {
    DynamicAreaCommand_6G cmd;
    ASSERT_EQ(cmd.add_item(3, {1, 2, 64, 32}), 0);
    const std::vector<std::vector<uint8_t>> pages = {std::vector<uint8_t>(6, 0xAA),
                                                     std::vector<uint8_t>(4, 0xBB)};
    ASSERT_EQ(cmd.add_pages(3, header_g6(1), pages, 12), 0);
    const auto data = cmd.serialise_whole();
    ASSERT_EQ(data.size(), 7u + 97u + 10u);
    EXPECT_EQ(u32_at(data, 7), 93u); // 33 + 2 x 30
    EXPECT_EQ(std::vector<uint8_t>(data.begin(), data.begin() + 44),
              hex("01 A7 00 0000 0100 5D000000 03 00 0500 01 0000 01 00000000 10"
                  "0100 0200 4000 2000 00 000000 00 0000000000 0200"));
    // page records: 26, bytes 0 to 8, zeros for 9 to 17, offset from 0, length
    EXPECT_EQ(std::vector<uint8_t>(data.begin() + 44, data.begin() + 74),
              hex("1A000000 00 01 02 03 0504 06 4000 000000000000000000 00000000 06000000"));
    EXPECT_EQ(std::vector<uint8_t>(data.begin() + 74, data.begin() + 104),
              hex("1A000000 00 01 02 03 0504 06 0C00 000000000000000000 06000000 04000000"));
    EXPECT_EQ(data[104], 0xAA);
    EXPECT_EQ(data.back(), 0xBB);
}

TEST(DynamicCommandG6, ProgramListsAndSound) {
    DynamicAreaCommand_6G cmd;
    ASSERT_EQ(cmd.add_item_with_programs(1, {}, {3, {7, 8, 9}}), 0);
    ASSERT_EQ(cmd.add_item_with_programs(2, {}, {0, {}}), 0);
    DynamicSound sound{1, {{1, 2, 3, 4}, 5, 6, {7, 8, 9, 10}}, "abc"};
    ASSERT_EQ(cmd.add_item(4, {}, &sound), 0);
    sound.enabled = 2; // only 1 enables
    ASSERT_EQ(cmd.add_item(5, {}, &sound), 0);

    const DynamicAreaItem_6G *listed = cmd.find(1);
    EXPECT_EQ(listed->allPrograms, 0);
    EXPECT_EQ(listed->immediate, 0);
    EXPECT_EQ(listed->itemLen(), 33u + 6u);
    EXPECT_EQ(cmd.find(2)->allPrograms, 1); // an empty list means all programs
    EXPECT_EQ(cmd.find(2)->itemLen(), 33u);
    EXPECT_EQ(cmd.find(4)->itemLen(), 33u + 23u);
    EXPECT_EQ(cmd.find(5)->hasSound, 0);

    std::vector<uint8_t> block;
    cmd.find(1)->write_block(block, true);
    EXPECT_EQ(std::vector<uint8_t>(block.begin() + 4, block.begin() + 18),
              hex("01 00 0500 00 0300 070008000900 00"));
    block.clear();
    cmd.find(4)->write_block(block, true);
    EXPECT_EQ(std::vector<uint8_t>(block.begin() + 26, block.begin() + 53),
              hex("00000001 01020304 05000000 06000000 0708090A 03000000 616263"));

    DynamicAreaItem_6G all; // allPrograms 1 with a count: the count goes, the numbers not
    all.areaID = 9;
    all.programCount = 2;
    all.programs = {1, 2};
    EXPECT_EQ(all.itemLen(), 33u);
}

TEST(DynamicCommandG6, RepeatedOrUnknownAreaNumbersFail) {
    DynamicAreaCommand_6G cmd;
    test::StdoutCapture out;
    ASSERT_EQ(cmd.add_item(1, {}), 0);
    EXPECT_EQ(cmd.add_item(1, {}), -1);
    EXPECT_EQ(cmd.add_page(2, header_g6(1), std::vector<uint8_t>(1)), -1);
    EXPECT_EQ(out.text(), " 区域ID??d 已存在！\n 区域ID??d 不存在！无法增加页面数据！\n");
    EXPECT_EQ(cmd.area_count(), 1u);
}

TEST(DynamicCommandG6, LayoutBPutsAllBlocksFirstAndCountsOffsetsAcrossAreas) {
    DynamicAreaCommand_6G cmd;
    ASSERT_EQ(cmd.add_item(1, {}), 0);
    ASSERT_EQ(cmd.add_item(2, {}), 0);
    ASSERT_EQ(cmd.add_pages(1, header_g6(0x26),
                            {std::vector<uint8_t>(5, 1), std::vector<uint8_t>(3, 2)}, 9),
              0);
    ASSERT_EQ(cmd.add_pages(2, header_g6(1), {std::vector<uint8_t>(2, 3)}, 9), 0);
    const auto b = cmd.serialise_split();
    ASSERT_EQ(b.size(), 7u + 97u + 67u + 10u);
    // area 1 in reverse: the second page (3 bytes) first at 0, the first page at 3 with L
    // (records start 37 bytes into a block, 44 into the command)
    EXPECT_EQ(u32_at(b, 44 + 22), 0u);
    EXPECT_EQ(u32_at(b, 44 + 26), 3u);
    EXPECT_EQ(u16_at(b, 74 + 11), 9u);
    EXPECT_EQ(u32_at(b, 74 + 22), 3u);
    // area 2's first page starts at area 1's pixel total
    EXPECT_EQ(u32_at(b, 104 + 37 + 22), 8u);
    EXPECT_EQ(std::vector<uint8_t>(b.end() - 10, b.end()), hex("02020201010101010303"));

    const auto a = cmd.serialise_whole();
    ASSERT_EQ(a.size(), b.size());
    EXPECT_EQ(a[7 + 97], 2); // layout A: area 1's pixels right behind its block
}

TEST(DynamicCommandG6, IndependentSoundCommands) {
    const DynamicSound s{0, {{1, 2, 3, 4}, 5, 6, {7, 8, 9, 10}}, "hello"};
    const auto insert = build_sound_insert(0x11, 0x22, s);
    ASSERT_EQ(insert.size(), 14u + 25u);
    EXPECT_EQ(std::vector<uint8_t>(insert.begin(), insert.begin() + 14),
              hex("01 A7 07 0000 11 22 000000 19000000"));
    EXPECT_EQ(insert.back(), 'o');

    const SoundUpdateItem items[] = {{1, s}, {2, s}, {3, s}};
    const auto update = build_sound_update(0x33, items);
    ASSERT_EQ(update.size(), 7u + 3u * (5u + 20u + 5u));
    EXPECT_EQ(std::vector<uint8_t>(update.begin(), update.begin() + 12),
              hex("01 A7 02 0000 33 03 01 19000000"));
    EXPECT_EQ(update[7 + 30], 2);
}

} // namespace
} // namespace zel::dynamic
