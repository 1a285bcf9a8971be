#include "commands/control_data.h"

#include <algorithm>

#include "sdk/bytes.h"

namespace zel::commands {

uint8_t bcd_encode(uint8_t value) {
    return static_cast<uint8_t>((value / 10) * 16 + value % 10);
}

uint8_t bcd_decode(uint8_t bcd) {
    return static_cast<uint8_t>((bcd >> 4) * 10 + (bcd & 15));
}

uint16_t bcd_year(unsigned year) {
    uint16_t out = 0;
    for (unsigned shift = 0; shift < 16; shift += 4) {
        out = static_cast<uint16_t>(out | ((year % 10) << shift));
        year /= 10;
    }
    return out;
}

std::vector<uint8_t> time_stamp_data(const std::tm &local) {
    ByteWriter w(kTimeStampLen);
    w.u16(bcd_year(static_cast<unsigned>(local.tm_year + 1900)));
    for (const int field : {local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                            local.tm_sec, local.tm_wday}) {
        w.u8(bcd_encode(static_cast<uint8_t>(field)));
    }
    return w.take();
}

std::vector<uint8_t> timing_data(uint8_t count, const uint8_t *table) {
    ByteWriter w(1 + kTimingEntryLen * count);
    w.u8(count);
    for (std::size_t i = 0; i < kTimingEntryLen * count; ++i)
        w.u8(bcd_encode(table[i]));
    return w.take();
}

std::vector<uint8_t> padded_value_data(uint8_t value) {
    return ByteWriter(kPaddedValueLen).u8(value).zeros(kPaddedValueLen - 1).take();
}

std::vector<uint8_t> program_lock_data(uint8_t first, uint8_t second, const uint8_t *four,
                                       uint32_t value) {
    return ByteWriter(kProgramLockLen)
        .u8(first)
        .u8(second)
        .bytes(four, kLockBytesLen)
        .u32(value)
        .take();
}

std::vector<uint8_t> program_lock_data_6g(uint8_t first, uint8_t second, const uint8_t *four,
                                          uint32_t value) {
    return ByteWriter(kProgramLockLen6G)
        .u8(first)
        .u8(second)
        .bytes(four, kLockBytesLen)
        .u8(0) // offset 6: a field the command does not set
        .u32(value)
        .take();
}

std::vector<uint8_t> password_data(const char *oldPassword, const char *newPassword) {
    return ByteWriter(2 * kPasswordLen)
        .bytes(oldPassword, kPasswordLen)
        .bytes(newPassword, kPasswordLen)
        .take();
}

void decode_battle_time(const uint8_t *answer, int16_t answerLen, uint8_t *record) {
    record[0] = answer[0];
    record[1] = answer[1];
    // The answer buffer and the host's record are both 20 bytes: a longer reported length
    // (an acknowledge reports its whole packet) stops at the record's end.
    const int end = std::min<int>(answerLen, static_cast<int>(kBattleTimeLen));
    for (int i = 2; i < end; ++i)
        record[i] = bcd_decode(answer[i]);
}

} // namespace zel::commands
