#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "commands/control_data.h"
#include "support/hex.h"

namespace zel::commands {
namespace {

using test::hex;

TEST(ControlData, BcdCodesTensAndUnitsAndTheYearDigitByDigit) {
    EXPECT_EQ(bcd_encode(59), 0x59);
    EXPECT_EQ(bcd_encode(0), 0x00);
    EXPECT_EQ(bcd_encode(23), 0x23);
    EXPECT_EQ(bcd_decode(0x59), 59);
    EXPECT_EQ(bcd_decode(0x07), 7);
    EXPECT_EQ(bcd_year(2026), 0x2026);
    EXPECT_EQ(bcd_year(1999), 0x1999);
}

TEST(ControlData, TimeStampIsEightBcdBytesWithSundayZero) {
    std::tm t{};
    t.tm_year = 2026 - 1900;
    t.tm_mon = 2; // March: the controller counts months from 1
    t.tm_mday = 7;
    t.tm_hour = 14;
    t.tm_min = 5;
    t.tm_sec = 59;
    t.tm_wday = 6;
    EXPECT_EQ(time_stamp_data(t), hex("2620 03 07 14 05 59 06"));
    t.tm_year = 2030 - 1900;
    t.tm_mon = 11;
    t.tm_mday = 31;
    t.tm_hour = 0;
    t.tm_min = 0;
    t.tm_sec = 0;
    t.tm_wday = 0;
    EXPECT_EQ(time_stamp_data(t), hex("3020 12 31 00 00 00 00"));
}

TEST(ControlData, FixedLayoutsOfTimingLocksAndPasswords) {
    const uint8_t table[] = {23, 59, 0, 7, 12, 30, 1, 99};
    EXPECT_EQ(timing_data(2, table), hex("02 23 59 00 07 12 30 01 99"));
    EXPECT_EQ(timing_data(0, nullptr), hex("00"));

    EXPECT_EQ(padded_value_data(3), hex("03 00 00 00 00 00"));

    const uint8_t four[] = {0xAA, 0xBB, 0xCC, 0xDD};
    EXPECT_EQ(program_lock_data(1, 2, four, 0x11223344), hex("01 02 AABBCCDD 44332211"));
    EXPECT_EQ(program_lock_data_6g(1, 2, four, 0x11223344), hex("01 02 AABBCCDD 00 44332211"));

    // Six bytes each, terminators included.
    EXPECT_EQ(password_data("12345", "abcdef"), hex("3132333435 00 616263646566"));
}

TEST(ControlData, BattleTimeKeepsTheYearAndDecodesTheRestUpToTheAnswerLength) {
    const std::array<uint8_t, 20> answer = {0x26, 0x20, 0x03, 0x07, 0x14, 0x05, 0x59, 0x99};
    std::array<uint8_t, 20> record;
    record.fill(0xEE);
    decode_battle_time(answer.data(), 7, record.data());
    EXPECT_EQ(std::vector<uint8_t>(record.begin(), record.begin() + 8),
              hex("26 20 03 07 0E 05 3B EE"));
    EXPECT_EQ(record[19], 0xEE);

    // An acknowledge reports its whole packet as the length: the record ends at 20 bytes.
    record.fill(0xEE);
    decode_battle_time(answer.data(), 36, record.data());
    EXPECT_EQ(record[7], 99);
    EXPECT_EQ(record[19], 0);
}

} // namespace
} // namespace zel::commands
