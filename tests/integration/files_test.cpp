// File-system commands against the embedded simulator: headers, blocks and their flags and
// offsets, the two file spaces, listing, reading, status, and the serial forms.
#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "commands_fixture.h"
#include "sdk/crc.h"
#include "sdk/globals.h"
#include "sim/protocol/sim_files.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "wire/answer_builder.h"
#include "zel_sdk_dual.h"

namespace zel::test {
namespace {

constexpr const char *kHost = "127.0.0.1";
constexpr uint8_t kFiles = 0xA1;

// A program image of `length` bytes: content, then the CRC-32 of the content.
std::vector<uint8_t> program_image(std::size_t length) {
    std::vector<uint8_t> image(length - 4);
    std::iota(image.begin(), image.end(), uint8_t{0x31});
    const uint32_t crc = crc32_ieee(image.data(), image.size());
    for (int i = 0; i < 4; ++i)
        image.push_back(static_cast<uint8_t>(crc >> (8 * i)));
    return image;
}

std::vector<uint8_t> slice(const std::vector<uint8_t> &v, std::size_t at, std::size_t n) {
    return {v.begin() + static_cast<std::ptrdiff_t>(at),
            v.begin() + static_cast<std::ptrdiff_t>(at + n)};
}

std::vector<uint8_t> concat(std::vector<uint8_t> a, const std::vector<uint8_t> &b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

class FilesTest : public CommandsTest {
  protected:
    void TearDown() override { g_packetLen = kDefaultPacketLen; }

    // Puts a whole file into the simulator's file system directly.
    void put_file(sim::FileSpace space, const char *name, uint8_t type,
                  const std::vector<uint8_t> &bytes) {
        sim::SimFileSystem &fs = sim::file_system(sim());
        const std::size_t n = bytes.size();
        const uint32_t check = bytes[n - 4] | (bytes[n - 3] << 8) | (bytes[n - 2] << 16) |
                               (static_cast<uint32_t>(bytes[n - 1]) << 24);
        ASSERT_EQ(
            fs.begin_write(space, sim::file_name(name), type, static_cast<uint32_t>(n), 1, check),
            0);
        ASSERT_EQ(fs.write_block(space, sim::file_name(name), 1, 0, bytes), 0);
    }
};

TEST_F(FilesTest, WriteSendsTheHeaderThenBlocksOfThePacketLength) {
    struct Block {
        uint8_t last;
        uint32_t offset;
        uint32_t length;
    };
    struct Case {
        uint32_t length;
        uint16_t packetLen;
        std::vector<Block> blocks;
    };
    const Case cases[] = {
        {2048, 1024, {{0, 0, 1024}, {1, 1024, 1024}}},
        {2049, 1024, {{0, 0, 1024}, {0, 1024, 1024}, {1, 2048, 1}}},
        {300, 128, {{0, 0, 128}, {0, 128, 128}, {1, 256, 44}}},
    };
    for (const Case &c : cases) {
        sim().clear_requests();
        zelDual_set_packetLen(c.packetLen);
        const auto image = program_image(c.length);
        StdoutCapture out;
        ASSERT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P000", 0, c.length, 1, image.data()), 0);
        EXPECT_EQ(out.text(), "g_packetLen ======= " + std::to_string(c.packetLen) + " \n");

        const auto got = received(kFiles);
        ASSERT_EQ(got.size(), 1 + c.blocks.size()) << c.length;
        EXPECT_EQ(got[0].code, 0x02);
        const uint8_t len[] = {static_cast<uint8_t>(c.length), static_cast<uint8_t>(c.length >> 8)};
        EXPECT_EQ(got[0].data, concat(hex("50303030 00"), concat({len[0], len[1], 0, 0, 0x01},
                                                                 slice(image, c.length - 4, 4))));
        for (std::size_t i = 0; i < c.blocks.size(); ++i) {
            const Block &b = c.blocks[i];
            const auto &r = got[1 + i];
            EXPECT_EQ(r.code, 0x03);
            const std::vector<uint8_t> head = {b.last, static_cast<uint8_t>(b.offset),
                                               static_cast<uint8_t>(b.offset >> 8), 0, 0};
            EXPECT_EQ(r.data,
                      concat(hex("50303030"), concat(head, slice(image, b.offset, b.length))))
                << c.length << " block " << i;
        }
        EXPECT_EQ(sim::file_system(sim()).find(sim::FileSpace::Ofs, sim::file_name("P000"))->bytes,
                  image);
    }
}

TEST_F(FilesTest, LandedFilesReachTheSimulatorsHooks) {
    std::vector<std::string> written;
    sim().set_file_written_hook(
        [&](uint8_t space, const std::string &name, const std::vector<uint8_t> &content) {
            written.push_back(std::to_string(space) + name + ":" + std::to_string(content.size()));
        });
    uint8_t landedType = 0xFF;
    sim::file_system(sim()).on_file_landed([&](const sim::SimFile &f) { landedType = f.type; });
    const auto image = program_image(100);
    ASSERT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "D000", 9, 100, 1, image.data()), 0);
    EXPECT_EQ(written, std::vector<std::string>{"0D000:100"});
    EXPECT_EQ(landedType, 9);
}

TEST_F(FilesTest, ConfWritesUse1024ByteBlocksWhateverThePacketLength) {
    zelDual_set_packetLen(100);
    std::vector<uint8_t> conf(1500);
    std::iota(conf.begin(), conf.end(), uint8_t{0});
    StdoutCapture out;
    ASSERT_EQ(zelDual_cmd_confWriteFile(kHost, port(), "C001", 1, 1500, 1, conf.data()), 0);
    EXPECT_EQ(out.text(), "") << "the conf space writes silently";
    const auto got = received(kFiles);
    ASSERT_EQ(got.size(), 3u);
    EXPECT_EQ(got[0].code, 0x0B);
    EXPECT_EQ(got[0].data, concat(hex("43303031 01 DC050000 01"), slice(conf, 1496, 4)));
    EXPECT_EQ(got[1].code, 0x0C);
    EXPECT_EQ(slice(got[1].data, 0, 9), hex("43303031 00 00000000"));
    EXPECT_EQ(got[1].data.size(), 9u + 1024u);
    EXPECT_EQ(got[2].data, concat(hex("43303031 01 00040000"), slice(conf, 1024, 476)));
    EXPECT_EQ(sim::file_system(sim()).find(sim::FileSpace::Conf, sim::file_name("C001"))->bytes,
              conf);
}

TEST_F(FilesTest, ConnectionClosedMidTransferLeavesNoFile) {
    sim().set_faults({.closeAfterBlocks = 1});
    const auto image = program_image(3072);
    StdoutCapture out;
    EXPECT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P009", 0, 3072, 1, image.data()), -1);
    EXPECT_EQ(out.text(), "g_packetLen ======= 1024 \ndataLen-oldLen ======= 1024 \n");
    const auto got = received(kFiles);
    ASSERT_GE(got.size(), 2u);
    EXPECT_EQ(got[1].data[4], 0);
    EXPECT_FALSE(sim::file_system(sim()).find(sim::FileSpace::Ofs, sim::file_name("P009")));
    // The controller's answer to a block it refuses ends the write with its code.
    sim().set_faults({});
    sim().on(kFiles, 0x03, [](sim::Simulator &, const sim::Request &) {
        return sim::Reply::error(sim::fs_error::kBadOffset);
    });
    EXPECT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P009", 0, 3072, 1, image.data()),
              sim::fs_error::kBadOffset);
}

