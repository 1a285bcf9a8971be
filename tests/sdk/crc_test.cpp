#include <gtest/gtest.h>

#include "sdk/crc.h"
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

TEST(Crc, ExportedEntriesFillTheRecord) {
    ZelCrc16Record r16 = {kDigits, 9, 0x1234};
    ZelCrc32Record r32 = {kDigits, 9, 0x1234};
    EXPECT_EQ(zelDual_get_crc16(&r16), 0);
    EXPECT_EQ(zelDual_get_crc32(&r32), 0);
    EXPECT_EQ(r16.crc, 0xBB3D);
    EXPECT_EQ(r32.crc, 0xCBF43926u);

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
