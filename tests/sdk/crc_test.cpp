#include <gtest/gtest.h>

#include "sdk/crc.h"

#include <random>
#include <vector>

#include "zel_sdk_dual.h"

namespace zel {
namespace {

const uint8_t kDigits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};

TEST(Crc, CheckValuesOfTheStandardCatalogue) {
    EXPECT_EQ(crc16(kDigits, 9), 0xBB3D);
    EXPECT_EQ(crc32_ieee(kDigits, 9), 0xCBF43926u);
    EXPECT_EQ(crc16(kDigits, 0), 0);
    EXPECT_EQ(crc32_ieee(kDigits, 0), 0u);
}

// The sixteen-byte steps against the byte loop: every length around the step (tails of 0 to 15
// bytes, one and several steps), at every alignment, and a long buffer.
TEST(Crc, WideStepsAgreeWithTheByteLoop) {
    EXPECT_EQ(crc16_bytewise(kDigits, 9), 0xBB3D);
    const uint8_t digits16[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9',
                                '1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16(digits16, sizeof digits16), crc16_bytewise(digits16, sizeof digits16));

    std::mt19937 rng(16);
    std::vector<uint8_t> buffer(70000);
    for (auto &b : buffer)
        b = static_cast<uint8_t>(rng());
    for (std::size_t offset = 0; offset < 8; ++offset) {
        for (std::size_t length = 0; length <= 80; ++length) {
            ASSERT_EQ(crc16(buffer.data() + offset, length),
                      crc16_bytewise(buffer.data() + offset, length))
                << "offset " << offset << " length " << length;
        }
    }
    EXPECT_EQ(crc16(buffer.data(), buffer.size()), crc16_bytewise(buffer.data(), buffer.size()));
    // A run of bytes that keeps the CRC at zero in the byte loop stays so: all zeros.
    const std::vector<uint8_t> zeros(4096, 0);
    EXPECT_EQ(crc16(zeros.data(), zeros.size()), 0);
}

TEST(Crc, TableIsThePublishedOneAndItsBytesAreLowFirst) {
    EXPECT_EQ(crc16_table()[0], 0x0000);
    EXPECT_EQ(crc16_table()[1], 0xC0C1);
    EXPECT_EQ(crc16_table()[2], 0xC181);
    EXPECT_EQ(crc16_table()[3], 0x0140);
    EXPECT_EQ(crc16_table_byte(2), 0xC1);
    EXPECT_EQ(crc16_table_byte(3), 0xC0);
    EXPECT_EQ(crc16_table_byte(6), 0x40);
    EXPECT_EQ(crc16_table_byte(7), 0x01);
}

TEST(Crc, ExportedEntriesFillTheRecordOfNoBytes) {
    ZelCrc16Record e16 = {nullptr, 0, 0x1234};
    ZelCrc32Record e32 = {nullptr, 0, 0x1234};
    EXPECT_EQ(zelDual_get_crc16(&e16), 0);
    EXPECT_EQ(zelDual_get_crc32(&e32), 0);
    EXPECT_EQ(e16.crc, 0);
    EXPECT_EQ(e32.crc, 0u);
}

TEST(Crc, XorCheckFoldsAllBytes) {
    const uint8_t header[] = {0xFE, 0xFF, 0x00, 0x80, 0x00, 0x00, 0xFE,
                              0x01, 0x02, 0x00, 0x04, 0x00, 0x23, 0xB8};
    EXPECT_EQ(xor_check(header, sizeof header), 0xE3);
}

} // namespace
} // namespace zel