TEST_F(FilesTest, ConfigBlockIsSealedAndWrittenAsC000) {
    std::array<uint8_t, 38> block{};
    for (std::size_t i = 0; i < 36; ++i)
        block[i] = static_cast<uint8_t>(0xA0 + i);
    ASSERT_EQ(zelDual_cmd_sendConfigFile(kHost, port(), block.data()), 0);
    const uint16_t crc = ref_crc16({block.begin(), block.begin() + 36});
    EXPECT_EQ(block[36], static_cast<uint8_t>(crc)) << "the host's block holds the CRC";
    EXPECT_EQ(block[37], static_cast<uint8_t>(crc >> 8));
    const auto got = received(kFiles);
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].code, 0x0B);
    EXPECT_EQ(got[0].data, concat(hex("43303030 01 26000000 01 C2C3"),
                                  {static_cast<uint8_t>(crc), static_cast<uint8_t>(crc >> 8)}));
    const auto file = sim::file_system(sim()).find(sim::FileSpace::Conf, sim::file_name("C000"));
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(file->type, 1);
    EXPECT_EQ(file->bytes, std::vector<uint8_t>(block.begin(), block.end()));

    std::array<uint8_t, 94> g6;
    g6.fill(0x5A);
    ASSERT_EQ(zelDual_cmd_sendConfigFile_G6(kHost, port(), g6.data()), 0);
    const uint16_t crcG6 = ref_crc16(std::vector<uint8_t>(92, 0x5A));
    EXPECT_EQ(g6[92], static_cast<uint8_t>(crcG6));
    EXPECT_EQ(sim::file_system(sim()).find(sim::FileSpace::Conf, sim::file_name("C000"))->bytes,
              std::vector<uint8_t>(g6.begin(), g6.end()));
}

