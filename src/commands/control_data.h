// Command data of the device-control group: the BCD time stamp, the timing table and the other
// fixed layouts. Pure functions, so the exact bytes can be checked without a controller.
#pragma once

#include <cstdint>
#include <ctime>
#include <vector>

namespace zel::commands {

inline constexpr std::size_t kTimeStampLen = 8;
inline constexpr std::size_t kTimingEntryLen = 4;
inline constexpr std::size_t kPaddedValueLen = 6; // the value and five zero bytes
inline constexpr std::size_t kProgramLockLen = 10;
inline constexpr std::size_t kProgramLockLen6G = 11;
inline constexpr std::size_t kLockBytesLen = 4;
inline constexpr std::size_t kPasswordLen = 6;
inline constexpr std::size_t kBattleTimeLen = 20;

// Tens in the high nibble, units in the low one: 59 -> 0x59. Values of 100 and more keep the
// controller's 8-bit arithmetic (the tens overflow the byte).
uint8_t bcd_encode(uint8_t value);
uint8_t bcd_decode(uint8_t bcd);
// A year digit by digit over four nibbles: 2026 -> 0x2026.
uint16_t bcd_year(unsigned year);

// The 8-byte time stamp of the clock command: year (BCD over four digits), month counted from
// 1, day, hour, minute, second, weekday with Sunday 0, each BCD.
std::vector<uint8_t> time_stamp_data(const std::tm &local);

// The count, then count entries of four bytes, each byte BCD-encoded as it is copied.
std::vector<uint8_t> timing_data(uint8_t count, const uint8_t *table);

// One value followed by five zero bytes (button function, display mode).
std::vector<uint8_t> padded_value_data(uint8_t value);

// Program lock: first, second, the four bytes, the u32 value (10 bytes). The G6 serial form
// has one more byte in front of the value, which the command leaves at 0 (11 bytes).
std::vector<uint8_t> program_lock_data(uint8_t first, uint8_t second, const uint8_t *four,
                                       uint32_t value);
std::vector<uint8_t> program_lock_data_6g(uint8_t first, uint8_t second, const uint8_t *four,
                                          uint32_t value);

// Six bytes of the old password and six of the new one, whatever terminators they hold.
std::vector<uint8_t> password_data(const char *oldPassword, const char *newPassword);

// Turns a battle-time answer into the host's record: the year word is copied as it stands
// (still BCD), every later byte up to the answer's length is BCD-decoded. `answerLen` is the
// length that the exchange reported; only the record's 20 bytes are ever written.
void decode_battle_time(const uint8_t *answer, int16_t answerLen, uint8_t *record);

} // namespace zel::commands
