// Command bodies of device control (group 0xA2): each lays out its data and runs one exchange
// on a peer that the caller has initialised.
#pragma once

#include <cstdint>

#include "wire/kor_command.h"

namespace zel::commands {

namespace control_code {
inline constexpr uint8_t kSysReset = 0x01;
inline constexpr uint8_t kCheckTime = 0x02;
inline constexpr uint8_t kFirmwareActivate = 0x03;
inline constexpr uint8_t kCoerceOnOff = 0x05;
inline constexpr uint8_t kTimingOnOff = 0x06;
inline constexpr uint8_t kSetBrightness = 0x07;
inline constexpr uint8_t kCancelTimingOnOff = 0x08;
inline constexpr uint8_t kReadControllerID = 0x0A;
inline constexpr uint8_t kScreenLock = 0x0D;
inline constexpr uint8_t kProgramLock = 0x0E;
inline constexpr uint8_t kControllerStatus = 0x0F;
inline constexpr uint8_t kSetPassword = 0x10;
inline constexpr uint8_t kDeletePassword = 0x11;
inline constexpr uint8_t kSetDelayTime = 0x12;
inline constexpr uint8_t kSetBtnFunc = 0x13;
inline constexpr uint8_t kSetTimingReset = 0x14;
inline constexpr uint8_t kSetDispMode = 0x15;
inline constexpr uint8_t kBattleTime = 0x17;
inline constexpr uint8_t kStopwatch = 0x18;
inline constexpr uint8_t kSensorBrightness = 0x19;
inline constexpr uint8_t kSetSpeedAdjust = 0x1A;
inline constexpr uint8_t kSetScreenAddress = 0x1B;
inline constexpr uint8_t kExternalRelay = 0x32;
} // namespace control_code

inline constexpr std::size_t kBrightnessTableLen = 49;
inline constexpr std::size_t kTimingResetLen = 11;
inline constexpr uint16_t kControllerIdLen = 8;
inline constexpr uint16_t kControllerStatusLen = 61;
inline constexpr std::size_t kFirmwareKeyLen = 4;

int32_t sysReset(KOR_command &peer);
// Sends the host's local time now.
int32_t check_time(KOR_command &peer);
int32_t coerceOnOff(KOR_command &peer, uint8_t onOff);
int32_t timingOnOff(KOR_command &peer, uint8_t count, const uint8_t *table);
int32_t setBrightness(KOR_command &peer, const uint8_t *table);
int32_t cancelTimingOnOff(KOR_command &peer);
int32_t readControllerID(KOR_command &peer, uint8_t *id);
int32_t screenLock(KOR_command &peer, uint8_t first, uint8_t second);
int32_t programLock(KOR_command &peer, uint8_t first, uint8_t second, const uint8_t *four,
                    uint32_t value);
int32_t programLock_6G(KOR_command &peer, uint8_t first, uint8_t second, const uint8_t *four,
                       uint32_t value);
int32_t check_controllerStatus(KOR_command &peer, uint8_t *status);
int32_t setPassword(KOR_command &peer, const char *oldPassword, const char *newPassword);
int32_t deletePassword(KOR_command &peer, const char *password);
int32_t setDelayTime(KOR_command &peer, uint16_t value);
int32_t setBtnFunc(KOR_command &peer, uint8_t value);
int32_t setTimingReset(KOR_command &peer, const uint8_t *table);
int32_t setDispMode(KOR_command &peer, uint8_t value);
// Fills the host's 20-byte record whatever the exchange gave.
int32_t battieTime(KOR_command &peer, uint8_t selector, uint8_t *record);
// These two pass a capacity of 0: a controller's data answer gives -1 and nothing is written.
int32_t getStopwatch(KOR_command &peer, uint8_t selector);
int32_t getSensorBrightnessValue(KOR_command &peer);
int32_t setSpeedAdjust(KOR_command &peer, uint16_t value);
int32_t setScreenAddress(KOR_command &peer, uint16_t value);
int32_t SetExternalRelay(KOR_command &peer, uint8_t value);
int32_t firmwareActivate(KOR_command &peer, const uint8_t *four);

} // namespace zel::commands