TEST_F(FilesTest, DeleteListsAndTheOneByteShortConfForm) {
    const auto image = program_image(64);
    put_file(sim::FileSpace::Ofs, "P000", 0, image);
    put_file(sim::FileSpace::Ofs, "P001", 0, image);
    put_file(sim::FileSpace::Ofs, "P002", 0, image);
    put_file(sim::FileSpace::Conf, "C000", 1, image);
    EXPECT_EQ(zelDual_cmd_ofsDeleteFormatFile(kHost, port(), 2, "P000P001"), 0);
    EXPECT_EQ(zelDual_cmd_confDeleteFormatFile(kHost, port(), 1, "C000"), 0);
    EXPECT_EQ(zelDual_cmd_ofsFormat(kHost, port()), 0);
    const auto got = received(kFiles);
    ASSERT_EQ(got.size(), 3u);
    EXPECT_EQ(got[0].code, 0x01);
    EXPECT_EQ(got[0].data, hex("0200 50303030 50303031"));
    EXPECT_EQ(got[1].code, 0x0A);
    EXPECT_EQ(got[1].data, hex("0100 433030")); // count x 4 + 1: the last byte stays behind
    EXPECT_EQ(got[2].code, 0x00);
    EXPECT_TRUE(got[2].data.empty());
    EXPECT_TRUE(sim::file_system(sim()).files(sim::FileSpace::Conf).empty());
    EXPECT_TRUE(sim::file_system(sim()).files(sim::FileSpace::Ofs).empty());
}

TEST_F(FilesTest, DirectoryListingInBlocksAndFileAttributes) {
    const auto image = program_image(0x104);
    char name[5];
    for (int i = 0; i < 40; ++i) {
        std::snprintf(name, sizeof name, "P%03d", i);
        put_file(sim::FileSpace::Ofs, name, 0, image);
    }
    put_file(sim::FileSpace::Ofs, "D000", 9, image);

    ZelDirectoryRecord record{};
    record.kindFilter = 0;
    ASSERT_EQ(zelDual_cmd_ofsReedDirBlock(kHost, port(), &record), 0);
    EXPECT_EQ(+record.count, 40); // packed fields are read by value
    const auto got = received(kFiles);
    ASSERT_EQ(got.size(), 3u);
    EXPECT_EQ(got[0].code, 0x06);
    EXPECT_EQ(got[0].data, hex("00 20"));
    EXPECT_EQ(got[1].code, 0x07);
    EXPECT_EQ(got[1].data, hex("0000"));
    EXPECT_EQ(got[2].data, hex("2000")); // 32 entries came in the first block

    std::array<uint8_t, 13> entry{};
    const uint8_t *crc = image.data() + image.size() - 4;
    ASSERT_EQ(zelDual_cmd_getFileAttr(&record, 39, entry.data()), 0);
    EXPECT_EQ(std::vector<uint8_t>(entry.begin(), entry.end()),
              concat(hex("50303339 00 04010000"), {crc[0], crc[1], crc[2], crc[3]}));
    EXPECT_EQ(zelDual_cmd_getFileAttr(&record, 40, entry.data()), -1);
    const uint8_t *block = record.entries;
    EXPECT_EQ(zelDual_cmd_ofs_freeDirBlock(&record), 0);
    EXPECT_EQ(static_cast<const uint8_t *>(record.entries), block) << "the pointer keeps its value";
    EXPECT_EQ(zelDual_cmd_getFileAttr(&record, 0, entry.data()), -1) << "freed";
    EXPECT_EQ(zelDual_cmd_uart_ofsFreeDirBlock(&record), 0) << "a second free is harmless";

    // A controller whose first answer is shorter than the next one ends the listing with 1.
    sim().on(kFiles, 0x06, [](sim::Simulator &, const sim::Request &) {
        return sim::Reply::answer(hex("2900"));
    });
    ZelDirectoryRecord shortRecord{};
    shortRecord.kindFilter = 0xFF;
    StdoutCapture out;
    EXPECT_EQ(zelDual_cmd_ofsReedDirBlock(kHost, port(), &shortRecord), 1);
    EXPECT_EQ(+shortRecord.count, 41);
    ASSERT_NE(static_cast<const uint8_t *>(shortRecord.entries), nullptr);
    EXPECT_EQ(zelDual_cmd_ofs_freeDirBlock(&shortRecord), 0);
}

