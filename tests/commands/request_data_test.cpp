#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "commands/control_data.h"
#include "commands/files_data.h"
#include "support/hex.h"

namespace zel::commands {
namespace {

using test::hex;

TEST(RequestData, TimeStampIsEightBcdBytesWithTheYearDigitByDigit) {
    EXPECT_EQ(bcd_encode(59), 0x59);
    EXPECT_EQ(bcd_decode(0x59), 59);
    EXPECT_EQ(bcd_year(2026), 0x2026);
    std::tm t{};
    t.tm_year = 2026 - 1900;
    t.tm_mon = 2; // March: the controller counts months from 1
    t.tm_mday = 7;
    t.tm_hour = 14;
    t.tm_min = 5;
    t.tm_sec = 59;
    t.tm_wday = 6;
    EXPECT_EQ(time_stamp_data(t), hex("2620 03 07 14 05 59 06"));
    t = {};
    t.tm_year = 2030 - 1900;
    t.tm_mon = 11;
    t.tm_mday = 31;
    EXPECT_EQ(time_stamp_data(t), hex("3020 12 31 00 00 00 00")); // Sunday is 0
}

TEST(RequestData, BattleTimeNeverWritesBeyondTheRecord) {
    const std::array<uint8_t, 20> answer = {0x26, 0x20, 0x03, 0x07, 0x14, 0x05, 0x59, 0x99};
    std::array<uint8_t, 20> record;
    record.fill(0xEE);
    // An acknowledge reports its whole packet (here 36 bytes) as the answer's length.
    decode_battle_time(answer.data(), 36, record.data());
    EXPECT_EQ(std::vector<uint8_t>(record.begin(), record.begin() + 9),
              (std::vector<uint8_t>{0x26, 0x20, 3, 7, 14, 5, 59, 99, 0}));
    EXPECT_EQ(record[19], 0);
}

TEST(RequestData, HeaderOfAFileShorterThanItsCheckSendsZerosInFront) {
    const uint8_t name[] = {'P', '0', '0', '0'};
    const uint8_t data[] = {1, 2};
    EXPECT_EQ(file_header_data(name, 9, 2, 0, data), hex("50303030 09 02000000 00 00000102"));
    EXPECT_EQ(file_header_data(name, 0, 0, 1, nullptr), hex("50303030 00 00000000 01 00000000"));
}

} // namespace
} // namespace zel::commands