TEST_F(FilesTest, ReadingStartsButBlocksRefuseTheirData) {
    const auto image = program_image(0x30);
    put_file(sim::FileSpace::Ofs, "P000", 0, image);
    put_file(sim::FileSpace::Conf, "C000", 1, image);

    // ofs: the answer's first word goes over the name; the two values are not delivered.
    sim().on(kFiles, 0x04, [](sim::Simulator &, const sim::Request &) {
        return sim::Reply::answer(hex("51313131 30000000 01020304"));
    });
    char name[4] = {'P', '0', '0', '0'};
    EXPECT_EQ(zelDual_cmd_ofsStartReedFile(kHost, port(), name, 7, 8), 0);
    EXPECT_EQ(std::string(name, 4), "Q111");

    char confName[4] = {'C', '0', '0', '0'};
    uint32_t first = 0, second = 0;
    EXPECT_EQ(zelDual_cmd_confStartReedFile(kHost, port(), confName, &first, &second), 0);
    EXPECT_EQ(std::string(confName, 4), "C000");
    EXPECT_EQ(first, 0x30u);
    EXPECT_EQ(second, static_cast<uint32_t>(image[0x2C] | image[0x2D] << 8 | image[0x2E] << 16 |
                                            image[0x2F] << 24));

    std::vector<uint8_t> output(64, 0xEE);
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_cmd_ofsReedFileBlock(kHost, port(), "P000", output.data()), -1);
        EXPECT_EQ(zelDual_cmd_confReedFileBlock(kHost, port(), "C000", output.data()), -1);
        EXPECT_EQ(out.text(), "nCmdDataLen <= 0 \n nCmdDataLen <= 0 \n ");
    }
    EXPECT_EQ(output, std::vector<uint8_t>(64, 0xEE));

    const auto got = received(kFiles);
    ASSERT_EQ(got.size(), 4u);
    EXPECT_EQ(got[0].data, hex("50303030"));
    EXPECT_EQ(got[1].code, 0x0D);
    EXPECT_EQ(got[2].code, 0x05);
    EXPECT_EQ(got[2].data, hex("50303030 00000000"));
    EXPECT_EQ(got[3].code, 0x0E);

    // A missing file: the controller's error code.
    EXPECT_EQ(zelDual_cmd_confStartReedFile(kHost, port(), name, &first, &second),
              sim::fs_error::kNoSuchFile);
}

TEST_F(FilesTest, VolumeAndTransferStatus) {
    sim::file_system(sim()).set_capacity(1000);
    put_file(sim::FileSpace::Ofs, "P000", 0, program_image(100));
    uint32_t total = 0, free = 0;
    EXPECT_EQ(zelDual_cmd_ofsGetMemoryVolume(kHost, port(), &total, &free), 0);
    EXPECT_EQ(total, 1000u);
    EXPECT_EQ(free, 900u);

    EXPECT_EQ(zelDual_cmd_ofsStartFileTransf(kHost, port()), 0);
    const auto image = program_image(50);
    ASSERT_EQ(zelDual_cmd_ofsWriteFile(kHost, port(), "P001", 0, 50, 1, image.data()), 0);
    uint8_t state = 0;
    uint32_t landed = 0, bytes = 0, length = 0;
    EXPECT_EQ(zelDual_cmd_ofsGetTransStatus(kHost, port(), &state, &landed, &bytes, &length), 0);
    EXPECT_EQ(state, 1);
    EXPECT_EQ(landed, 1u);
    EXPECT_EQ(bytes, 50u);
    EXPECT_EQ(length, 50u);
    EXPECT_EQ(zelDual_cmd_ofsEndFileTransf(kHost, port()), 0);

    const auto got = received(kFiles);
    EXPECT_EQ(got.front().code, 0x12);
    EXPECT_TRUE(got.front().data.empty());
    EXPECT_EQ(got[1].code, 0x08);
    EXPECT_EQ(got.back().code, 0x09);
    EXPECT_TRUE(got.back().data.empty());

    // Refused: the volume outputs stay, the status outputs are cleared.
    sim().on(kFiles, 0x12,
             [](sim::Simulator &, const sim::Request &) { return sim::Reply::error(7); });
    sim().on(kFiles, 0x13,
             [](sim::Simulator &, const sim::Request &) { return sim::Reply::error(7); });
    EXPECT_EQ(zelDual_cmd_ofsGetMemoryVolume(kHost, port(), &total, &free), 7);
    EXPECT_EQ(total, 1000u);
    EXPECT_EQ(zelDual_cmd_ofsGetTransStatus(kHost, port(), &state, &landed, &bytes, &length), 7);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(landed, 0u);
    EXPECT_EQ(length, 0u);
}

class FilesSerialTest : public CommandsTest {
  protected:
    void SetUp() override { start_sim(0x0058, true); }
    void TearDown() override { g_packetLen = kDefaultPacketLen; }
    test::FakeClock m_clock{test::FakeClock::kPaced};
};

TEST_F(FilesSerialTest, SerialFormsReachTheSameFileSystem) {
    const auto image = program_image(2049);
    {
        StdoutCapture out;
        ASSERT_EQ(zelDual_cmd_uart_ofsWriteFile(tty(), 2, "P000", 0, 2049, 1, image.data()), 0);
        EXPECT_EQ(out.text(), "g_packetLen ======= 1024 \n");
    }
    const std::vector<uint8_t> conf = {1, 2, 3, 4, 5};
    ASSERT_EQ(zelDual_cmd_uart_confWriteFile(tty(), 2, "C001", 1, 5, 1, conf.data()), 0);
    std::array<uint8_t, 38> block{};
    ASSERT_EQ(zelDual_cmd_uart_sendConfigFile(tty(), 2, block.data()), 0);
    EXPECT_EQ(zelDual_cmd_uart_ofsStartFileTransf(tty(), 2), 0);
    EXPECT_EQ(zelDual_cmd_uart_ofsEndFileTransf(tty(), 2), 0);

    ZelDirectoryRecord record{};
    record.kindFilter = 0xFF;
    ASSERT_EQ(zelDual_cmd_uart_ofsReedDirBlock(tty(), 2, &record), 0);
    EXPECT_EQ(+record.count, 1);
    std::array<uint8_t, 13> entry{};
    EXPECT_EQ(zelDual_cmd_getFileAttr(&record, 0, entry.data()), 0);
    EXPECT_EQ(slice({entry.begin(), entry.end()}, 0, 9), hex("50303030 00 01080000"));
    EXPECT_EQ(zelDual_cmd_uart_ofsFreeDirBlock(&record), 0);

    char name[4] = {'C', '0', '0', '1'};
    uint32_t first = 0, second = 0;
    EXPECT_EQ(zelDual_cmd_uart_confStartReedFile(tty(), 2, name, &first, &second), 0);
    EXPECT_EQ(first, 5u);
    EXPECT_EQ(second, 0x05040302u);
    EXPECT_EQ(zelDual_cmd_uart_ofsStartReedFile(tty(), 2, name, 0, 0), sim::fs_error::kNoSuchFile);
    {
        StdoutCapture out;
        EXPECT_EQ(zelDual_cmd_uart_ofsReedFileBlock(tty(), 2, "P000", nullptr), -1);
        EXPECT_EQ(zelDual_cmd_uart_confReedFileBlock(tty(), 2, "C001", nullptr), -1);
    }

    uint32_t total = 0, free = 0;
    EXPECT_EQ(zelDual_cmd_uart_ofsGetMemoryVolume(tty(), 2, &total, &free), 0);
    EXPECT_EQ(total - free, 2049u + 5u + 38u); // both spaces share the memory
    uint8_t state = 0xEE;
    uint32_t a = 0, b = 0, c = 0;
    EXPECT_EQ(zelDual_cmd_uart_ofsGetTransStatus(tty(), 2, &state, &a, &b, &c), 0);
    EXPECT_EQ(state, 0);

    EXPECT_EQ(zelDual_cmd_uart_ofsDeleteFormatFile(tty(), 2, 1, "P000"), 0);
    EXPECT_EQ(zelDual_cmd_uart_confDeleteFormatFile(tty(), 2, 2, "C000C001"), 0);
    EXPECT_TRUE(sim::file_system(sim()).files(sim::FileSpace::Ofs).empty());
    EXPECT_TRUE(sim::file_system(sim()).files(sim::FileSpace::Conf).empty());
    EXPECT_EQ(zelDual_cmd_uart_ofsFormat(tty(), 2), 0);

    const auto got = received(kFiles);
    for (const auto &r : got)
        EXPECT_EQ(r.transport, sim::Transport::Serial);
    EXPECT_EQ(got[0].code, 0x02);
    EXPECT_EQ(got[3].data.size(), 9u + 1u); // the third block of 2049 bytes holds one
    EXPECT_EQ(got[3].data[4], 1);
}

TEST_F(FilesSerialTest, BlocksWhoseDataLengthDoesNotFitNeverGoOut) {
    // A block's data is 9 bytes and the block, and the request's data length is a signed 16-bit
    // value: a block of 32758 packs, and its frame of more than 32767 bytes fails at the send;
    // from 32759 on no block frame is built at all. Either way only the header reaches the
    // controller, and the write ends with -1.
    for (const bool serial : {false, true}) {
        for (const uint16_t block : {32758, 32759, 65526, 65527}) {
            sim().clear_requests();
            zelDual_set_packetLen(block);
            const auto image = program_image(block);
            StdoutCapture out;
            const int32_t result =
                serial ? zelDual_cmd_uart_ofsWriteFile(tty(), 2, "P000", 0, block, 1, image.data())
                       : zelDual_cmd_ofsWriteFile(kHost, port(), "P000", 0, block, 1, image.data());
            EXPECT_EQ(result, -1) << serial << " " << block;
            const std::string n = std::to_string(block);
            const bool refusedBySend = serial && block == 32758;
            EXPECT_EQ(out.text(), "g_packetLen ======= " + n + " \n" +
                                      (refusedBySend ? "WriteFile error return ===== 0 \n" : "") +
                                      "dataLen-oldLen ======= " + n + " \n")
                << serial << " " << block;
            const auto got = received(kFiles);
            EXPECT_EQ(got.size(), 1u) << serial << " " << block;
            EXPECT_EQ(got.at(0).code, 0x02);
        }
        // A list of 16384 names (65538 bytes of data) is not cut to a 16-bit length either.
        sim().clear_requests();
        const std::vector<char> names(16384 * 4, 'P');
        EXPECT_EQ(serial ? zelDual_cmd_uart_ofsDeleteFormatFile(tty(), 2, 16384, names.data())
                         : zelDual_cmd_ofsDeleteFormatFile(kHost, port(), 16384, names.data()),
                  -1);
        EXPECT_TRUE(received(kFiles).empty()) << serial;
    }
}

} // namespace
} // namespace zel::test
